#include "CorvelCore/Automation/CommandLineInterface.h"

#include "CorvelCore/Automation/CommandLineBuilder.h"
#include "CorvelCore/Automation/CommandLineHelp.h"
#include "CorvelCore/Automation/CommandLineMessages.h"
#include "CorvelCore/Automation/CommandLineReader.h"
#include "CorvelCore/Support/ASCIIText.h"

namespace corvel {

std::expected<CommandLineAction, AutomationError> CommandLineInterface::parse(
    std::span<const std::string> words, const Context& context) {
  if (words.empty()) return CommandLineAction(CommandLineAction::Help{});
  for (const auto& word : words) {
    if (word == "--") break;
    if (word == "-h" || word == "--help") {
      return CommandLineAction(CommandLineAction::Help{ASCIIText::lowercased(words.front())});
    }
  }
  auto reading = CommandLineReader::read(words, context);
  if (!reading) return std::unexpected(reading.error());
  return CommandLineBuilder::build(*reading);
}

const std::string& CommandLineInterface::usage() { return CommandLineHelp::usage(); }

std::string CommandLineInterface::help(std::optional<std::string_view> topic) {
  return CommandLineHelp::help(topic);
}

std::string CommandLineInterface::versionLine(const std::optional<std::string>& shortVersion,
                                              const std::optional<std::string>& build) {
  return CommandLineHelp::versionLine(shortVersion, build);
}

std::string CommandLineInterface::message(const AutomationError& error) {
  return CommandLineMessages::message(error);
}

std::string CommandLineInterface::message(ExportRefusal refusal, ExportKind kind, bool named) {
  return CommandLineMessages::message(refusal, kind, named);
}

std::string CommandLineInterface::shown(std::string_view text) {
  return CommandLineMessages::shown(text);
}

std::expected<std::string, AutomationError> CommandLineInterface::bundleID(
    std::string_view flag, std::string_view value, const ResolveApp& resolveApp) {
  return CommandLineReader::bundleID(flag, value, resolveApp);
}

}  // namespace corvel
