// ManPage: the manual page quillon(1), in roff with the man macros. Its
// synopsis, KEYS block, notes and exit codes are the parts the usage text is
// made of; its commands, options and one example per command come from the
// command grammar.
#pragma once

#include <expected>
#include <string>
#include <string_view>

namespace corvel {

struct ManPage {
  // The page, or the example the tool's own parser refuses (every example
  // is parsed before the page is written). `version` goes in its footer.
  [[nodiscard]] static std::expected<std::string, std::string> text(std::string_view version);
  // Text as roff reads it literally: "\" and "-" escaped, a leading "." or
  // "'" guarded.
  [[nodiscard]] static std::string escaped(std::string_view text);
};

}  // namespace corvel
