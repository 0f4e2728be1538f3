#include "CorvelCore/Automation/LinkComponents.h"

#include <algorithm>

#include "CorvelCore/Automation/LinkCoding.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isSchemeCharacter(char c) {
  return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
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
  // holds a "%" or a byte of a non-ASCII character. In ASCII, as nearly
  // every query is, only the "%" is looked for, and memchr finds each of
  // these bytes faster than a look at every byte in turn.
  if (hasQuery && !query.empty()) {
    const bool ascii = UTF8::isASCII(query);
    const auto read = [&](std::string_view text) {
      const bool plain =
          ascii ? text.find('%') == std::string_view::npos : LinkCoding::isPlain(text);
      return plain ? text : decodedPart(text);
    };
    for (std::size_t start = 0; start <= query.size() && !broken;) {
      const std::size_t end = std::min(query.find('&', start), query.size());
      const std::string_view item = query.substr(start, end - start);
      const std::size_t equals = item.find('=');
      const std::string_view name = read(item.substr(0, equals));
      const std::string_view value =
          equals == std::string_view::npos ? std::string_view() : read(item.substr(equals + 1));
      parts.items.emplace_back(name, value);
      start = end + 1;
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
