// LayerText: the one cleaning every text a user can put into a layer, a link
// parameter or a document passes before it is stored. It drops invisible and
// control characters that could hide or reorder what a key shows, and keeps
// the joiners and tags that emoji and complex scripts need.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvel {

struct LayerText {
  struct Cleaned {
    std::string text;
    std::size_t removed = 0;  // scalars dropped
    friend bool operator==(const Cleaned&, const Cleaned&) = default;
  };

  // The cleaned text and how many scalars were dropped. Tabs and line feeds
  // stay; CR, CR LF, U+0085, U+2028 and U+2029 become one line feed; joiners
  // stay after letters and marks and between emoji; tag characters stay only
  // in flag sequences; other controls, format characters and bidirectional
  // controls go. A text with nothing to clean comes back as it is.
  [[nodiscard]] static Cleaned clean(std::string_view text);
};

}  // namespace corvel
