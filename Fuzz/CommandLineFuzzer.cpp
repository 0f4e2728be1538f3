// Command lines: the words are the input split at NUL bytes and line breaks.
// Parsing never fails badly, every refusal has a sentence, and a command the
// tool would send is written as a link that the app parses back to the same
// command.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Automation/AutomationParser.h"
#include "CorvelCore/Automation/CommandLineInterface.h"
#include "FuzzSupport.h"

using namespace corvel;
using corvel::fuzz::require;

namespace {

// An imaginary Mac: names starting with "n" find no app, names starting with
// "s" find several, every other name finds one.
AppMatch resolveApp(std::string_view name) {
  if (name.empty() || name.front() == 'n') return AppMatch::none();
  if (name.front() == 's') return AppMatch::several();
  return AppMatch::one("com.example.Found");
}

std::vector<std::string> words(std::string_view input) {
  std::vector<std::string> result;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= input.size(); ++i) {
    if (i == input.size() || input[i] == '\0' || input[i] == '\n') {
      result.emplace_back(input.substr(start, i - start));
      start = i + 1;
    }
  }
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto input = corvel::fuzz::text(data, size);
  const auto line = words(input);
  const auto action =
      CommandLineInterface::parse(line, {"/Users/someone/Documents", "/Users/someone", resolveApp});
  if (!action) {
    require(!CommandLineInterface::message(action.error()).empty(), "every refusal has a sentence");
    return 0;
  }
  if (const auto* send = action->as<CommandLineAction::Send>()) {
    const std::string link = send->command.link();
    const auto again = AutomationParser::parse(link);
    require(again.has_value(), "the link of a command line parses", link);
    require(*again == send->command, "the link parses back to the command line's command", link);
  }
  return 0;
}
