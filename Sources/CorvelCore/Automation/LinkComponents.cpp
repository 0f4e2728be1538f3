#include "CorvelCore/Automation/LinkComponents.h"

#include <array>

#include "CorvelCore/Automation/LinkCoding.h"

namespace corvel {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isSchemeCharacter(char c) {
  return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

// What a byte of a query means while it is split into items.
enum class ByteRole : unsigned char {
  plain,    // part of a name or value that decodes to itself
  escaped,  // "%" or a byte of a non-ASCII character: the part must be decoded
  nameEnd,  // "=", which ends an item's name (the first one does)
  itemEnd,  // "&"
};

constexpr std::array<ByteRole, 256> queryRoles = [] {
  std::array<ByteRole, 256> roles{};
  for (std::size_t byte = 0; byte < roles.size(); ++byte) {
    roles[byte] = byte >= 0x80 || byte == '%' ? ByteRole::escaped : ByteRole::plain;
  }
  roles['='] = ByteRole::nameEnd;
  roles['&'] = ByteRole::itemEnd;
  return roles;
}();

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
  // not, and its first "=" ends its name. The query is walked once, each
  // byte looked up for what it means here.
  if (hasQuery && !query.empty()) {
    std::size_t start = 0;
    std::size_t equals = std::string_view::npos;
    bool nameEscaped = false;
    bool escaped = false;
    for (std::size_t index = 0;; ++index) {
      const ByteRole role = index < query.size()
                                ? queryRoles[static_cast<unsigned char>(query[index])]
                                : ByteRole::itemEnd;
      if (role == ByteRole::plain) continue;
      if (role == ByteRole::escaped) {
        escaped = true;
        continue;
      }
      if (role == ByteRole::nameEnd) {
        if (equals == std::string_view::npos) {
          equals = index;
          nameEscaped = escaped;
          escaped = false;
        }
        continue;
      }
      const bool hasValue = equals != std::string_view::npos;
      const std::string_view name = query.substr(start, (hasValue ? equals : index) - start);
      const std::string_view value =
          hasValue ? query.substr(equals + 1, index - equals - 1) : std::string_view();
      const bool decodeName = hasValue ? nameEscaped : escaped;
      const bool decodeValue = hasValue && escaped;
      const std::string_view readName = decodeName ? decodedPart(name) : name;
      parts.items.emplace_back(readName, decodeValue ? decodedPart(value) : value);
      if (index == query.size() || broken) break;
      start = index + 1;
      equals = std::string_view::npos;
      nameEscaped = false;
      escaped = false;
    }
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
