// The small text grammars of keys and modifiers: shortcut texts (KeySpec),
// key names, key assignments and trigger texts. The first byte picks the
// grammar, the rest is the text. Whatever parses is written out again, and
// the written text parses back as the same value.
#include <cstddef>
#include <cstdint>
#include <string>

#include "CorvelCore/Automation/KeyAssignment.h"
#include "CorvelCore/Automation/KeyName.h"
#include "CorvelCore/Automation/TriggerText.h"
#include "CorvelCore/Shortcuts/KeySpec.h"
#include "FuzzSupport.h"

using namespace corvel;
using corvel::fuzz::require;

namespace {

void keySpec(std::string_view text) {
  const auto steps = KeySpec::parse(text);
  if (!steps) return;
  const std::string written = KeySpec::format(*steps);
  const auto again = KeySpec::parse(written);
  require(again.has_value() && *again == *steps, "a formatted shortcut parses back", written);
  require(KeySpec::format(*again) == written, "formatting is stable", written);
}

void keyName(std::string_view text) {
  const auto name = KeyName::canonical(text);
  if (!name) return;
  const auto again = KeyName::canonical(*name);
  require(again.has_value() && *again == *name, "a canonical key name is its own", *name);
}

void keyAssignment(std::string_view text) {
  const auto assignment = KeyAssignment::parse(text);
  if (!assignment) return;
  const std::string written = assignment->written();
  const auto again = KeyAssignment::parse(written);
  require(again.has_value() && *again == *assignment, "a written assignment parses back", written);
}

void triggerText(std::string_view text) {
  const auto trigger = TriggerText::parse(text);
  if (!trigger) return;
  const std::string written = TriggerText::format(*trigger);
  const auto again = TriggerText::parse(written);
  require(again.has_value() && *again == *trigger, "a formatted trigger parses back", written);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto text = corvel::fuzz::text(data + 1, size - 1);
  switch (data[0] % 4) {
    case 0:
      keySpec(text);
      break;
    case 1:
      keyName(text);
      break;
    case 2:
      keyAssignment(text);
      break;
    default:
      triggerText(text);
      break;
  }
  return 0;
}
