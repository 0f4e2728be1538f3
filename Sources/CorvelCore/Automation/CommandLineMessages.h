// CommandLineMessages: every sentence the tool says about a command line and
// about what it did: why a command line was refused, the command-line wording
// of the link parser's refusals, and the tool's own fixed sentences. A user's
// word is always quoted through `shown`.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Automation/CommandGrammar.h"
#include "CorvelCore/Automation/ExportKind.h"
#include "CorvelCore/Automation/ExportRefusal.h"

namespace corvel {

// The tool's fixed sentences.
enum class ToolMessage {
  notInstalled,
  notDelivered,
  layersUnreadable,
  noLayers,
  noSheets,
  unreadableImport,
  outputUnwritable,
};

struct CommandLineMessages {
  // ---- Refusals of a command line; each is a badArgument with its sentence. ----
  [[nodiscard]] static AutomationError notACommand(std::string_view word);
  // `name` is the command as typed ("layers store"), `first` its first word.
  [[nodiscard]] static AutomationError notTaken(std::string_view name, std::string_view first,
                                                std::string_view word);
  [[nodiscard]] static AutomationError needsOneOf(std::string_view name,
                                                  std::span<const std::string_view> choices,
                                                  std::optional<std::string_view> given);
  [[nodiscard]] static AutomationError needsAValue(std::string_view word, std::string_view first);
  // `word` is the option as typed; `option` gives its example.
  [[nodiscard]] static AutomationError notAKey(std::string_view key, std::string_view word,
                                               const OptionSpec& option);
  [[nodiscard]] static AutomationError takesKeyValue(std::string_view word,
                                                     const OptionSpec& option);
  [[nodiscard]] static AutomationError severalApps(std::string_view name, std::string_view word);
  [[nodiscard]] static AutomationError noApp(std::string_view name, std::string_view word);
  [[nodiscard]] static AutomationError importTakesOneFile(std::string_view name);
  [[nodiscard]] static AutomationError importOfWrongKind(std::string_view name, ExportKind kind);
  // "WORD must be DESCRIPTION." and "WORD is missing. It must be DESCRIPTION."
  [[nodiscard]] static AutomationError mustBe(std::string_view word, std::string_view description);
  [[nodiscard]] static AutomationError isMissing(std::string_view word,
                                                 std::string_view description);

  // The link parser's refusal of a command, worded for the command line: a
  // parameter is named by the option word the user typed for it (`typed`
  // gives it, by parameter), else by the command's option for it.
  [[nodiscard]] static AutomationError reworded(
      const AutomationError& error, const CommandSpec& command,
      std::span<const std::pair<std::string_view, std::string_view>> typed);
  // The command-line wording of an error: a parameter's option word where one
  // stands for it, the key sentence for a key, the missing-modifiers
  // sentence; every other error keeps its own message.
  [[nodiscard]] static std::string message(const AutomationError& error);
  // The `-f` wording of an export refusal.
  [[nodiscard]] static std::string message(ExportRefusal refusal, ExportKind kind, bool named);

  // A user's word as quoted in messages: invisible characters dropped, at
  // most 40 characters (else 39 and "…"), between curly quotes; "That" when
  // nothing is left.
  [[nodiscard]] static std::string shown(std::string_view text);

  [[nodiscard]] static std::string text(ToolMessage message);
  // The sentence for an import whose file does not decode as its kind.
  [[nodiscard]] static std::string undecodableImport(ExportKind kind);
  // The line printed after an export was written.
  [[nodiscard]] static std::string exported(ExportKind kind, std::string_view what,
                                            std::string_view path);
};

}  // namespace corvel
