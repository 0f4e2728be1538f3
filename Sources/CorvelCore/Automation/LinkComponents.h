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

  // The same parts seen in place: a part that decodes to itself is a view
  // into `link`, any other one a view into `decoded`; both must outlive the
  // views. `split` fills `parts` (emptying it and `decoded` first, keeping
  // their room) and returns false where the other `split` gives nothing.
  struct Views {
    std::string_view scheme;
    std::string_view host;
    std::string_view path;
    std::vector<std::pair<std::string_view, std::string_view>> items;
  };
  [[nodiscard]] static bool split(std::string_view link, Views& parts, std::string& decoded);
};

}  // namespace corvel
