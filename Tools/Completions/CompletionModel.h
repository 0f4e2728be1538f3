// CompletionModel: the command-line grammar seen from a shell's completion
// and from the manual page: every command with its option words, what each
// option's value is completed with, and the fixed words (positions, fill
// modes, help topics, key names, file extensions).
//
// Everything is read from the tables the parser itself uses
// (`CommandLineInterface::commands()`, the key table, the show options, the
// import and export extensions); only the short menu texts live here, and
// `make` refuses a grammar with a command or option that has none, so a new
// command cannot ship without its completion.
#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Automation/ExportKind.h"

namespace corvel {

// What the word after an option (or a command's plain word) is completed with.
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

struct CompletedOption {
  std::string word;  // "--position", "-k"
  ValueKind value = ValueKind::none;
  std::string placeholder;  // "NAME|X:Y", "KEY=TEXT"; empty for a flag
  std::string summary;      // a short menu text, such as "where the board goes"
  std::string description;  // what the value must be, as the tool's messages say; else the summary
  bool repeatable = false;  // key options may be given once per key
};

struct CompletedCommand {
  std::string first;    // "layers"
  std::string sub;      // "store"; empty without subcommands
  std::string summary;  // a short menu text
  std::vector<CompletedOption> options;
  ValueKind plain = ValueKind::none;    // what the plain word is, if any
  std::string plainWord;                // "TOPIC", "NAME", "FILE"
  std::optional<ExportKind> kind;       // what its files hold (imports and exports)
  std::vector<std::string> extensions;  // the file extensions of its plain word or -f

  // "layers store", or "show".
  [[nodiscard]] std::string name() const;
};

struct CompletionModel {
  std::vector<CompletedCommand> commands;  // in the order of the usage text
  std::vector<std::string> positions;      // the named positions
  std::vector<std::string> fills;          // the fill modes
  std::vector<std::string> topics;         // the help topics
  std::vector<std::string> keys;           // key names to complete, each a plain word

  // The model of the parser's grammar, or the text of what has no menu text.
  [[nodiscard]] static std::expected<CompletionModel, std::string> make();

  // The first words, each once, in order.
  [[nodiscard]] std::vector<std::string> firstWords() const;
  // The subcommand words of a first word, in order; empty for a command
  // without subcommands.
  [[nodiscard]] std::vector<std::string> subcommands(std::string_view first) const;
  // The menu text of a first word (of its group when it has subcommands).
  [[nodiscard]] std::string summary(std::string_view first) const;
};

}  // namespace corvel
