// CommandLineReader: reads the words of one command line by the grammar. The
// first words name the command; the rest are its options and plain words,
// taken left to right: option values become link parameters or key
// assignments, app names are resolved to bundle identifiers, key names to
// their canonical names, and file paths are made absolute.
#pragma once

#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "CorvelCore/Automation/AppMatch.h"
#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Automation/AutomationParser.h"
#include "CorvelCore/Automation/CommandGrammar.h"

namespace corvel {

// What a command line said, as read.
struct CommandLineReading {
  const CommandSpec* command = nullptr;
  std::string name;                   // the command's words as typed: "Layers store"
  std::string first;                  // its first word as typed
  std::vector<AutomationPair> pairs;  // link parameters and key assignments, in order
  // The option word typed for each link parameter (parameter, word), so a
  // refusal of the parameter names what the user wrote.
  std::vector<std::pair<std::string_view, std::string_view>> typedWords;
  std::vector<std::string> plain;  // plain words; files made absolute
  bool json = false;
  std::optional<std::string> file;  // the file option's path, made absolute
  std::string_view fileWord;        // the file option as typed ("-f" or "--file")
  bool fileTwice = false;
};

struct CommandLineReader {
  // Where relative paths and "~" lead, and how app names are found.
  struct Context {
    std::string_view currentDirectory;
    std::string_view homeFolder;
    AppResolver resolveApp;
  };

  // The reading of `words` (at least one), or the first problem met. The
  // reading refers to `words`, which must outlive it.
  [[nodiscard]] static std::expected<CommandLineReading, AutomationError> read(
      std::span<const std::string> words, const Context& context);

  // The bundle identifier an app option names. A dotted identifier that does
  // not end in ".app" is taken as written; anything else is looked up by
  // name, and a one-word identifier-shaped value no app is named is kept as
  // written. Several apps, or none for a value of no identifier's form, are
  // refused, naming `word`.
  [[nodiscard]] static std::expected<std::string, AutomationError> bundleID(
      std::string_view word, std::string_view value, const AppResolver& resolveApp);

  // A path as the user means it: absolute as it is; "~" and "~/…" from the
  // home folder; anything else joined to the current directory.
  [[nodiscard]] static std::string absolutePath(std::string_view value,
                                                std::string_view currentDirectory,
                                                std::string_view homeFolder);
};

}  // namespace corvel
