// CommandLineInterface: the way into the `quillon` command line. One command
// line becomes one action: the reader takes its words by the grammar, the
// builder makes the action (a changing command through the link parser, as
// if it had come as a quillon:// link). The texts the tool prints about its
// own use come from CommandLineHelp and CommandLineMessages; the entry
// points here name them as the driver uses them.
#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "CorvelCore/Automation/AppMatch.h"
#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Automation/CommandGrammar.h"
#include "CorvelCore/Automation/CommandLineAction.h"
#include "CorvelCore/Automation/CommandLineReader.h"
#include "CorvelCore/Automation/ExportKind.h"
#include "CorvelCore/Automation/ExportRefusal.h"

namespace corvel {

struct CommandLineInterface {
  // The exit statuses of the tool.
  enum class Exit : std::int32_t {
    done = 0,
    badArguments = 1,
    notInstalled = 2,
    fileProblem = 3,
    notDelivered = 5,
  };

  // How long the tool waits for the system to report that the app took a link.
  static constexpr double handOverSeconds = 5.0;

  using Option = CommandOption;
  using ResolveApp = AppResolver;

  // Where a command line's relative paths and "~" lead, and how it finds apps.
  using Context = CommandLineReader::Context;

  // One command line (without the program's path) as an action, or the first
  // problem found. No words is `help`; "-h" or "--help" before "--" is the
  // help of the first word, unchecked.
  [[nodiscard]] static std::expected<CommandLineAction, AutomationError> parse(
      std::span<const std::string> words, const Context& context);

  // The full usage text, without a final line break.
  [[nodiscard]] static const std::string& usage();
  // The help of a topic; the usage text for none or an unknown topic.
  [[nodiscard]] static std::string help(std::optional<std::string_view> topic);
  [[nodiscard]] static std::string versionLine(const std::optional<std::string>& shortVersion,
                                               const std::optional<std::string>& build);
  // The command-line wording of an error.
  [[nodiscard]] static std::string message(const AutomationError& error);
  // The `-f` wording of an export refusal.
  [[nodiscard]] static std::string message(ExportRefusal refusal, ExportKind kind, bool named);
  // A user's word as quoted in messages.
  [[nodiscard]] static std::string shown(std::string_view text);
  // The bundle identifier an app option names, or its refusal naming `flag`.
  [[nodiscard]] static std::expected<std::string, AutomationError> bundleID(
      std::string_view flag, std::string_view value, const ResolveApp& resolveApp);
};

}  // namespace corvel
