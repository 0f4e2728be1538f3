#include "CorvelCore/Support/FileName.h"

#include <algorithm>

#include "CorvelCore/Support/ASCIIText.h"

namespace corvel {

std::string_view FileName::last(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::optional<std::string> FileName::extension(std::string_view path) {
  const std::string_view name = last(path);
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return std::nullopt;
  return ASCIIText::lowercased(name.substr(dot + 1));
}

bool FileName::hasExtension(std::string_view path, std::span<const std::string_view> extensions) {
  const auto found = extension(path);
  return found && std::find(extensions.begin(), extensions.end(), *found) != extensions.end();
}

}  // namespace corvel
