#include "CorvelCore/Automation/LinkComponents.h"

#include <algorithm>

#include "CorvelCore/Automation/LinkCoding.h"

namespace corvel {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isSchemeCharacter(char c) {
  return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

}  // namespace

std::optional<LinkComponents> LinkComponents::split(std::string_view link) {
  std::size_t colon = link.find(':');
  if (colon == std::string_view::npos || colon == 0 || !isLetter(link.front())) {
    return std::nullopt;
  }
  LinkComponents parts;
  for (char c : link.substr(0, colon)) {
    if (!isSchemeCharacter(c)) return std::nullopt;
  }
  parts.scheme = link.substr(0, colon);

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
  auto decodedHost = LinkCoding::decode(host);
  auto decodedPath = LinkCoding::decode(rest);
  if (!decodedHost || !decodedPath) return std::nullopt;
  parts.host = std::move(*decodedHost);
  parts.path = std::move(*decodedPath);

  // "?" alone carries no items; otherwise every "&" starts one, empty or not.
  if (hasQuery && !query.empty()) {
    parts.items.reserve(static_cast<std::size_t>(std::count(query.begin(), query.end(), '&')) + 1);
    std::size_t start = 0;
    while (true) {
      std::size_t end = query.find('&', start);
      std::string_view item =
          query.substr(start, end == std::string_view::npos ? end : end - start);
      std::size_t equals = item.find('=');
      auto name = LinkCoding::decode(item.substr(0, equals));
      auto value = LinkCoding::decode(equals == std::string_view::npos ? std::string_view()
                                                                       : item.substr(equals + 1));
      if (!name || !value) return std::nullopt;
      parts.items.emplace_back(std::move(*name), std::move(*value));
      if (end == std::string_view::npos) break;
      start = end + 1;
    }
  }
  return parts;
}

}  // namespace corvel
