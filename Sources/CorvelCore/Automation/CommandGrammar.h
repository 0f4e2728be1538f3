// CommandGrammar: the `quillon` command line declared once, as data. Every
// command with its words, the options and plain word it takes, its menu
// text and its example; every option with what it does with its value, its
// placeholder and its texts; and how the usage text lays the commands out.
//
// The reader, the builder, the messages, the usage and help texts, the
// manual page and the shell completions all read these tables, so a new
// option is one row here and the commands that list it.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "CorvelCore/Automation/ExportKind.h"

namespace corvel {

// What an option word does with its value.
struct CommandOption {
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
  struct RawKey {};    // KEY=VALUE as a link writes it ("a:" or "app:" values name apps)
  struct UnsetKey {};  // KEY whose assignment is removed
  struct File {};      // a path, relative to the current folder or "~"
  struct JSON {};      // a flag without a value
  std::variant<Value, Key, App, AppKey, RawKey, UnsetKey, File, JSON> kind;

  // The link parameter the value becomes, or empty.
  [[nodiscard]] constexpr std::string_view parameter() const {
    if (const auto* value = std::get_if<Value>(&kind)) return value->parameter;
    if (const auto* app = std::get_if<App>(&kind)) return app->parameter;
    return {};
  }
  // True for the options that give a key its assignment (KEYS).
  [[nodiscard]] constexpr bool givesKey() const {
    return std::holds_alternative<Key>(kind) || std::holds_alternative<AppKey>(kind) ||
           std::holds_alternative<RawKey>(kind);
  }
};

// What the word after an option, or a command's plain word, is completed
// with in a shell.
enum class ValueKind {
  none,           // a flag: the option takes no value
  free,           // a number or a text of the user's: nothing to offer
  position,       // a named position
  fill,           // a fill mode
  theme,          // a theme's id or name, read from the installed tool
  layer,          // a stored layer's name, read from the installed tool
  sheetApp,       // the bundle id of an app with a changed cheatsheet, read likewise
  keyAssignment,  // KEY=VALUE: the "KEY=" part from the key names
  keyName,        // a key's name
  helpTopic,      // a topic of `help`
  importFile,     // a file of the command's kind, by its import extensions
  exportFile,     // a file of the command's kind, by its export extensions
};

struct OptionSpec {
  std::string_view word = {};  // "--position"
  CommandOption option = {};
  std::string_view placeholder = {};  // "NAME|X:Y"; empty for a flag
  std::string_view summary = {};      // a short menu text: "where the board goes"
  // What the value must be, as messages say it, for an option that is no
  // link parameter (a link parameter's own description serves the others).
  std::string_view description = {};
  std::string_view example = {};  // a value for messages about a key option: "h=arrow.left"
  ValueKind completion = ValueKind::free;
  std::string_view aliasOf = {};  // the option this one is another spelling of ("-k" for "--key")
};

// A command's plain word: a topic, a name or a file.
struct PlainWordSpec {
  std::string_view word = {};       // "FILE"
  std::string_view parameter = {};  // the link parameter it becomes, or empty
  std::string_view description = {};
  ValueKind completion = ValueKind::free;
  bool optional = false;  // `help` takes at most one; the others exactly one
};

// How an option stands in a command's synopsis.
enum class Shown {
  optional,       // [--name N]
  required,       // -f FILE
  either,         // one of a run of these: (--modifiers M | --name N)
  hidden,         // another spelling of an option shown already
  inKeys,         // one of the key options, shown together as [KEYS]
  inShowOptions,  // one of the show options, shown together as [the show options]
};

struct OptionUse {
  const OptionSpec* definition = nullptr;
  Shown shown = Shown::optional;
  std::string_view placeholder = {};  // a shorter placeholder for this command's synopsis
};

// Every command the tool knows, as the builder tells them apart.
enum class CommandName {
  help,
  version,
  show,
  toggle,
  hide,
  profile,
  theme,
  layerShow,
  layerReset,
  layersList,
  layersStore,
  layersEdit,
  layersRemove,
  layersExport,
  layersImport,
  themesList,
  themesExport,
  themesImport,
  sheetsList,
  sheetsExport,
  sheetsImport,
};

struct CommandSpec {
  std::string_view first = {};  // "layers", compared in lower case
  std::string_view sub = {};    // "store"; empty for a command without subcommands
  CommandName name = CommandName::help;
  std::string_view verb = {};               // the link verb a changing command is sent as
  std::span<const OptionUse> options = {};  // in the order of its synopsis
  const PlainWordSpec* plain = nullptr;     // the plain word it takes, or nullptr
  std::optional<ExportKind> fileKind = {};  // what its files hold (imports and exports)
  std::string_view summary = {};            // a short menu text
  std::string_view aliasOf = {};            // the command this first word is another spelling of
  std::string_view exampleWords = {};       // a command line (after "quillon") for the manual
  std::string_view exampleMeaning = {};     // what that command line does
};

// A first word with subcommands, and its menu text.
struct CommandGroup {
  std::string_view first = {};
  std::string_view summary = {};
};

// One line of the usage text: the commands it shows, in order. `newLine`
// puts a command on a continuation line ("      | store ...").
struct UsageEntry {
  std::string_view command = {};  // "layers store"
  bool newLine = false;
};
enum class UsageJoin {
  merged,     // first words joined by "|", then the first command's synopsis
  sameFirst,  // the first word once, then each subcommand: "layers list | store ..."
  fullNames,  // each command by its whole name: "layer show ... | layer reset"
};
struct UsageLine {
  std::span<const UsageEntry> entries = {};
  UsageJoin join = UsageJoin::fullNames;
};

struct CommandGrammar {
  // Every command, in the order of the usage text.
  [[nodiscard]] static std::span<const CommandSpec> commands();
  [[nodiscard]] static std::span<const CommandGroup> groups();
  [[nodiscard]] static std::span<const UsageLine> usageLines();
  // The options that give keys their assignments, in the order KEYS lists them.
  [[nodiscard]] static std::span<const OptionSpec> keyOptions();

  // The commands whose first word is `first` (in lower case), in order.
  [[nodiscard]] static std::span<const CommandSpec> withFirst(std::string_view first);
  // The command named by its words ("layers store"), or nullptr.
  [[nodiscard]] static const CommandSpec* named(std::string_view name);
  // The topics `help` takes: the first words of the commands that have one,
  // each once, in order.
  [[nodiscard]] static std::span<const std::string_view> helpTopics();
  // The option `word` of the command, or nullptr when it does not take it.
  [[nodiscard]] static const OptionSpec* option(const CommandSpec& command, std::string_view word);
  // The command's option bound to a link parameter, or nullptr.
  [[nodiscard]] static const OptionSpec* optionFor(const CommandSpec& command,
                                                   std::string_view parameter);
  // The first option of any command bound to a link parameter, or nullptr.
  [[nodiscard]] static const OptionSpec* optionFor(std::string_view parameter);
  // What an option's value must be: its own description, else its link
  // parameter's.
  [[nodiscard]] static std::string_view description(const OptionSpec& option);
  // The command's name as written in texts: "layers store".
  [[nodiscard]] static std::string name(const CommandSpec& command);
};

}  // namespace corvel
