// EnumName: an enumeration's cases with their text raw values, as constexpr
// tables, and the two lookups between them.
#pragma once

#include <optional>
#include <string_view>

namespace corvel {

// One case of an enumeration with text raw values, for `choice`.
template <class E>
struct EnumName {
  E value;
  std::string_view raw;
};

// The raw text of an enumeration case, from its table (any range of
// EnumName<E>, such as a constexpr array); empty when missing.
template <class Names, class E>
[[nodiscard]] constexpr std::string_view rawValue(const Names& names, E value) {
  for (const auto& name : names) {
    if (name.value == value) return name.raw;
  }
  return {};
}

// The case whose raw text equals `raw` exactly, from its table.
template <class E, class Names>
[[nodiscard]] constexpr std::optional<E> caseNamed(const Names& names, std::string_view raw) {
  for (const auto& name : names) {
    if (name.raw == raw) return name.value;
  }
  return std::nullopt;
}

}  // namespace corvel
