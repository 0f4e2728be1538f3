// FuzzSupport: what every fuzz target shares: the input as text, and a check
// that stops the run, so that libFuzzer keeps the input that broke a property.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace corvel::fuzz {

// The fuzzer's bytes as the text a parser reads.
inline std::string_view text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Aborts with `what` (and the text involved, when given) unless `holds`.
inline void require(bool holds, std::string_view what, std::string_view involved = {}) {
  if (holds) return;
  std::fprintf(stderr, "Property broken: %.*s\n", static_cast<int>(what.size()), what.data());
  if (!involved.empty()) {
    std::fprintf(stderr, "With: %.*s\n", static_cast<int>(involved.size()), involved.data());
  }
  std::abort();
}

}  // namespace corvel::fuzz
