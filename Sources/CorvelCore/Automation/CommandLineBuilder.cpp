#include "CorvelCore/Automation/CommandLineBuilder.h"

#include <algorithm>

#include "CorvelCore/Automation/AutomationParser.h"
#include "CorvelCore/Automation/CommandLineMessages.h"
#include "CorvelCore/Automation/DocumentFiles.h"
#include "CorvelCore/Support/ASCIIText.h"

namespace corvel {
namespace {

using Refusal = std::unexpected<AutomationError>;
using Action = std::expected<CommandLineAction, AutomationError>;

Action send(const CommandLineReading& reading, const std::vector<AutomationPair>& pairs) {
  const CommandSpec& definition = *reading.command;
  auto command = AutomationParser::parse(definition.verb, pairs, AutomationSource::commandLine);
  if (!command)
    return Refusal(CommandLineMessages::reworded(command.error(), definition, reading.typedWords));
  if (command->appsNamed().size() > AutomationCommand::maxApps) {
    return Refusal(AutomationError::badArgument(AutomationCommand::tooManyAppsMessage()));
  }
  return CommandLineAction(CommandLineAction::Send{std::move(*command)});
}

// The values given for a link parameter, in order.
std::vector<std::string_view> values(const CommandLineReading& reading,
                                     std::string_view parameter) {
  std::vector<std::string_view> found;
  for (const auto& [name, value] : reading.pairs) {
    if (name == parameter) found.emplace_back(value);
  }
  return found;
}

// The one value of the command's option bound to `parameter`: refused when
// given twice or empty, or missing when required.
std::expected<std::optional<std::string>, AutomationError> single(const CommandLineReading& reading,
                                                                  std::string_view parameter,
                                                                  bool required) {
  const OptionSpec* option = CommandGrammar::optionFor(*reading.command, parameter);
  const std::string_view word = option != nullptr ? option->word : parameter;
  const std::string_view description =
      option != nullptr ? CommandGrammar::description(*option) : std::string_view{};
  const auto given = values(reading, parameter);
  if (given.empty()) {
    if (required) return Refusal(CommandLineMessages::isMissing(word, description));
    return std::nullopt;
  }
  if (given.size() > 1 || given.front().empty()) {
    return Refusal(CommandLineMessages::mustBe(word, description));
  }
  return std::string(given.front());
}

// An export's target: the file option, given once.
std::expected<std::string, AutomationError> target(const CommandLineReading& reading) {
  const auto& uses = reading.command->options;
  const auto file = std::find_if(uses.begin(), uses.end(), [](const OptionUse& use) {
    return std::holds_alternative<CommandOption::File>(use.definition->option.kind) &&
           use.shown != Shown::hidden;
  });
  if (file == uses.end()) return Refusal(AutomationError::missing("file"));
  const std::string_view description = CommandGrammar::description(*file->definition);
  if (!reading.file)
    return Refusal(CommandLineMessages::isMissing(file->definition->word, description));
  if (reading.fileTwice) return Refusal(CommandLineMessages::mustBe(reading.fileWord, description));
  return *reading.file;
}

Action help(const CommandLineReading& reading) {
  if (reading.plain.empty()) return CommandLineAction(CommandLineAction::Help{});
  const std::string topic = ASCIIText::lowercased(reading.plain.front());
  const auto topics = CommandGrammar::helpTopics();
  if (std::find(topics.begin(), topics.end(), topic) == topics.end()) {
    return Refusal(CommandLineMessages::notACommand(reading.plain.front()));
  }
  return CommandLineAction(CommandLineAction::Help{topic});
}

Action named(const CommandLineReading& reading) {
  const PlainWordSpec& word = *reading.command->plain;
  if (reading.plain.empty()) {
    return Refusal(CommandLineMessages::isMissing(word.word, word.description));
  }
  return send(reading, {{std::string(word.parameter), reading.plain.front()}});
}

Action importFile(const CommandLineReading& reading) {
  if (reading.plain.size() != 1) {
    return Refusal(CommandLineMessages::importTakesOneFile(reading.name));
  }
  const ExportKind kind = reading.command->fileKind.value_or(ExportKind::layers);
  const std::string& file = reading.plain.front();
  if (DocumentFiles::importKind(file) != kind) {
    return Refusal(CommandLineMessages::importOfWrongKind(reading.name, kind));
  }
  return send(reading, {{std::string(reading.command->plain->parameter), file}});
}

// An export: its target and what it names; a required name (the app of a
// sheet) is asked for first.
template <class Export>
Action exportOf(const CommandLineReading& reading, std::string_view parameter, bool required) {
  auto value = single(reading, parameter, required);
  if (required && !value) return Refusal(value.error());
  auto path = target(reading);
  if (!path) return Refusal(path.error());
  if (!value) return Refusal(value.error());
  if constexpr (std::is_same_v<Export, CommandLineAction::ExportSheet>) {
    return CommandLineAction(Export{value->value_or(""), std::move(*path)});
  } else {
    return CommandLineAction(Export{std::move(*value), std::move(*path)});
  }
}

}  // namespace

Action CommandLineBuilder::build(const CommandLineReading& reading) {
  switch (reading.command->name) {
    case CommandName::help:
      return help(reading);
    case CommandName::version:
      return CommandLineAction(CommandLineAction::Version{});
    case CommandName::show:
    case CommandName::toggle:
    case CommandName::hide:
    case CommandName::layerShow:
    case CommandName::layerReset:
    case CommandName::layersStore:
    case CommandName::layersEdit:
    case CommandName::layersRemove:
      return send(reading, reading.pairs);
    case CommandName::profile:
    case CommandName::theme:
      return named(reading);
    case CommandName::layersList:
      return CommandLineAction(CommandLineAction::ListLayers{reading.json});
    case CommandName::themesList:
      return CommandLineAction(CommandLineAction::ListThemes{reading.json});
    case CommandName::sheetsList:
      return CommandLineAction(CommandLineAction::ListSheets{reading.json});
    case CommandName::layersExport:
      return exportOf<CommandLineAction::ExportLayers>(reading, "name", false);
    case CommandName::themesExport:
      return exportOf<CommandLineAction::ExportTheme>(reading, "name", false);
    case CommandName::sheetsExport:
      return exportOf<CommandLineAction::ExportSheet>(reading, "app", true);
    case CommandName::layersImport:
    case CommandName::themesImport:
    case CommandName::sheetsImport:
      return importFile(reading);
  }
  return Refusal(CommandLineMessages::notACommand(reading.name));
}

}  // namespace corvel
