// JSONString: the text of a JSON string value. Texts of up to
// `inlineCapacity` bytes (names, captions, identifiers: nearly every text of
// the app's documents) are kept inside the value itself, longer ones on the
// heap, so that reading a document costs one allocation per object or
// array rather than one per text as well.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace corvel {

class JSONString {
 public:
  static constexpr std::size_t inlineCapacity = 38;

  // Defined here, as reading a document makes one for every text it holds.
  explicit JSONString(std::string_view text) {
    if (text.size() > inlineCapacity) {
      text_.emplace<std::string>(text);
      return;
    }
    // A new value holds an empty inline text.
    Inline& kept = std::get<Inline>(text_);
    std::copy(text.begin(), text.end(), kept.bytes.begin());
    kept.size = static_cast<unsigned char>(text.size());
  }
  explicit JSONString(std::string&& text);

  [[nodiscard]] std::string_view view() const;
  // Used wherever a text is read.
  operator std::string_view() const { return view(); }
  [[nodiscard]] bool empty() const { return view().empty(); }

  friend bool operator==(const JSONString& a, const JSONString& b) { return a.view() == b.view(); }
  friend bool operator==(const JSONString& a, std::string_view b) { return a.view() == b; }

 private:
  struct Inline {
    std::array<char, inlineCapacity> bytes;
    unsigned char size;
  };
  std::variant<Inline, std::string> text_;
};

}  // namespace corvel
