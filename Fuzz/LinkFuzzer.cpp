// quillon:// links: parsing never fails badly, and a command that parses is
// written as a link that parses back to the same command, within the size
// a link may have.
#include <cstddef>
#include <cstdint>
#include <string>

#include "CorvelCore/Automation/AutomationParser.h"
#include "FuzzSupport.h"

using namespace corvel;
using corvel::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto command = AutomationParser::parse(corvel::fuzz::text(data, size));
  if (!command) {
    require(!command.error().message().empty(), "every refusal has a sentence");
    return 0;
  }
  const std::string link = command->link();
  require(link.size() == command->linkSize(), "linkSize is the length of the link", link);
  require(command->fitsLink(), "a parsed command fits a link", link);
  const auto again = AutomationParser::parse(link);
  require(again.has_value(), "the link of a parsed command parses", link);
  require(*again == *command, "the link parses back to the same command", link);
  require(again->link() == link, "writing the link again gives the same text", link);
  return 0;
}
