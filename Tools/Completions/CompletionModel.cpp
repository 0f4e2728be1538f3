#include "Tools/Completions/CompletionModel.h"

#include <algorithm>
#include <array>
#include <type_traits>
#include <variant>

#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Automation/CommandLineInterface.h"
#include "CorvelCore/Automation/ExportPath.h"
#include "CorvelCore/Automation/KeyName.h"
#include "CorvelCore/Automation/ShowOptions.h"
#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Layers/FillMode.h"

namespace corvel {
namespace {

using Option = CommandLineInterface::Option;

// The menu text of each command, by its name as typed; a first word with
// subcommands has one for the group.
constexpr std::array<std::pair<std::string_view, std::string_view>, 26> kCommandSummaries{{
    {"help", "print the usage, or the help of a command"},
    {"version", "print the tool's version"},
    {"--version", "print the tool's version"},
    {"show", "show the overlay"},
    {"toggle", "show the overlay, or hide it when it shows"},
    {"hide", "hide the overlay"},
    {"profile", "switch to a profile"},
    {"theme", "switch to a theme"},
    {"layer", "show a layer for now, or reset it"},
    {"layer show", "show a layer that is not stored"},
    {"layer reset", "take away the layer shown for now"},
    {"layers", "list, store, edit, remove, export or import layers"},
    {"layers list", "list the stored layers"},
    {"layers store", "store a layer held on modifier keys"},
    {"layers edit", "change a stored layer"},
    {"layers remove", "remove a stored layer"},
    {"layers export", "write layers to a new file"},
    {"layers import", "bring in a layers file"},
    {"themes", "list, export or import themes"},
    {"themes list", "list the themes"},
    {"themes export", "write a theme to a new file"},
    {"themes import", "bring in a theme file"},
    {"sheets", "list, export or import changed cheatsheets"},
    {"sheets list", "list the changed cheatsheets"},
    {"sheets export", "write an app's changed cheatsheet to a new file"},
    {"sheets import", "bring in a cheatsheet file"},
}};

// The placeholder and menu text of each option word. A row keyed by a
// first word and the option word wins over the row of the word alone.
struct OptionText {
  std::string_view key;
  std::string_view placeholder;
  std::string_view summary;
};
constexpr std::array<OptionText, 23> kOptionTexts{{
    {"--position", "NAME|X:Y", "where the board goes"},
    {"--width", "N", "the board's width in points"},
    {"--screen", "ID|NAME", "the display to show it on"},
    {"--theme", "NAME", "the theme to show it in"},
    {"--fill", "visible|dimmed|blank", "how keys without a label look"},
    {"--hide-after-ms", "N", "hide it again after this many milliseconds"},
    {"--fade-out-ms", "N", "how many milliseconds hiding fades"},
    {"--name", "N", "the name of the layer shown"},
    {"layers --name", "N", "the layer's name"},
    {"themes --name", "N", "the theme's name or id"},
    {"--text", "KEY=TEXT", "put a text on a key"},
    {"--symbol", "KEY=NAME", "put a symbol on a key"},
    {"--symtext", "KEY=SYMBOL|TEXT", "put a symbol and a text on a key"},
    {"--app", "KEY=APP", "make a key open an app"},
    {"sheets --app", "APP", "the app whose cheatsheet to write"},
    {"-k", "KEY=VALUE", "give a key a value as a link writes it"},
    {"--key", "KEY=VALUE", "give a key a value as a link writes it"},
    {"-f", "FILE", "the new file to write"},
    {"--file", "FILE", "the new file to write"},
    {"--modifiers", "M", "the modifier keys that hold the layer"},
    {"--for-app", "APP", "the app the layer works in"},
    {"--hold-delay", "S", "seconds to hold the keys before the layer shows"},
    {"--unset-key", "KEY", "take away a key's assignment"},
}};
constexpr OptionText kJSONText{"--json", "", "print JSON"};

// What each group's files hold.
constexpr std::array<std::pair<std::string_view, ExportKind>, 3> kFileKinds{{
    {"layers", ExportKind::layers},
    {"themes", ExportKind::theme},
    {"sheets", ExportKind::sheet},
}};

std::optional<ExportKind> fileKind(std::string_view first) {
  for (const auto& [word, kind] : kFileKinds) {
    if (word == first) return kind;
  }
  return std::nullopt;
}

std::optional<std::string_view> commandSummary(std::string_view name) {
  for (const auto& [key, text] : kCommandSummaries) {
    if (key == name) return text;
  }
  return std::nullopt;
}

const OptionText* optionText(std::string_view first, std::string_view word) {
  if (word == kJSONText.key) return &kJSONText;
  const std::string scoped = std::string(first) + " " + std::string(word);
  for (const auto& text : kOptionTexts) {
    if (text.key == scoped) return &text;
  }
  for (const auto& text : kOptionTexts) {
    if (text.key == word) return &text;
  }
  return nullptr;
}

// What an option's value is completed with, from what the parser does with it.
ValueKind valueKind(std::string_view first, const Option& option) {
  return std::visit(
      [&](const auto& kind) {
        using Kind = std::decay_t<decltype(kind)>;
        if constexpr (std::is_same_v<Kind, Option::Value>) {
          if (kind.parameter == "position") return ValueKind::position;
          if (kind.parameter == "fill") return ValueKind::fill;
          if (kind.parameter == "theme") return ValueKind::theme;
          if (kind.parameter == "name" && first == "layers") return ValueKind::layer;
          if (kind.parameter == "name" && first == "themes") return ValueKind::theme;
          return ValueKind::free;
        } else if constexpr (std::is_same_v<Kind, Option::App>) {
          // Only an export of a cheatsheet names an app the tool can list.
          return first == "sheets" ? ValueKind::sheetApp : ValueKind::free;
        } else if constexpr (std::is_same_v<Kind, Option::Key> ||
                             std::is_same_v<Kind, Option::AppKey> ||
                             std::is_same_v<Kind, Option::RawKey>) {
          return ValueKind::keyAssignment;
        } else if constexpr (std::is_same_v<Kind, Option::UnsetKey>) {
          return ValueKind::keyName;
        } else if constexpr (std::is_same_v<Kind, Option::File>) {
          return ValueKind::exportFile;
        } else {
          return ValueKind::none;
        }
      },
      option.kind);
}

// What a value bound to a link parameter must be, in the words of the
// tool's messages.
std::optional<std::string> description(const Option& option) {
  const auto* value = std::get_if<Option::Value>(&option.kind);
  if (value == nullptr) return std::nullopt;
  const auto text = AutomationError::expectation(value->parameter);
  if (!text) return std::nullopt;
  return std::string(*text);
}

bool isPlainWord(std::string_view word) {
  return !word.empty() && std::all_of(word.begin(), word.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
  });
}

std::string lowercased(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return out;
}

// The word a shell offers for a key: its key name when that is a plain word,
// else another spelling the parser reads as the same key ("equal" for "=",
// "plus" for the keypad's "+"), so that no offered word needs quoting or
// holds the "=" that ends a key's name.
std::optional<std::string> completedKeyName(const KeyInfo& key) {
  const auto canonical = KeyName::canonical(key.name);
  if (!canonical) return std::nullopt;
  for (const std::string& spelling :
       {std::string(key.name), *canonical, lowercased(key.identifier)}) {
    if (isPlainWord(spelling) && KeyName::canonical(spelling) == canonical) return spelling;
  }
  return std::nullopt;
}

std::vector<std::string> strings(std::span<const std::string_view> words) {
  return {words.begin(), words.end()};
}

}  // namespace

std::string CompletedCommand::name() const { return sub.empty() ? first : first + " " + sub; }

std::expected<CompletionModel, std::string> CompletionModel::make() {
  CompletionModel model;
  for (const auto& command : CommandLineInterface::commands()) {
    CompletedCommand completed;
    completed.first = command.first;
    completed.sub = command.sub;
    const auto summary = commandSummary(completed.name());
    if (!summary) return std::unexpected("no menu text for the command " + completed.name());
    completed.summary = *summary;
    if (!completed.sub.empty() && !commandSummary(completed.first)) {
      return std::unexpected("no menu text for the commands " + completed.first);
    }
    completed.kind = fileKind(command.first);
    for (const auto& [word, option] : command.options) {
      const OptionText* text = optionText(command.first, word);
      if (text == nullptr) {
        return std::unexpected("no menu text for the option " + std::string(word) + " of " +
                               completed.name());
      }
      CompletedOption completedOption{std::string(word),
                                      valueKind(command.first, option),
                                      std::string(text->placeholder),
                                      std::string(text->summary),
                                      description(option).value_or(std::string(text->summary)),
                                      false};
      completedOption.repeatable = completedOption.value == ValueKind::keyAssignment ||
                                   completedOption.value == ValueKind::keyName;
      if (completedOption.value == ValueKind::exportFile && completed.kind) {
        completed.extensions = strings(ExportPath::extensions(*completed.kind));
      }
      completed.options.push_back(std::move(completedOption));
    }
    completed.plainWord = command.word;
    if (command.word == "TOPIC") {
      completed.plain = ValueKind::helpTopic;
    } else if (command.word == "NAME") {
      completed.plain = command.first == "theme" ? ValueKind::theme : ValueKind::free;
    } else if (command.word == "FILE" && completed.kind) {
      completed.plain = ValueKind::importFile;
      completed.extensions = strings(CommandLineInterface::importExtensions(*completed.kind));
    } else if (!command.word.empty()) {
      return std::unexpected("no completion for the word " + std::string(command.word) + " of " +
                             completed.name());
    }
    model.commands.push_back(std::move(completed));
  }
  for (const auto& entry : namedPositionNames) model.positions.emplace_back(entry.raw);
  for (const auto& entry : fillModeNames) model.fills.emplace_back(entry.raw);
  model.topics = strings(CommandLineInterface::helpTopics);
  for (const auto& key : allKeys()) {
    // A layer never takes over a modifier or caps lock, so those are not offered.
    if (key.group == KeyGroup::modifier || key.group == KeyGroup::inert) continue;
    if (auto word = completedKeyName(key)) model.keys.push_back(std::move(*word));
  }
  return model;
}

std::vector<std::string> CompletionModel::firstWords() const {
  std::vector<std::string> words;
  for (const auto& command : commands) {
    if (std::find(words.begin(), words.end(), command.first) == words.end()) {
      words.push_back(command.first);
    }
  }
  return words;
}

std::vector<std::string> CompletionModel::subcommands(std::string_view first) const {
  std::vector<std::string> words;
  for (const auto& command : commands) {
    if (command.first == first && !command.sub.empty()) words.push_back(command.sub);
  }
  return words;
}

std::string CompletionModel::summary(std::string_view first) const {
  return std::string(commandSummary(first).value_or(""));
}

}  // namespace corvel
