// LinkComponents: a command link split into its scheme, host, path and query
// items, each percent-decoded. The fragment, if any, is dropped.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvel {

struct LinkComponents {
  std::string scheme;
  std::string host;
  std::string path;
  // The query items in their order; an item without "=" has the empty value.
  std::vector<std::pair<std::string, std::string>> items;

  // The parts of `link`, or nothing when it has no valid scheme (a letter,
  // then letters, digits, "+", "-" or ".", then ":") or when any part's
  // percent-encoding is broken or does not decode to UTF-8. The host is all
  // that stands between "//" and the path, the query or the fragment.
  [[nodiscard]] static std::optional<LinkComponents> split(std::string_view link);
};

}  // namespace corvel
