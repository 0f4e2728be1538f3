#include "CorvelCore/Automation/CommandLineInterface.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <vector>

#include "CorvelCore/Automation/AutomationParser.h"
#include "CorvelCore/Automation/ExportPath.h"
#include "CorvelCore/Automation/KeyAssignment.h"
#include "CorvelCore/Automation/KeyName.h"
#include "CorvelCore/Brand/Brand.h"
#include "CorvelCore/Layers/LayerNames.h"
#include "CorvelCore/Support/UnicodeText.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

using Option = CommandLineInterface::Option;

// ---- Option tables ----

struct OptionRow {
  std::string_view word;
  Option option;
};

const std::vector<OptionRow> kShowOptions = {
    {"--position", {Option::Value{"position"}}},
    {"--width", {Option::Value{"width"}}},
    {"--screen", {Option::Value{"screen"}}},
    {"--theme", {Option::Value{"theme"}}},
    {"--fill", {Option::Value{"fill"}}},
    {"--hide-after-ms", {Option::Value{"hideAfterMS"}}},
    {"--fade-out-ms", {Option::Value{"fadeOutMS"}}},
    {"--name", {Option::Value{"name"}}},
};
const std::vector<OptionRow> kKeyOptions = {
    {"--text", {Option::Key{"text:"}}},
    {"--symbol", {Option::Key{"s:"}}},
    {"--symtext", {Option::Key{"symtext:"}}},
    {"--app", {Option::AppKey{}}},
    {"-k", {Option::RawKey{}}},
    {"--key", {Option::RawKey{}}},
};
const std::vector<OptionRow> kFileOptions = {
    {"-f", {Option::File{}}},
    {"--file", {Option::File{}}},
};
const std::vector<OptionRow> kHideOptions = {
    {"--fade-out-ms", {Option::Value{"fadeOutMS"}}},
};
const std::vector<OptionRow> kLayerStoreOptions = {
    {"--modifiers", {Option::Value{"modifiers"}}}, {"--name", {Option::Value{"name"}}},
    {"--for-app", {Option::App{"app"}}},           {"--hold-delay", {Option::Value{"holdDelay"}}},
    {"--fill", {Option::Value{"fill"}}},
};
const std::vector<OptionRow> kLayerEditExtra = {
    {"--unset-key", {Option::UnsetKey{}}},
};
const std::vector<OptionRow> kListOptions = {
    {"--json", {Option::JSON{}}},
};
const std::vector<OptionRow> kNameOption = {
    {"--name", {Option::Value{"name"}}},
};
const std::vector<OptionRow> kSheetExportOptions = {
    {"--app", {Option::App{"app"}}},
};

// What each option word takes, as messages describe it: the link parameter's
// description where the option is one, else a fixed text.
struct FlagWord {
  std::string_view word;
  std::string_view parameter;    // the link parameter, or empty
  std::string_view description;  // used when there is no parameter
};
constexpr std::array<FlagWord, 14> kFlagWords{{
    {"--position", "position", {}},
    {"--width", "width", {}},
    {"--screen", "screen", {}},
    {"--theme", "theme", {}},
    {"--fill", "fill", {}},
    {"--hide-after-ms", "hideAfterMS", {}},
    {"--fade-out-ms", "fadeOutMS", {}},
    {"--name", "name", {}},
    {"--modifiers", "modifiers", {}},
    {"--hold-delay", "holdDelay", {}},
    {"--for-app", {}, "an app's bundle id, such as com.apple.Safari, or its name"},
    {"--app", {}, "an app's bundle id, such as com.apple.Safari, or its name"},
    {"-f", {}, "the file to write, such as layers.quillonlayer"},
    {"FILE", {}, "the file to import"},
}};
constexpr FlagWord kNameWord{"NAME", {}, "the name or the id of a profile or a theme"};

// The option word that stands for a link parameter in messages.
constexpr std::array<std::pair<std::string_view, std::string_view>, 12> kParameterWords{{
    {"position", "--position"},
    {"width", "--width"},
    {"screen", "--screen"},
    {"theme", "--theme"},
    {"fill", "--fill"},
    {"hideAfterMS", "--hide-after-ms"},
    {"fadeOutMS", "--fade-out-ms"},
    {"name", "--name"},
    {"modifiers", "--modifiers"},
    {"holdDelay", "--hold-delay"},
    {"app", "--app"},
    {"file", "FILE"},
}};

std::string description(const FlagWord& flag) {
  if (flag.parameter.empty()) return std::string(flag.description);
  return std::string(AutomationError::expectation(flag.parameter).value_or(""));
}

const FlagWord* flagWord(std::string_view word) {
  for (const auto& flag : kFlagWords) {
    if (flag.word == word) return &flag;
  }
  return nullptr;
}

// The example each key option shows in its messages.
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> kExamples{{
    {"--symbol", "h=arrow.left"},
    {"--app", "s=Safari"},
    {"--symtext", "f=magnifyingglass|Find"},
    {"--unset-key", "q"},
    {"-k", "h=s:arrow.left"},
}};

std::string_view example(std::string_view optionWord) {
  if (optionWord == "--key") optionWord = "-k";
  for (const auto& [word, text] : kExamples) {
    if (word == optionWord) return text;
  }
  return "q=Quit";
}

// ---- Commands ----

enum class Verb {
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

struct CommandRow {
  std::string_view first;
  std::string_view sub;  // empty for commands without subcommands
  Verb verb;
  std::vector<const std::vector<OptionRow>*> tables;
};

const std::vector<CommandRow>& commandTable() {
  static const std::vector<CommandRow> rows = {
      {"help", "", Verb::help, {}},
      {"version", "", Verb::version, {}},
      {"--version", "", Verb::version, {}},
      {"show", "", Verb::show, {&kShowOptions, &kKeyOptions}},
      {"toggle", "", Verb::toggle, {&kShowOptions, &kKeyOptions}},
      {"hide", "", Verb::hide, {&kHideOptions}},
      {"profile", "", Verb::profile, {}},
      {"theme", "", Verb::theme, {}},
      {"layer", "show", Verb::layerShow, {&kShowOptions, &kKeyOptions}},
      {"layer", "reset", Verb::layerReset, {}},
      {"layers", "list", Verb::layersList, {&kListOptions}},
      {"layers", "store", Verb::layersStore, {&kLayerStoreOptions, &kKeyOptions}},
      {"layers", "edit", Verb::layersEdit, {&kLayerStoreOptions, &kKeyOptions, &kLayerEditExtra}},
      {"layers", "remove", Verb::layersRemove, {&kLayerStoreOptions}},
      {"layers", "export", Verb::layersExport, {&kNameOption, &kFileOptions}},
      {"layers", "import", Verb::layersImport, {}},
      {"themes", "list", Verb::themesList, {&kListOptions}},
      {"themes", "export", Verb::themesExport, {&kNameOption, &kFileOptions}},
      {"themes", "import", Verb::themesImport, {}},
      {"sheets", "list", Verb::sheetsList, {&kListOptions}},
      {"sheets", "export", Verb::sheetsExport, {&kSheetExportOptions, &kFileOptions}},
      {"sheets", "import", Verb::sheetsImport, {}},
  };
  return rows;
}

// Option words each command takes beyond its tables' rows: edit and remove
// take only some of the store options.
bool takesOption(Verb verb, std::string_view word) {
  if (verb == Verb::layersEdit || verb == Verb::layersRemove) {
    return word != "--hold-delay" && word != "--fill";
  }
  return true;
}

constexpr const auto& kHelpTopics = CommandLineInterface::helpTopics;

std::string lowercasedASCII(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return out;
}

std::string joinedChoices(const std::vector<std::string_view>& choices) {
  std::string out;
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (i > 0) out += i + 1 == choices.size() ? " or " : ", ";
    out += choices[i];
  }
  return out;
}

// ---- Messages of the grammar ----

AutomationError notACommand(std::string_view word) {
  return AutomationError::badArgument(CommandLineInterface::shown(word) +
                                      " is not a quillon command. Run quillon help to see the "
                                      "commands.");
}

AutomationError notTaken(std::string_view name, std::string_view first, std::string_view word) {
  std::string text = "quillon " + std::string(name) + " does not take ";
  if (word.starts_with('-')) text += "the option ";
  text += CommandLineInterface::shown(word) + ". Run quillon help " + std::string(first) +
          " to see what it takes.";
  return AutomationError::badArgument(std::move(text));
}

AutomationError needsOneOf(std::string_view name, const std::vector<std::string_view>& choices,
                           std::optional<std::string_view> given) {
  std::string text = "quillon " + std::string(name);
  if (given) {
    text += " takes " + joinedChoices(choices) + ", not " + CommandLineInterface::shown(*given);
  } else {
    text += " needs one of " + joinedChoices(choices);
  }
  text += ". Run quillon help " + std::string(name) + ".";
  return AutomationError::badArgument(std::move(text));
}

AutomationError needsAValue(std::string_view word, std::string_view first) {
  return AutomationError::badArgument(std::string(word) + " needs a value. Run quillon help " +
                                      std::string(first) + " to see what it takes.");
}

AutomationError notAKey(std::string_view key, std::string_view word) {
  return AutomationError::badArgument(
      CommandLineInterface::shown(key) +
      " is not the name of a key. Name keys as a, 1, f5, esc or left, such as " +
      std::string(word) + " " + std::string(example(word)) + ".");
}

AutomationError takesKeyValue(std::string_view word) {
  return AutomationError::badArgument(std::string(word) + " takes KEY=VALUE, such as " +
                                      std::string(example(word)));
}

AutomationError flagMustBe(const FlagWord& flag) {
  return AutomationError::badArgument(std::string(flag.word) + " must be " + description(flag) +
                                      ".");
}

AutomationError flagMissing(const FlagWord& flag) {
  return AutomationError::badArgument(std::string(flag.word) + " is missing. It must be " +
                                      description(flag) + ".");
}

// ---- Reading the words ----

struct Reading {
  std::vector<AutomationPair> pairs;
  // The option word typed for each link parameter, so a refusal of the
  // parameter names what the user wrote.
  std::vector<std::pair<std::string_view, std::string_view>> typedWords;
  std::vector<std::string> plain;
  bool json = false;
  std::optional<std::string> file;
  bool fileTwice = false;
};

std::string homeFolder() {
  const char* home = std::getenv("HOME");
  return home != nullptr ? home : "";
}

std::string absolutePath(std::string_view value, std::string_view currentDirectory) {
  if (value.starts_with('/')) return std::string(value);
  if (value == "~") return homeFolder();
  if (value.starts_with("~/")) return homeFolder() + std::string(value.substr(1));
  std::string base(currentDirectory);
  if (base.empty() || base.back() != '/') base.push_back('/');
  return base + std::string(value);
}

struct Reader {
  const CommandRow& row;
  std::string_view name;   // the command's words as typed
  std::string_view first;  // the first word as typed
  std::string_view currentDirectory;
  const CommandLineInterface::ResolveApp& resolveApp;

  const Option* find(std::string_view word) const {
    if (!takesOption(row.verb, word)) return nullptr;
    for (const auto* table : row.tables) {
      for (const auto& option : *table) {
        if (option.word == word) return &option.option;
      }
    }
    return nullptr;
  }

  std::expected<std::string, AutomationError> appValue(std::string_view word,
                                                       std::string_view value) const {
    return CommandLineInterface::bundleID(word, value, resolveApp);
  }

  // KEY=VALUE: the key's canonical name and the value.
  std::expected<std::pair<std::string, std::string>, AutomationError> keyValue(
      std::string_view word, std::string_view value) const {
    const std::size_t equals = value.find('=');
    if (equals == std::string_view::npos) return std::unexpected(takesKeyValue(word));
    const std::string_view key = value.substr(0, equals);
    auto canonical = KeyName::canonical(key);
    if (!canonical) return std::unexpected(notAKey(key, word));
    return std::pair{*canonical, std::string(value.substr(equals + 1))};
  }

  std::expected<void, AutomationError> take(Reading& reading, std::string_view word,
                                            const Option& option, std::string_view value) const {
    return std::visit(
        [&](const auto& kind) -> std::expected<void, AutomationError> {
          using Kind = std::decay_t<decltype(kind)>;
          if constexpr (std::is_same_v<Kind, Option::Value>) {
            reading.pairs.emplace_back(std::string(kind.parameter), std::string(value));
            reading.typedWords.emplace_back(kind.parameter, word);
          } else if constexpr (std::is_same_v<Kind, Option::App>) {
            auto id = appValue(word, value);
            if (!id) return std::unexpected(id.error());
            reading.pairs.emplace_back(std::string(kind.parameter), *id);
            reading.typedWords.emplace_back(kind.parameter, word);
          } else if constexpr (std::is_same_v<Kind, Option::Key>) {
            auto pair = keyValue(word, value);
            if (!pair) return std::unexpected(pair.error());
            reading.pairs.emplace_back(pair->first, std::string(kind.prefix) + pair->second);
          } else if constexpr (std::is_same_v<Kind, Option::AppKey>) {
            auto pair = keyValue(word, value);
            if (!pair) return std::unexpected(pair.error());
            auto id = appValue(word, pair->second);
            if (!id) return std::unexpected(id.error());
            reading.pairs.emplace_back(pair->first, "a:" + *id);
          } else if constexpr (std::is_same_v<Kind, Option::RawKey>) {
            auto pair = keyValue(word, value);
            if (!pair) return std::unexpected(pair.error());
            if (const auto app = KeyAssignment::appPart(pair->second)) {
              auto id = appValue(word, *app);
              if (!id) return std::unexpected(id.error());
              reading.pairs.emplace_back(pair->first, "a:" + *id);
            } else {
              reading.pairs.emplace_back(pair->first, std::move(pair->second));
            }
          } else if constexpr (std::is_same_v<Kind, Option::UnsetKey>) {
            auto canonical = KeyName::canonical(value);
            if (!canonical) return std::unexpected(notAKey(value, word));
            reading.pairs.emplace_back(*canonical, "-");
          } else if constexpr (std::is_same_v<Kind, Option::File>) {
            if (reading.file) reading.fileTwice = true;
            reading.file = absolutePath(value, currentDirectory);
          } else {
            reading.json = true;
          }
          return {};
        },
        option.kind);
  }

  std::expected<Reading, AutomationError> read(std::span<const std::string> words,
                                               bool takesWords) const {
    Reading reading;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
      const std::string& word = words[i];
      if (optionsEnded || word.size() < 2 || !word.starts_with('-')) {
        if (!takesWords) return std::unexpected(notTaken(name, first, word));
        reading.plain.push_back(word);
        continue;
      }
      if (word == "--") {
        optionsEnded = true;
        continue;
      }
      std::string_view optionWord = word;
      std::optional<std::string_view> inlineValue;
      if (word.starts_with("--")) {
        if (const std::size_t equals = word.find('='); equals != std::string::npos) {
          optionWord = std::string_view(word).substr(0, equals);
          inlineValue = std::string_view(word).substr(equals + 1);
        }
      }
      const Option* option = find(optionWord);
      if (option == nullptr) return std::unexpected(notTaken(name, first, optionWord));
      if (std::holds_alternative<Option::JSON>(option->kind)) {
        // A flag takes no value, so a value given to it is a word it does not take.
        if (inlineValue) return std::unexpected(notTaken(name, first, word));
        reading.json = true;
        continue;
      }
      std::string_view value;
      if (inlineValue) {
        value = *inlineValue;
      } else if (i + 1 < words.size()) {
        value = words[++i];
      } else {
        return std::unexpected(needsAValue(optionWord, first));
      }
      if (auto taken = take(reading, optionWord, *option, value); !taken) {
        return std::unexpected(taken.error());
      }
    }
    return reading;
  }
};

// ---- Building actions ----

// A bad value of a parameter the user gave through an option is refused
// naming the option word as typed.
AutomationError reworded(AutomationError error, const Reading& reading) {
  const auto* bad = error.as<AutomationError::BadValue>();
  if (bad == nullptr) return error;
  for (const auto& [parameter, word] : reading.typedWords) {
    if (parameter != bad->parameter) continue;
    if (const FlagWord* flag = flagWord(word)) return flagMustBe(*flag);
  }
  return error;
}

std::expected<CommandLineAction, AutomationError> send(std::string_view verb,
                                                       const std::vector<AutomationPair>& pairs,
                                                       const Reading& reading = {}) {
  auto command = AutomationParser::parse(verb, pairs, AutomationSource::commandLine);
  if (!command) return std::unexpected(reworded(command.error(), reading));
  if (command->appsNamed().size() > AutomationCommand::maxApps) {
    return std::unexpected(AutomationError::badArgument(AutomationCommand::tooManyAppsMessage()));
  }
  return CommandLineAction(CommandLineAction::Send{std::move(*command)});
}

std::optional<std::string> pairValue(const std::vector<AutomationPair>& pairs,
                                     std::string_view name) {
  for (const auto& [key, value] : pairs) {
    if (key == name) return value;
  }
  return std::nullopt;
}

std::size_t pairCount(const std::vector<AutomationPair>& pairs, std::string_view name) {
  return static_cast<std::size_t>(std::count_if(
      pairs.begin(), pairs.end(), [&](const auto& pair) { return pair.first == name; }));
}

// An export's target (-f), required and given once.
std::expected<std::string, AutomationError> exportTarget(const Reading& reading) {
  const FlagWord* flag = flagWord("-f");
  if (!reading.file) return std::unexpected(flagMissing(*flag));
  if (reading.fileTwice) return std::unexpected(flagMustBe(*flag));
  return *reading.file;
}

std::expected<std::optional<std::string>, AutomationError> exportName(const Reading& reading) {
  if (pairCount(reading.pairs, "name") > 1) return std::unexpected(flagMustBe(*flagWord("--name")));
  auto name = pairValue(reading.pairs, "name");
  if (name && name->empty()) return std::unexpected(flagMustBe(*flagWord("--name")));
  return name;
}

std::optional<ExportKind> kindOf(Verb verb) {
  switch (verb) {
    case Verb::layersImport:
      return ExportKind::layers;
    case Verb::themesImport:
      return ExportKind::theme;
    case Verb::sheetsImport:
      return ExportKind::sheet;
    default:
      return std::nullopt;
  }
}

constexpr std::array<std::pair<std::string_view, ExportKind>, 7> kImportExtensions{{
    {"quillonlayer", ExportKind::layers},
    {"corvellayer", ExportKind::layers},
    {"json", ExportKind::layers},
    {"quillontheme", ExportKind::theme},
    {"corveltheme", ExportKind::theme},
    {"quillonsheet", ExportKind::sheet},
    {"corvelsheet", ExportKind::sheet},
}};

std::string_view currentExtension(ExportKind kind) {
  switch (kind) {
    case ExportKind::layers:
      return "quillonlayer";
    case ExportKind::theme:
      return "quillontheme";
    case ExportKind::sheet:
      return "quillonsheet";
  }
  return "";
}

std::expected<CommandLineAction, AutomationError> build(Verb verb, const Reading& reading,
                                                        std::string_view name) {
  switch (verb) {
    case Verb::version:
      return CommandLineAction(CommandLineAction::Version{});
    case Verb::help: {
      if (reading.plain.empty()) return CommandLineAction(CommandLineAction::Help{});
      const std::string topic = lowercasedASCII(reading.plain.front());
      if (std::find(kHelpTopics.begin(), kHelpTopics.end(), topic) == kHelpTopics.end()) {
        return std::unexpected(notACommand(reading.plain.front()));
      }
      return CommandLineAction(CommandLineAction::Help{topic});
    }
    case Verb::show:
      return send("show", reading.pairs, reading);
    case Verb::toggle:
      return send("toggle", reading.pairs, reading);
    case Verb::hide:
      return send("hide", reading.pairs, reading);
    case Verb::layerShow:
      return send("layer/show", reading.pairs, reading);
    case Verb::layerReset:
      return send("layer/reset", reading.pairs, reading);
    case Verb::layersStore:
      return send("layer/store", reading.pairs, reading);
    case Verb::layersEdit:
      return send("layer/edit", reading.pairs, reading);
    case Verb::layersRemove:
      return send("layer/remove", reading.pairs, reading);
    case Verb::profile:
    case Verb::theme: {
      if (reading.plain.empty()) return std::unexpected(flagMissing(kNameWord));
      auto action =
          send(verb == Verb::profile ? "profile" : "theme", {{"name", reading.plain.front()}});
      if (!action && action.error().as<AutomationError::BadValue>() != nullptr) {
        return std::unexpected(flagMustBe(kNameWord));
      }
      return action;
    }
    case Verb::layersList:
      return CommandLineAction(CommandLineAction::ListLayers{reading.json});
    case Verb::themesList:
      return CommandLineAction(CommandLineAction::ListThemes{reading.json});
    case Verb::sheetsList:
      return CommandLineAction(CommandLineAction::ListSheets{reading.json});
    case Verb::layersExport:
    case Verb::themesExport: {
      auto target = exportTarget(reading);
      if (!target) return std::unexpected(target.error());
      auto exportedName = exportName(reading);
      if (!exportedName) return std::unexpected(exportedName.error());
      if (verb == Verb::layersExport) {
        return CommandLineAction(CommandLineAction::ExportLayers{*exportedName, *target});
      }
      return CommandLineAction(CommandLineAction::ExportTheme{*exportedName, *target});
    }
    case Verb::sheetsExport: {
      auto app = pairValue(reading.pairs, "app");
      if (!app) return std::unexpected(flagMissing(*flagWord("--app")));
      if (pairCount(reading.pairs, "app") > 1) {
        return std::unexpected(flagMustBe(*flagWord("--app")));
      }
      auto target = exportTarget(reading);
      if (!target) return std::unexpected(target.error());
      return CommandLineAction(CommandLineAction::ExportSheet{*app, *target});
    }
    case Verb::layersImport:
    case Verb::themesImport:
    case Verb::sheetsImport: {
      if (reading.plain.size() != 1) {
        return std::unexpected(
            AutomationError::badArgument("quillon " + std::string(name) +
                                         " takes one FILE. Put quotes around a name with "
                                         "spaces."));
      }
      const ExportKind kind = kindOf(verb).value_or(ExportKind::layers);
      const std::string& file = reading.plain.front();
      if (CommandLineInterface::importKind(file) != kind) {
        return std::unexpected(
            AutomationError::badArgument("quillon " + std::string(name) + " takes a ." +
                                         std::string(currentExtension(kind)) + " file."));
      }
      return send("import", {{"file", file}});
    }
  }
  return std::unexpected(notACommand(name));
}

std::string_view plainWord(Verb verb) {
  switch (verb) {
    case Verb::help:
      return "TOPIC";
    case Verb::profile:
    case Verb::theme:
      return "NAME";
    default:
      return kindOf(verb) ? "FILE" : "";
  }
}

}  // namespace

const std::vector<CommandLineInterface::Command>& CommandLineInterface::commands() {
  static const std::vector<Command> commands = [] {
    std::vector<Command> out;
    for (const auto& row : commandTable()) {
      Command command{row.first, row.sub, {}, plainWord(row.verb)};
      for (const auto* table : row.tables) {
        for (const auto& option : *table) {
          if (takesOption(row.verb, option.word))
            command.options.emplace_back(option.word, option.option);
        }
      }
      out.push_back(std::move(command));
    }
    return out;
  }();
  return commands;
}

std::expected<CommandLineAction, AutomationError> CommandLineInterface::parse(
    std::span<const std::string> words, std::string_view currentDirectory,
    const ResolveApp& resolveApp) {
  if (words.empty()) return CommandLineAction(CommandLineAction::Help{});
  for (const auto& word : words) {
    if (word == "--") break;
    if (word == "-h" || word == "--help") {
      return CommandLineAction(CommandLineAction::Help{lowercasedASCII(words.front())});
    }
  }
  const std::string first = lowercasedASCII(words.front());
  const auto& rows = commandTable();
  std::vector<const CommandRow*> matches;
  for (const auto& row : rows) {
    if (row.first == first) matches.push_back(&row);
  }
  if (matches.empty()) return std::unexpected(notACommand(words.front()));

  const CommandRow* row = matches.front();
  std::size_t consumed = 1;
  std::string name = words.front();
  if (!row->sub.empty()) {
    std::vector<std::string_view> choices;
    choices.reserve(matches.size());
    for (const auto* candidate : matches) choices.push_back(candidate->sub);
    if (words.size() < 2) return std::unexpected(needsOneOf(words.front(), choices, std::nullopt));
    const std::string sub = lowercasedASCII(words[1]);
    auto found = std::find_if(matches.begin(), matches.end(),
                              [&](const CommandRow* candidate) { return candidate->sub == sub; });
    if (found == matches.end()) {
      return std::unexpected(needsOneOf(words.front(), choices, std::string_view(words[1])));
    }
    row = *found;
    consumed = 2;
    name += " " + words[1];
  }

  const bool takesWords = row->verb == Verb::help || row->verb == Verb::profile ||
                          row->verb == Verb::theme || kindOf(row->verb).has_value();
  const Reader reader{*row, name, words.front(), currentDirectory, resolveApp};
  auto reading = reader.read(words.subspan(consumed), takesWords);
  if (!reading) return std::unexpected(reading.error());
  // Commands that take plain words take a fixed number of them.
  const std::size_t allowed = kindOf(row->verb) ? reading->plain.size() : 1;
  if (reading->plain.size() > allowed) {
    return std::unexpected(notTaken(name, words.front(), reading->plain[allowed]));
  }
  if (kindOf(row->verb)) {
    // Imports name their file like any other path the tool reads.
    for (auto& file : reading->plain) file = absolutePath(file, currentDirectory);
  }
  return build(row->verb, *reading, name);
}

const std::string& CommandLineInterface::usage() {
  static const std::string text =
      "quillon controls Quillon, the keyboard overlay, from Terminal and scripts.\n"
      "\n"
      "Usage:\n"
      "  quillon show|hide|toggle [--position NAME|X:Y] [--width N] [--screen ID|NAME] [--theme "
      "NAME]\n"
      "      [--fill visible|dimmed|blank] [--hide-after-ms N] [--fade-out-ms N] [--name N] "
      "[KEYS]\n"
      "  quillon profile NAME | theme NAME\n"
      "  quillon layer show [the show options] [KEYS] | layer reset\n"
      "  quillon layers list [--json]\n"
      "      | store --modifiers M [--name N] [--for-app APP] [--hold-delay S] [--fill F] "
      "[KEYS]\n"
      "      | edit (--modifiers M | --name N) [--for-app APP] [KEYS] [--unset-key KEY]\n"
      "      | remove (--modifiers M | --name N) [--for-app APP]\n"
      "      | export [--name N] -f FILE | import FILE\n"
      "  quillon themes list [--json] | export [--name N] -f FILE | import FILE\n"
      "  quillon sheets list [--json] | export --app APP -f FILE | import FILE\n"
      "  quillon help [COMMAND] | version\n"
      "\n"
      "KEYS put words, symbols or apps on keys:\n"
      "  --text KEY=TEXT   --symbol KEY=NAME   --app KEY=APP   --symtext KEY=SYMBOL|TEXT   -k "
      "KEY=VALUE\n"
      "  KEY is a key's name: a, 1, f5, esc, left. APP is a bundle id such as com.apple.Safari, "
      "or an app's name.\n"
      "  Keys only show words and symbols, or open apps: automation never types or presses keys "
      "for you.\n"
      "\n"
      "Lists and exports read Quillon's files and never change them; every other command goes to "
      "Quillon\n"
      "as a quillon:// link, without bringing it forward. Layers a command stores or imports stay "
      "off until you\n"
      "turn them on in Quillon's Settings, in Layers. An export never replaces a file.\n"
      "\n"
      "Exit codes: 0 done, 1 bad arguments, 2 Quillon is not installed, 3 a file problem,\n"
      "5 Quillon did not take the command.";
  return text;
}

std::string CommandLineInterface::help(std::optional<std::string_view> topic) {
  static constexpr std::string_view kShowLine =
      "  quillon show|hide|toggle [--position NAME|X:Y] [--width N] [--screen ID|NAME] [--theme "
      "NAME]\n"
      "      [--fill visible|dimmed|blank] [--hide-after-ms N] [--fade-out-ms N] [--name N] "
      "[KEYS]";
  static constexpr std::string_view kProfileLine = "  quillon profile NAME | theme NAME";
  static constexpr std::string_view kLayerLine =
      "  quillon layer show [the show options] [KEYS] | layer reset";
  static constexpr std::string_view kLayersLine =
      "  quillon layers list [--json]\n"
      "      | store --modifiers M [--name N] [--for-app APP] [--hold-delay S] [--fill F] [KEYS]\n"
      "      | edit (--modifiers M | --name N) [--for-app APP] [KEYS] [--unset-key KEY]\n"
      "      | remove (--modifiers M | --name N) [--for-app APP]\n"
      "      | export [--name N] -f FILE | import FILE";
  static constexpr std::string_view kThemesLine =
      "  quillon themes list [--json] | export [--name N] -f FILE | import FILE";
  static constexpr std::string_view kSheetsLine =
      "  quillon sheets list [--json] | export --app APP -f FILE | import FILE";
  static constexpr std::string_view kKeys =
      "\n\nKEYS put words, symbols or apps on keys:\n"
      "  --text KEY=TEXT   --symbol KEY=NAME   --app KEY=APP   --symtext KEY=SYMBOL|TEXT   -k "
      "KEY=VALUE\n"
      "  KEY is a key's name: a, 1, f5, esc, left. APP is a bundle id such as com.apple.Safari, "
      "or an app's name.\n"
      "  Keys only show words and symbols, or open apps: automation never types or presses keys "
      "for you.";
  struct Topic {
    std::string_view name;
    std::string_view line;
    bool keys;
  };
  static constexpr std::array<Topic, 9> kTopics{{
      {"show", kShowLine, true},
      {"toggle", kShowLine, true},
      {"hide", kShowLine, false},
      {"profile", kProfileLine, false},
      {"theme", kProfileLine, false},
      {"layer", kLayerLine, true},
      {"layers", kLayersLine, true},
      {"themes", kThemesLine, false},
      {"sheets", kSheetsLine, false},
  }};
  if (!topic) return usage();
  const std::string wanted = lowercasedASCII(*topic);
  for (const auto& entry : kTopics) {
    if (entry.name != wanted) continue;
    std::string text = "Usage:\n" + std::string(entry.line);
    if (entry.keys) text += kKeys;
    text += "\n\nRun quillon help to see every command.";
    return text;
  }
  return usage();
}

std::string CommandLineInterface::versionLine(const std::optional<std::string>& shortVersion,
                                              const std::optional<std::string>& build) {
  if (shortVersion && build) return "quillon " + *shortVersion + " (" + *build + ")";
  if (shortVersion) return "quillon " + *shortVersion;
  if (build) return "quillon, build " + *build;
  return "quillon, a development build";
}

std::string CommandLineInterface::message(const AutomationError& error) {
  if (const auto* bad = error.as<AutomationError::BadValue>()) {
    for (const auto& [parameter, word] : kParameterWords) {
      if (parameter == bad->parameter) return flagMustBe(*flagWord(word)).message();
    }
    if (KeyName::canonical(bad->parameter) == bad->parameter) {
      return "The key " + bad->parameter +
             " must be given once, with --text, --symbol, --app or --symtext, with at most " +
             std::to_string(TextLimits::name) + " characters of text.";
    }
  }
  if (const auto* missing = error.as<AutomationError::Missing>()) {
    if (missing->parameter == "modifiers") {
      return "--modifiers is missing. Every Quillon layer is held on modifier keys, so give them, "
             "such as --modifiers rcmd-rshift or --modifiers hyper; for edit and remove, --name "
             "will do.";
    }
    for (const auto& [parameter, word] : kParameterWords) {
      if (parameter == missing->parameter) return flagMissing(*flagWord(word)).message();
    }
  }
  return error.message();
}

std::string CommandLineInterface::message(ExportRefusal refusal, ExportKind kind, bool named) {
  return std::string(toolMessage(refusal, kind, named));
}

std::string CommandLineInterface::shown(std::string_view text) {
  std::string visible;
  visible.reserve(text.size());
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t c = UTF8::next(text, offset);
    if (!UnicodeText::isInvisible(c)) UTF8::append(visible, c);
  }
  if (visible.empty()) return "That";
  if (TextLimits::characterCount(visible) >= 41) visible = TextLimits::cut(visible, 39) + "\u2026";
  return "\u201C" + visible + "\u201D";
}

std::expected<std::string, AutomationError> CommandLineInterface::bundleID(
    std::string_view flag, std::string_view value, const ResolveApp& resolveApp) {
  // A dotted identifier is taken as written; a one-word value such as
  // "Safari" has an identifier's form too, but is far more often an app's
  // name, so it is looked up first and kept as written only when no app has
  // that name.
  const bool identifierShaped = LayerNames::isBundleID(value) && !value.ends_with(".app");
  const bool dotted = value.find('.') != std::string_view::npos;
  if (identifierShaped && dotted) return std::string(value);
  const AppMatch match = resolveApp ? resolveApp(value) : AppMatch::none();
  if (const std::string* id = match.bundleID()) return *id;
  if (match.isNone() && identifierShaped) return std::string(value);
  if (match.isSeveral()) {
    return std::unexpected(AutomationError::badArgument(
        "More than one app on this Mac is named " + shown(value) + ". Give " + std::string(flag) +
        " its bundle id, such as com.apple.Safari."));
  }
  return std::unexpected(AutomationError::badArgument(
      std::string(Brand::productName) + " could not find an app named " + shown(value) +
      " on this Mac. Give " + std::string(flag) + " its bundle id, such as com.apple.Safari."));
}

std::string CommandLineInterface::notInstalled() {
  return std::string(Brand::productName) + " is not installed. Get it at " +
         std::string(Brand::webHost) + ".";
}

std::string CommandLineInterface::notDelivered() {
  return std::string(Brand::productName) + " did not take the command within " +
         std::to_string(static_cast<int>(handOverSeconds)) + " seconds. Open " +
         std::string(Brand::productName) + ", then try again.";
}

std::string CommandLineInterface::layersUnreadable() {
  return "Quillon's layers file could not be read, so nothing was listed or exported. Open "
         "Quillon's Settings, Layers, to see why.";
}

std::string CommandLineInterface::noLayers() {
  return "No layers yet. Add one in Quillon's Settings, in Layers, or with quillon layers store.";
}

std::string CommandLineInterface::noSheets() {
  return "No changed cheatsheets yet. Change one in Quillon's Settings, in Cheatsheets.";
}

std::string CommandLineInterface::unreadableImport() {
  return "That file could not be read. Check its name, and that it is a file.";
}

std::string CommandLineInterface::outputUnwritable() {
  return "quillon could not write its output: check that where it goes can be written to and "
         "has room.";
}

std::string CommandLineInterface::undecodableImport(ExportKind kind) {
  switch (kind) {
    case ExportKind::layers:
      return "That file holds no layers Quillon can read. Choose a .quillonlayer file Quillon "
             "exported.";
    case ExportKind::theme:
      return "That file is not a theme Quillon can read. Choose a .quillontheme file Quillon "
             "exported.";
    case ExportKind::sheet:
      return "That file is not a cheatsheet Quillon can read. Choose a .quillonsheet file "
             "Quillon exported.";
  }
  return unreadableImport();
}

std::string CommandLineInterface::exported(ExportKind kind, std::string_view what,
                                           std::string_view path) {
  switch (kind) {
    case ExportKind::layers:
      return "Exported " + std::string(what) + " to " + std::string(path) + ".";
    case ExportKind::theme:
      return "Exported the theme " + std::string(what) + " to " + std::string(path) + ".";
    case ExportKind::sheet:
      return "Exported the cheatsheet of " + std::string(what) + " to " + std::string(path) + ".";
  }
  return {};
}

std::optional<ExportKind> CommandLineInterface::importKind(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return std::nullopt;
  const std::string extension = lowercasedASCII(name.substr(dot + 1));
  for (const auto& [text, kind] : kImportExtensions) {
    if (text == extension) return kind;
  }
  return std::nullopt;
}

std::vector<std::string_view> CommandLineInterface::importExtensions(ExportKind kind) {
  std::vector<std::string_view> extensions;
  for (const auto& [text, of] : kImportExtensions) {
    if (of == kind) extensions.push_back(text);
  }
  return extensions;
}

}  // namespace corvel
