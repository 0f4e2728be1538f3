// TextLimits: the fixed lengths of user texts and the one way texts are cut to
// them. A "character" here is a user-perceived character (a grapheme
// cluster), so an emoji sequence or a letter with its accents counts once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvel {

struct TextLimits {
  // Names of apps, captions, labels.
  static constexpr std::int64_t name = 120;
  // Names of layers.
  static constexpr std::int64_t layerName = 64;
  // Text shown on a key face.
  static constexpr std::int64_t textFace = 24;
  // Unicode scalars kept of any one character when a text is cut.
  static constexpr std::int64_t scalarsPerCharacter = 16;

  // The text's first `limit` characters (a negative limit counts as 0), each
  // character kept to at most `scalarsPerCharacter` scalars.
  [[nodiscard]] static std::string cut(std::string_view text, std::int64_t limit);

  // The number of user-perceived characters in the text.
  [[nodiscard]] static std::size_t characterCount(std::string_view text);
};

}  // namespace corvel
