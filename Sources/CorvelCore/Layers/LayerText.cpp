#include "CorvelCore/Layers/LayerText.h"

#include <unicode/uchar.h>

#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

constexpr char32_t kZeroWidthNonJoiner = 0x200C;
constexpr char32_t kZeroWidthJoiner = 0x200D;
constexpr char32_t kVariationSelector16 = 0xFE0F;
constexpr char32_t kBlackFlag = 0x1F3F4;
constexpr char32_t kFirstTag = 0xE0020;
constexpr char32_t kCancelTag = 0xE007F;

bool isLetterOrMark(char32_t c) {
  constexpr std::uint32_t kMask = U_GC_LU_MASK | U_GC_LL_MASK | U_GC_LT_MASK | U_GC_LM_MASK |
                                  U_GC_LO_MASK | U_GC_MN_MASK | U_GC_MC_MASK | U_GC_ME_MASK;
  return (U_GET_GC_MASK(static_cast<UChar32>(c)) & kMask) != 0;
}

// Emoji below U+0100 are the digits, "#" and "*", which only become emoji in
// keycap sequences; a joiner between them would glue plain text together.
bool isWideEmoji(char32_t c) {
  return c >= 0x100 && u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_EMOJI);
}

bool isTag(char32_t c) { return c >= kFirstTag && c <= kCancelTag; }

bool isInvisible(char32_t c) {
  const auto type = static_cast<UCharCategory>(u_charType(static_cast<UChar32>(c)));
  return type == U_CONTROL_CHAR || type == U_FORMAT_CHAR ||
         u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_BIDI_CONTROL);
}

bool becomesLineFeed(char32_t c) { return c == '\r' || c == 0x0085 || c == 0x2028 || c == 0x2029; }

// Printable ASCII, tabs and bare line feeds need no cleaning at all.
bool isPlain(std::string_view text) {
  for (char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x7F || (byte < 0x20 && c != '\t' && c != '\n')) return false;
  }
  return true;
}

}  // namespace

LayerText::Cleaned LayerText::clean(std::string_view text) {
  if (isPlain(text)) return {std::string(text), 0};
  Cleaned result;
  result.text.reserve(text.size());
  char32_t lastKept = 0;
  bool haveKept = false;
  char32_t previousInput = 0;
  std::size_t offset = 0;
  while (offset < text.size()) {
    const char32_t c = UTF8::next(text, offset);
    const char32_t before = previousInput;
    previousInput = c;
    if (c >= 0x20 && c < 0x7F) {
      // Printable ASCII is always kept; most scalars of most texts are.
      result.text.push_back(static_cast<char>(c));
      lastKept = c;
      haveKept = true;
      continue;
    }
    bool keep = true;
    char32_t output = c;
    if (c == '\t') {
      keep = true;
    } else if (c == '\n') {
      if (before == '\r') continue;  // the CR already gave this line its feed
    } else if (becomesLineFeed(c)) {
      output = '\n';
    } else if (c == kZeroWidthNonJoiner || c == kZeroWidthJoiner) {
      keep = haveKept && isLetterOrMark(lastKept);
      if (!keep && c == kZeroWidthJoiner && haveKept &&
          (isWideEmoji(lastKept) || lastKept == kVariationSelector16) && offset < text.size()) {
        std::size_t lookahead = offset;
        keep = isWideEmoji(UTF8::next(text, lookahead));
      }
    } else if (isTag(c)) {
      keep = haveKept && (lastKept == kBlackFlag || (isTag(lastKept) && lastKept != kCancelTag));
    } else if (isInvisible(c)) {
      keep = false;
    }
    if (!keep) {
      ++result.removed;
      continue;
    }
    UTF8::append(result.text, output);
    lastKept = output;
    haveKept = true;
  }
  return result;
}

}  // namespace corvel
