// ScriptText: the pieces every completion script shares: the reader of the
// tool's JSON listings, the names the scripts give the kinds of values, and
// small text helpers for writing shell source.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Automation/CommandGrammar.h"

namespace corvel {

struct ScriptText {
  // An awk program printing, one a line, the string value of every member
  // whose name is one of the blank-separated names in the awk variable
  // `members`. It reads the listings the tool prints with --json: pretty
  // printed, one member a line (`"id" : "space-black",`). The escapes a
  // string may hold are undone; control characters become blanks. The
  // program holds no single quote, so a shell can quote it with them.
  static constexpr std::string_view listedValuesAwk = R"AWK(
BEGIN { count = split(members, list, " "); for (i = 1; i <= count; i++) wanted[list[i]] = 1 }
{
  line = $0
  sub(/^[ \t]+/, "", line)
  if (substr(line, 1, 1) != "\"") next
  rest = substr(line, 2)
  stop = index(rest, "\"")
  if (stop == 0 || !(substr(rest, 1, stop - 1) in wanted)) next
  rest = substr(rest, stop + 1)
  if (!match(rest, /^[ \t]*:[ \t]*"/)) next
  rest = substr(rest, RLENGTH + 1)
  sub(/[ \t\r]+$/, "", rest)
  sub(/,$/, "", rest)
  if (substr(rest, length(rest), 1) != "\"") next
  rest = substr(rest, 1, length(rest) - 1)
  text = ""
  while ((at = index(rest, "\\")) > 0) {
    text = text substr(rest, 1, at - 1)
    escaped = substr(rest, at + 1, 1)
    if (escaped == "u") {
      text = text " "
      rest = substr(rest, at + 6)
    } else {
      text = text ((escaped == "\"" || escaped == "\\" || escaped == "/") ? escaped : " ")
      rest = substr(rest, at + 2)
    }
  }
  if (text rest != "") print text rest
}
)AWK";

  // The word a script uses for a kind of value ("keyAssignment").
  [[nodiscard]] static std::string_view kindWord(ValueKind kind);
  // The listing a live kind is read from and the members it prints
  // ("themes", "id name"); empty for a kind that is not read live.
  [[nodiscard]] static std::pair<std::string_view, std::string_view> listing(ValueKind kind);
  // The text with the first `marker` in it replaced by `with`.
  [[nodiscard]] static std::string replaced(std::string_view text, std::string_view marker,
                                            std::string_view with);
  // The words joined with `separator`.
  [[nodiscard]] static std::string joined(const std::vector<std::string>& words,
                                          std::string_view separator);
  // The text between single quotes, for sh, bash and zsh.
  [[nodiscard]] static std::string singleQuoted(std::string_view text);
  // A glob matching a file name ending in "." and the extension, in any case
  // ("*.[jJ][sS][oO][nN]").
  [[nodiscard]] static std::string anyCaseGlob(std::string_view extension);
};

}  // namespace corvel
