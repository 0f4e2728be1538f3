#include "CorvelCore/Theme/JSONString.h"

#include <algorithm>
#include <utility>

namespace corvel {

JSONString::JSONString(std::string_view text) : text_(held(text)) {}

JSONString::JSONString(std::string&& text)
    : text_(text.size() <= inlineCapacity ? held(text) : Text(std::move(text))) {}

JSONString::Text JSONString::held(std::string_view text) {
  if (text.size() > inlineCapacity) return std::string(text);
  Inline kept{};
  std::copy(text.begin(), text.end(), kept.bytes.begin());
  kept.size = static_cast<unsigned char>(text.size());
  return kept;
}

std::string_view JSONString::view() const {
  if (const Inline* kept = std::get_if<Inline>(&text_)) {
    return std::string_view(kept->bytes.data(), kept->size);
  }
  return std::get<std::string>(text_);
}

}  // namespace corvel
