// JSON text: decoding never fails badly, and whatever decodes is written out
// and read back as the same value, pretty or compact.
#include <cstddef>
#include <cstdint>

#include "CorvelCore/Theme/JSONValue.h"
#include "FuzzSupport.h"

using corvel::JSONValue;
using corvel::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto value = JSONValue::decode(corvel::fuzz::text(data, size));
  if (!value) return 0;

  const auto pretty = value->encoded();
  require(pretty.has_value(), "a decoded value encodes");
  const auto again = JSONValue::decode(*pretty);
  require(again.has_value(), "the encoded text decodes", *pretty);
  require(*again == *value, "decode, encode, decode gives the same value", *pretty);
  require(again->hash() == value->hash(), "equal values hash alike", *pretty);

  // Compact text is JSON for every case but a string, which it gives bare.
  if (value->asString() == nullptr) {
    const std::string compact = value->compactText();
    const auto fromCompact = JSONValue::decode(compact);
    require(fromCompact.has_value() && *fromCompact == *value, "compact text reads back", compact);
  }
  return 0;
}
