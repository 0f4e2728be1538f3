// The sheet file: reading never fails badly, and reading loses nothing:
// overrides read, written back and read again are the same overrides.
#include <cstddef>
#include <cstdint>
#include <string>

#include "CorvelCore/Sheets/SheetCodec.h"
#include "FuzzSupport.h"

using corvel::SheetCodec;
using corvel::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto overrides = SheetCodec::decode(corvel::fuzz::text(data, size));
  if (!overrides) return 0;

  const std::string written = SheetCodec::encode(*overrides);
  const auto reread = SheetCodec::decode(written);
  require(reread.has_value(), "written overrides read", written);
  require(*reread == *overrides, "decode, encode, decode gives the same overrides", written);
  return 0;
}
