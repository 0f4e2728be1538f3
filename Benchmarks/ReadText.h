// Text held as the tool holds a file it read: zeroed room for the JSON
// reader after it, so that a large document is parsed where it lies, as the
// tool parses it.
#pragma once

#include <string>

#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

[[nodiscard]] inline std::string readText(std::string text) {
  const std::size_t size = text.size();
  text.append(JSONValue::readPadding, '\0');
  text.resize(size);
  return text;
}

}  // namespace corvel
