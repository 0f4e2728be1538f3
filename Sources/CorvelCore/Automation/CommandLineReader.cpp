#include "CorvelCore/Automation/CommandLineReader.h"

#include <algorithm>

#include "CorvelCore/Automation/CommandLineMessages.h"
#include "CorvelCore/Automation/KeyAssignment.h"
#include "CorvelCore/Automation/KeyName.h"
#include "CorvelCore/Layers/LayerNames.h"
#include "CorvelCore/Support/ASCIIText.h"
#include "CorvelCore/Support/Overloaded.h"

namespace corvel {
namespace {

using Refusal = std::unexpected<AutomationError>;

// The command the first words name, with how many words name it.
std::expected<std::pair<const CommandSpec*, std::size_t>, AutomationError> dispatch(
    std::span<const std::string> words) {
  const auto candidates = CommandGrammar::withFirst(ASCIIText::lowercased(words.front()));
  if (candidates.empty()) return Refusal(CommandLineMessages::notACommand(words.front()));
  if (candidates.front().sub.empty()) return std::pair{&candidates.front(), std::size_t{1}};
  std::vector<std::string_view> choices;
  for (const auto& candidate : candidates) choices.push_back(candidate.sub);
  if (words.size() < 2) {
    return Refusal(CommandLineMessages::needsOneOf(words.front(), choices, std::nullopt));
  }
  const std::string sub = ASCIIText::lowercased(words[1]);
  for (const auto& candidate : candidates) {
    if (candidate.sub == sub) return std::pair{&candidate, std::size_t{2}};
  }
  return Refusal(CommandLineMessages::needsOneOf(words.front(), choices, words[1]));
}

class Reader {
 public:
  Reader(CommandLineReading& reading, const CommandLineReader::Context& context)
      : reading_(reading), context_(context) {}

  // Takes one option word with its value.
  std::expected<void, AutomationError> take(std::string_view word, const OptionSpec& option,
                                            std::string_view value) {
    return std::visit(
        Overloaded{
            [&](const CommandOption::Value& kind) -> std::expected<void, AutomationError> {
              add(kind.parameter, std::string(value), word);
              return {};
            },
            [&](const CommandOption::App& kind) -> std::expected<void, AutomationError> {
              auto id = CommandLineReader::bundleID(word, value, context_.resolveApp);
              if (!id) return Refusal(id.error());
              add(kind.parameter, std::move(*id), word);
              return {};
            },
            [&](const CommandOption::Key& kind) -> std::expected<void, AutomationError> {
              auto key = keyValue(word, option, value);
              if (!key) return Refusal(key.error());
              reading_.pairs.emplace_back(key->first, std::string(kind.prefix) + key->second);
              return {};
            },
            [&](const CommandOption::AppKey&) -> std::expected<void, AutomationError> {
              auto key = keyValue(word, option, value);
              if (!key) return Refusal(key.error());
              return appKey(word, key->first, key->second);
            },
            [&](const CommandOption::RawKey&) -> std::expected<void, AutomationError> {
              auto key = keyValue(word, option, value);
              if (!key) return Refusal(key.error());
              // A value that names an app is resolved, as --app's is; the
              // prefixes are those the link reader knows.
              if (const auto app = KeyAssignment::appPart(key->second)) {
                return appKey(word, key->first, *app);
              }
              reading_.pairs.emplace_back(std::move(key->first), std::move(key->second));
              return {};
            },
            [&](const CommandOption::UnsetKey&) -> std::expected<void, AutomationError> {
              auto canonical = KeyName::canonical(value);
              if (!canonical) return Refusal(CommandLineMessages::notAKey(value, word, option));
              reading_.pairs.emplace_back(std::move(*canonical), "-");
              return {};
            },
            [&](const CommandOption::File&) -> std::expected<void, AutomationError> {
              if (reading_.file) reading_.fileTwice = true;
              reading_.fileWord = word;
              reading_.file = CommandLineReader::absolutePath(value, context_.currentDirectory,
                                                              context_.homeFolder);
              return {};
            },
            [&](const CommandOption::JSON&) -> std::expected<void, AutomationError> {
              reading_.json = true;
              return {};
            },
        },
        option.option.kind);
  }

 private:
  void add(std::string_view parameter, std::string value, std::string_view word) {
    reading_.pairs.emplace_back(std::string(parameter), std::move(value));
    reading_.typedWords.emplace_back(parameter, word);
  }

  // KEY=VALUE: the key's canonical name and the value.
  static std::expected<std::pair<std::string, std::string>, AutomationError> keyValue(
      std::string_view word, const OptionSpec& option, std::string_view value) {
    const std::size_t equals = value.find('=');
    if (equals == std::string_view::npos) {
      return Refusal(CommandLineMessages::takesKeyValue(word, option));
    }
    const std::string_view key = value.substr(0, equals);
    auto canonical = KeyName::canonical(key);
    if (!canonical) return Refusal(CommandLineMessages::notAKey(key, word, option));
    return std::pair{std::move(*canonical), std::string(value.substr(equals + 1))};
  }

  std::expected<void, AutomationError> appKey(std::string_view word, std::string key,
                                              std::string_view app) {
    auto id = CommandLineReader::bundleID(word, app, context_.resolveApp);
    if (!id) return Refusal(id.error());
    reading_.pairs.emplace_back(std::move(key), "a:" + *id);
    return {};
  }

  CommandLineReading& reading_;
  const CommandLineReader::Context& context_;
};

}  // namespace

std::expected<CommandLineReading, AutomationError> CommandLineReader::read(
    std::span<const std::string> words, const Context& context) {
  auto dispatched = dispatch(words);
  if (!dispatched) return Refusal(dispatched.error());
  CommandLineReading reading;
  reading.command = dispatched->first;
  reading.first = words.front();
  reading.name = words.front();
  if (dispatched->second == 2) reading.name += " " + words[1];
  const CommandSpec& command = *reading.command;
  Reader reader(reading, context);

  bool optionsEnded = false;
  for (std::size_t i = dispatched->second; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (optionsEnded || word.size() < 2 || !word.starts_with('-')) {
      if (command.plain == nullptr) {
        return Refusal(CommandLineMessages::notTaken(reading.name, reading.first, word));
      }
      reading.plain.push_back(word);
      continue;
    }
    if (word == "--") {
      optionsEnded = true;
      continue;
    }
    std::string_view optionWord = word;
    std::optional<std::string_view> inlineValue;
    if (const std::size_t equals = word.find('=');
        word.starts_with("--") && equals != std::string::npos) {
      optionWord = std::string_view(word).substr(0, equals);
      inlineValue = std::string_view(word).substr(equals + 1);
    }
    const OptionSpec* option = CommandGrammar::option(command, optionWord);
    if (option == nullptr) {
      return Refusal(CommandLineMessages::notTaken(reading.name, reading.first, optionWord));
    }
    std::string_view value;
    if (std::holds_alternative<CommandOption::JSON>(option->option.kind)) {
      // A flag takes no value, so a value given to it is a word it does not take.
      if (inlineValue)
        return Refusal(CommandLineMessages::notTaken(reading.name, reading.first, word));
    } else if (inlineValue) {
      value = *inlineValue;
    } else if (i + 1 < words.size()) {
      value = words[++i];
    } else {
      return Refusal(CommandLineMessages::needsAValue(optionWord, reading.first));
    }
    if (auto taken = reader.take(optionWord, *option, value); !taken) {
      return Refusal(taken.error());
    }
  }

  // A command takes at most one plain word; imports count theirs when they
  // are built, to say so in their own words.
  const bool isImport = command.verb == "import";
  if (!isImport && reading.plain.size() > 1) {
    return Refusal(CommandLineMessages::notTaken(reading.name, reading.first, reading.plain[1]));
  }
  if (isImport) {
    // Imports name their file like any other path the tool reads.
    for (auto& file : reading.plain) {
      file = absolutePath(file, context.currentDirectory, context.homeFolder);
    }
  }
  return reading;
}

std::expected<std::string, AutomationError> CommandLineReader::bundleID(
    std::string_view word, std::string_view value, const AppResolver& resolveApp) {
  // A dotted identifier is taken as written; a one-word value such as
  // "Safari" has an identifier's form too, but is far more often an app's
  // name, so it is looked up first and kept as written only when no app has
  // that name.
  const bool identifierShaped = LayerNames::isBundleID(value) && !value.ends_with(".app");
  const bool dotted = value.find('.') != std::string_view::npos;
  if (identifierShaped && dotted) return std::string(value);
  const AppMatch match = resolveApp ? resolveApp(value) : AppMatch::none();
  if (const std::string* id = match.bundleID()) return *id;
  if (match.isSeveral()) return Refusal(CommandLineMessages::severalApps(value, word));
  if (identifierShaped) return std::string(value);
  return Refusal(CommandLineMessages::noApp(value, word));
}

std::string CommandLineReader::absolutePath(std::string_view value,
                                            std::string_view currentDirectory,
                                            std::string_view homeFolder) {
  if (value.starts_with('/')) return std::string(value);
  if (value == "~") return std::string(homeFolder);
  if (value.starts_with("~/")) {
    std::string path(homeFolder);
    if (path.ends_with('/')) path.pop_back();
    return path + std::string(value.substr(1));
  }
  std::string base(currentDirectory);
  if (base.empty() || base.back() != '/') base.push_back('/');
  return base + std::string(value);
}

}  // namespace corvel
