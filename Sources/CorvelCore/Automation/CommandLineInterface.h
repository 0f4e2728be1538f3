// CommandLineInterface: the grammar of `quillon` command lines and every text
// the tool prints about its own use (usage, help, version line, the messages
// that explain a bad command line).
//
// A changing command is not carried out here: its options are thin aliases
// for link parameters, handed to the link parser exactly as if the command
// had arrived as a quillon:// link, so the tool applies the app's own rules.
#pragma once

#include <array>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "CorvelCore/Automation/AppMatch.h"
#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Automation/CommandLineAction.h"
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

  // What an option word does with its value.
  struct Option {
    struct Value {  // becomes the link parameter of that name
      std::string_view parameter;
    };
    struct Key {  // KEY=VALUE, the value written with a prefix
      std::string_view prefix;
    };
    struct App {  // names an app, resolved to a bundle identifier
      std::string_view parameter;
    };
    struct AppKey {};    // KEY=APP
    struct RawKey {};    // KEY=VALUE as written ("a:" or "app:" values name apps)
    struct UnsetKey {};  // KEY whose assignment is removed
    struct File {};      // a file path
    struct JSON {};      // a flag without a value
    std::variant<Value, Key, App, AppKey, RawKey, UnsetKey, File, JSON> kind;
  };

  using ResolveApp = std::function<AppMatch(std::string_view name)>;

  // One command of the grammar, as completions and the manual describe it.
  struct Command {
    std::string_view first;  // "layers"
    std::string_view sub;    // "store"; empty for a command without subcommands
    std::vector<std::pair<std::string_view, Option>> options;  // every option word it takes
    std::string_view word;  // the plain word it takes ("TOPIC", "NAME", "FILE"), or empty
  };

  // Every command, in the order of the usage text; the parser reads with
  // these very tables.
  [[nodiscard]] static const std::vector<Command>& commands();
  // The topics `help` takes.
  static constexpr std::array<std::string_view, 9> helpTopics = {
      "show", "hide", "toggle", "profile", "theme", "layer", "layers", "themes", "sheets"};

  // One command line (without the program's path) as an action, or the first
  // problem found. App names are resolved with `resolveApp`; relative file
  // paths are joined to `currentDirectory`, and "~" is the home folder ($HOME).
  [[nodiscard]] static std::expected<CommandLineAction, AutomationError> parse(
      std::span<const std::string> words, std::string_view currentDirectory,
      const ResolveApp& resolveApp);

  // The full usage text, without a final line break.
  [[nodiscard]] static const std::string& usage();
  // The help of a topic (compared in lower case); the usage text for none or
  // an unknown topic. No final line break.
  [[nodiscard]] static std::string help(std::optional<std::string_view> topic);
  // "quillon 1.2 (45)", "quillon 1.2", "quillon, build 45" or
  // "quillon, a development build".
  [[nodiscard]] static std::string versionLine(const std::optional<std::string>& shortVersion,
                                               const std::optional<std::string>& build);
  // The command-line wording of an error: option words instead of link
  // parameters where the command line has them.
  [[nodiscard]] static std::string message(const AutomationError& error);
  // The `-f` wording of an export refusal.
  [[nodiscard]] static std::string message(ExportRefusal refusal, ExportKind kind, bool named);
  // A user's word as quoted in messages: invisible characters dropped, at
  // most 40 characters (else 39 and "…"), between curly quotes; "That" when
  // nothing is left.
  [[nodiscard]] static std::string shown(std::string_view text);
  // The bundle identifier an app option names: a bundle-identifier-shaped
  // value not ending in ".app" as it is, anything else looked up by name;
  // none or several found is refused, naming `flag`.
  [[nodiscard]] static std::expected<std::string, AutomationError> bundleID(
      std::string_view flag, std::string_view value, const ResolveApp& resolveApp);

  // The tool's own sentences.
  [[nodiscard]] static std::string notInstalled();
  [[nodiscard]] static std::string notDelivered();
  [[nodiscard]] static std::string layersUnreadable();
  [[nodiscard]] static std::string noLayers();
  [[nodiscard]] static std::string noSheets();
  [[nodiscard]] static std::string unreadableImport();
  // The sentence for output that could not be written (a full disk).
  [[nodiscard]] static std::string outputUnwritable();
  // The sentence for an import whose file does not decode as its kind.
  [[nodiscard]] static std::string undecodableImport(ExportKind kind);
  // The line printed after an export was written.
  [[nodiscard]] static std::string exported(ExportKind kind, std::string_view what,
                                            std::string_view path);

  // The kind of file an import path names by its extension (current or
  // earlier), or nothing.
  [[nodiscard]] static std::optional<ExportKind> importKind(std::string_view path);
  // The extensions an import of the kind accepts (compared in lower case),
  // the current one first.
  [[nodiscard]] static std::vector<std::string_view> importExtensions(ExportKind kind);
};

}  // namespace corvel
