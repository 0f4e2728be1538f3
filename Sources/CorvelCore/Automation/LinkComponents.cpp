#include "CorvelCore/Automation/LinkComponents.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "CorvelCore/Automation/LinkCoding.h"

namespace corvel {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isSchemeCharacter(char c) {
  return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

// Calls `visit` with the index of each byte of the query that is "&", "=",
// "%" or part of a non-ASCII character, in order. Those are the only bytes
// splitting looks at, so they are found eight at a time: a word's byte is
// zero where it equals the byte sought, and the bit trick below marks
// exactly those bytes with their high bit, without any carry between them.
template <class Visit>
void forEachMarkedByte(std::string_view query, Visit&& visit) {
  constexpr std::uint64_t ones = 0x0101010101010101;
  constexpr std::uint64_t lows = 0x7F7F7F7F7F7F7F7F;
  constexpr std::uint64_t highs = 0x8080808080808080;
  const auto zeroBytes = [](std::uint64_t word) {
    return ~(((word & lows) + lows) | word) & highs;
  };
  for (std::size_t base = 0; base < query.size(); base += 8) {
    // The first byte in the lowest bits, whatever the machine's byte order;
    // past the end the word holds zeros, which are none of the bytes sought.
    std::uint64_t word = 0;
    const std::size_t count = std::min<std::size_t>(8, query.size() - base);
    if (count == 8 && std::endian::native == std::endian::little) {
      std::memcpy(&word, query.data() + base, 8);
    } else {
      for (std::size_t index = 0; index < count; ++index) {
        word |= std::uint64_t{static_cast<unsigned char>(query[base + index])} << (8 * index);
      }
    }
    std::uint64_t marked = (word & highs) | zeroBytes(word ^ (ones * '&')) |
                           zeroBytes(word ^ (ones * '=')) | zeroBytes(word ^ (ones * '%'));
    for (; marked != 0; marked &= marked - 1) {
      visit(base + static_cast<std::size_t>(std::countr_zero(marked) / 8));
    }
  }
}

}  // namespace

bool LinkComponents::split(std::string_view link, Views& parts, std::string& decoded) {
  parts.items.clear();
  std::size_t colon = link.find(':');
  if (colon == std::string_view::npos || colon == 0 || !isLetter(link.front())) return false;
  for (char c : link.substr(0, colon)) {
    if (!isSchemeCharacter(c)) return false;
  }
  parts.scheme = link.substr(0, colon);

  // Decoding never lengthens a text, so `decoded` never moves once it has
  // room for the whole link, and views into it stay valid. It is given that
  // room before the first part that needs it.
  decoded.clear();
  bool broken = false;
  const auto decodedPart = [&](std::string_view text) {
    if (decoded.capacity() < link.size()) decoded.reserve(link.size());
    const std::size_t start = decoded.size();
    broken = broken || !LinkCoding::decode(text, decoded);
    return std::string_view(decoded).substr(start);
  };
  const auto part = [&](std::string_view text) {
    return LinkCoding::isPlain(text) ? text : decodedPart(text);
  };

  std::string_view rest = link.substr(colon + 1);
  rest = rest.substr(0, rest.find('#'));
  std::string_view query;
  bool hasQuery = false;
  if (std::size_t mark = rest.find('?'); mark != std::string_view::npos) {
    query = rest.substr(mark + 1);
    rest = rest.substr(0, mark);
    hasQuery = true;
  }
  std::string_view host;
  if (rest.starts_with("//")) {
    rest.remove_prefix(2);
    std::size_t slash = rest.find('/');
    host = rest.substr(0, slash);
    rest = slash == std::string_view::npos ? std::string_view() : rest.substr(slash);
  }
  parts.host = part(host);
  parts.path = part(rest);

  // "?" alone carries no items; otherwise every "&" starts one, empty or
  // not, and its first "=" ends its name. A part must be decoded when it
  // holds a "%" or a byte of a non-ASCII character.
  if (hasQuery && !query.empty()) {
    std::size_t start = 0;
    std::size_t equals = std::string_view::npos;
    bool nameEscaped = false;
    bool escaped = false;
    const auto endItem = [&](std::size_t end) {
      const bool hasValue = equals != std::string_view::npos;
      const std::string_view name = query.substr(start, (hasValue ? equals : end) - start);
      const std::string_view value =
          hasValue ? query.substr(equals + 1, end - equals - 1) : std::string_view();
      const bool decodeName = hasValue ? nameEscaped : escaped;
      const std::string_view readName = decodeName ? decodedPart(name) : name;
      parts.items.emplace_back(readName, hasValue && escaped ? decodedPart(value) : value);
      start = end + 1;
      equals = std::string_view::npos;
      nameEscaped = false;
      escaped = false;
    };
    forEachMarkedByte(query, [&](std::size_t index) {
      switch (query[index]) {
        case '&':
          endItem(index);
          return;
        case '=':
          if (equals == std::string_view::npos) {
            equals = index;
            nameEscaped = escaped;
            escaped = false;
          }
          return;
        default:
          escaped = true;
          return;
      }
    });
    endItem(query.size());
  }
  return !broken;
}

std::optional<LinkComponents> LinkComponents::split(std::string_view link) {
  std::string decoded;
  Views views;
  if (!split(link, views, decoded)) return std::nullopt;
  LinkComponents parts{
      std::string(views.scheme), std::string(views.host), std::string(views.path), {}};
  parts.items.reserve(views.items.size());
  for (const auto& [name, value] : views.items) parts.items.emplace_back(name, value);
  return parts;
}

}  // namespace corvel
