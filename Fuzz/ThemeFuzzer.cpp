// The theme file: reading never fails badly, and reading loses nothing:
// a theme read, written back and read again is the same theme.
#include <cstddef>
#include <cstdint>
#include <string>

#include "CorvelCore/Theme/ThemeCodec.h"
#include "FuzzSupport.h"

using corvel::ThemeCodec;
using corvel::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto theme = ThemeCodec::decode(corvel::fuzz::text(data, size));
  if (!theme) return 0;

  const std::string written = ThemeCodec::encode(*theme);
  if (written.size() > ThemeCodec::maxFileBytes) return 0;
  const auto reread = ThemeCodec::decode(written);
  require(reread.has_value(), "a written theme reads", written);
  require(*reread == *theme, "decode, encode, decode gives the same theme", written);
  return 0;
}
