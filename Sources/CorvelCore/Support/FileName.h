// FileName: what the tool asks of a path's last component: its extension, in
// the one way every reader of file names compares it.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvel {

struct FileName {
  // The last component of a path (the whole text when it has no "/").
  [[nodiscard]] static std::string_view last(std::string_view path);
  // The text after the last "." of the last component, with ASCII letters in
  // lower case; nothing when there is no "." or it is the first character
  // (".quillonlayer" is a name, not an extension).
  [[nodiscard]] static std::optional<std::string> extension(std::string_view path);
  // True when the path's extension is one of `extensions` (given in lower case).
  [[nodiscard]] static bool hasExtension(std::string_view path,
                                         std::span<const std::string_view> extensions);
};

}  // namespace corvel
