// LayerNames: the form tests for the names that layers, links and documents
// carry: bundle identifiers (which app) and symbol names (which symbol).
#pragma once

#include <cstddef>
#include <string_view>

namespace corvel {

struct LayerNames {
  // Bundle identifiers hold at most this many UTF-8 bytes.
  static constexpr std::size_t maxBundleIDBytes = 255;
  // Symbol names hold at most this many bytes.
  static constexpr std::size_t maxSymbolNameBytes = 100;

  // Not empty, at most 255 bytes, no leading "." and no "..", and every
  // character a Unicode letter or digit or one of "-", "_", ".".
  [[nodiscard]] static bool isBundleID(std::string_view text);
  // Not empty, at most 100 bytes, no "." at either end, and every character
  // a lower-case ASCII letter, an ASCII digit or ".".
  [[nodiscard]] static bool isSymbolName(std::string_view text);
};

}  // namespace corvel
