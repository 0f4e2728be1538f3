#include "CorvelCore/Support/ASCIIText.h"

namespace corvel {

std::string ASCIIText::lowercased(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return out;
}

}  // namespace corvel
