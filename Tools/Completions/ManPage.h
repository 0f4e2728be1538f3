// ManPage: the manual page quillon(1), in roff with the man macros. Its
// synopsis, KEYS block, notes and exit codes are the tool's usage text,
// reflowed to the reader's width; the commands, options and one checked
// example per command come from the completion model.
#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "Tools/Completions/CompletionModel.h"

namespace corvel {

struct ManPage {
  // The page, or what in the usage text or the examples did not fit: a
  // usage text not in its five parts, a command without an example, or an
  // example the tool's parser refuses. `version` goes in the page's footer.
  [[nodiscard]] static std::expected<std::string, std::string> text(const CompletionModel& model,
                                                                    std::string_view version);
  // Text as roff reads it literally: "\" and "-" escaped, a leading "." or
  // "'" guarded.
  [[nodiscard]] static std::string escaped(std::string_view text);
};

}  // namespace corvel
