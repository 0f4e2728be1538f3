#include "CorvelCore/Theme/JSONString.h"

#include <utility>

namespace corvel {

JSONString::JSONString(std::string&& text) {
  if (text.size() > inlineCapacity) {
    text_ = std::move(text);
  } else {
    *this = JSONString(std::string_view(text));
  }
}

std::string_view JSONString::view() const {
  if (const Inline* kept = std::get_if<Inline>(&text_)) {
    return std::string_view(kept->bytes.data(), kept->size);
  }
  return std::get<std::string>(text_);
}

}  // namespace corvel
