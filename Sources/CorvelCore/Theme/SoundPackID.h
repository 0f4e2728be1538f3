// SoundPackID: the key-click sound packs a theme may name.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace corvel {

struct SoundPackID {
  // Every pack id, in the order the app lists them.
  static constexpr std::array<std::string_view, 6> all{"linear", "corvel",     "clicky",
                                                       "thock",  "typewriter", "laptop"};

  // True when `id` is exactly one of `all`.
  [[nodiscard]] static constexpr bool isKnown(std::string_view id) {
    return std::find(all.begin(), all.end(), id) != all.end();
  }
};

}  // namespace corvel
