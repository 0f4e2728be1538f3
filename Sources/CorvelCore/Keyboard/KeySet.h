// KeySet: a set of keys held in a fixed bit field, for the keyboard event
// path (the modifier keys held down at a moment). Copying, inserting and
// testing never allocate.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "CorvelCore/Keyboard/KeyID.h"

namespace corvel {

class KeySet {
 public:
  constexpr KeySet() = default;
  constexpr KeySet(std::initializer_list<KeyID> keys) {
    for (KeyID key : keys) insert(key);
  }

  // Adds the key; a value outside the enumeration is ignored.
  constexpr void insert(KeyID key) {
    if (const auto index = indexOf(key); index < keyCount) {
      words_[index / 64] |= bitOf(index);
    }
  }
  // Removes the key if present.
  constexpr void erase(KeyID key) {
    if (const auto index = indexOf(key); index < keyCount) {
      words_[index / 64] &= ~bitOf(index);
    }
  }
  [[nodiscard]] constexpr bool contains(KeyID key) const {
    const auto index = indexOf(key);
    return index < keyCount && (words_[index / 64] & bitOf(index)) != 0;
  }
  [[nodiscard]] constexpr bool empty() const { return words_[0] == 0 && words_[1] == 0; }
  [[nodiscard]] constexpr std::size_t size() const {
    return static_cast<std::size_t>(std::popcount(words_[0])) +
           static_cast<std::size_t>(std::popcount(words_[1]));
  }

  friend constexpr bool operator==(const KeySet&, const KeySet&) = default;

 private:
  static_assert(keyCount <= 128, "KeySet holds at most 128 keys");

  static constexpr std::size_t indexOf(KeyID key) { return static_cast<std::size_t>(key); }
  static constexpr std::uint64_t bitOf(std::size_t index) {
    return std::uint64_t{1} << (index % 64);
  }

  std::array<std::uint64_t, 2> words_{};
};

}  // namespace corvel
