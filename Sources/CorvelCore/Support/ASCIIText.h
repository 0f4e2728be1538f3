// ASCIIText: letter case for the fixed ASCII words of the command line and of
// file names (command words, extensions), where Unicode's rules would only
// cost time and change nothing that can match.
#pragma once

#include <string>
#include <string_view>

namespace corvel {

struct ASCIIText {
  // The text with A to Z turned into a to z; every other byte as it is.
  [[nodiscard]] static std::string lowercased(std::string_view text);
};

}  // namespace corvel
