// Where the app keeps its files and settings on Linux, following the XDG
// base-directory rules the desktop uses.
#if !defined(__APPLE__)

#include "CorvelCommand/LiveTool.h"
#include "CorvelCommand/Locations.h"

namespace corvel {
namespace {

// Preferences are a small JSON object; anything larger is not ours.
constexpr std::size_t kMaxPreferencesBytes = 1 << 20;

}  // namespace

std::string LiveTool::supportFolder() { return Locations::supportFolder(Locations::current()); }

std::optional<JSONValue> LiveTool::preference(std::string_view key) {
  const std::optional<std::string> path = Locations::preferencesFile(Locations::current());
  if (!path) return std::nullopt;
  auto text = readFile(*path, kMaxPreferencesBytes);
  if (!text) return std::nullopt;
  auto document = JSONValue::decode(*text, text->capacity());
  if (!document || !document->isObject()) return std::nullopt;
  const JSONValue* value = document->asObject()->find(key);
  if (value == nullptr) return std::nullopt;
  return *value;
}

}  // namespace corvel

#endif
