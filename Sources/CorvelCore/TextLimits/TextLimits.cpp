#include "CorvelCore/TextLimits/TextLimits.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <memory>
#include <vector>

#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

// Plain ASCII without carriage returns is one character per byte (CR LF is
// the only ASCII pair that forms one cluster), which spares ICU for the
// common case.
bool isSimple(std::string_view text) {
  for (char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80 || c == '\r') return false;
  }
  return true;
}

// Byte offsets where each user-perceived character ends, at most `limit` of
// them (all of them when limit is negative).
std::vector<std::size_t> clusterEnds(std::string_view text, std::int64_t limit) {
  std::vector<std::size_t> ends;
  // Creating a break iterator is costly; one per thread is kept.
  thread_local std::unique_ptr<icu::BreakIterator> iterator = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> created(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    return U_SUCCESS(status) ? std::move(created) : nullptr;
  }();
  UErrorCode status = U_ZERO_ERROR;
  UText* utext =
      utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status);
  if (iterator == nullptr || U_FAILURE(status)) {
    // Without ICU's rules fall back to one character per scalar.
    for (std::size_t offset = 0; offset < text.size();) {
      if (limit >= 0 && static_cast<std::int64_t>(ends.size()) >= limit) break;
      UTF8::next(text, offset);
      ends.push_back(offset);
    }
    utext_close(utext);
    return ends;
  }
  iterator->setText(utext, status);
  for (std::int32_t boundary = iterator->next(); boundary != icu::BreakIterator::DONE;
       boundary = iterator->next()) {
    if (limit >= 0 && static_cast<std::int64_t>(ends.size()) >= limit) break;
    ends.push_back(static_cast<std::size_t>(boundary));
  }
  // Leave the iterator pointing at nothing that could dangle.
  iterator->setText(icu::UnicodeString());
  utext_close(utext);
  return ends;
}

}  // namespace

std::string TextLimits::cut(std::string_view text, std::int64_t limit) {
  if (limit <= 0) return {};
  if (isSimple(text)) {
    return std::string(
        text.substr(0, std::min<std::size_t>(text.size(), static_cast<std::size_t>(limit))));
  }
  const std::vector<std::size_t> ends = clusterEnds(text, limit);
  bool overlong = false;
  std::size_t start = 0;
  for (std::size_t end : ends) {
    if (UTF8::scalarCount(text.substr(start, end - start)) >
        static_cast<std::size_t>(scalarsPerCharacter)) {
      overlong = true;
      break;
    }
    start = end;
  }
  const std::size_t prefixEnd = ends.empty() ? 0 : ends.back();
  if (!overlong) return std::string(text.substr(0, prefixEnd));
  // A character piled with combining marks keeps only its first scalars, so
  // that a short text cannot grow without bound in bytes.
  std::string out;
  start = 0;
  for (std::size_t end : ends) {
    std::size_t offset = start;
    for (std::int64_t kept = 0; offset < end && kept < scalarsPerCharacter; ++kept) {
      UTF8::next(text, offset);
    }
    offset = std::min(offset, end);
    out.append(text.substr(start, offset - start));
    start = end;
  }
  return out;
}

std::size_t TextLimits::characterCount(std::string_view text) {
  if (isSimple(text)) return text.size();
  return clusterEnds(text, -1).size();
}

}  // namespace corvel
