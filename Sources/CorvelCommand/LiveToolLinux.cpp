// Where the app keeps its files and settings on Linux, following the XDG
// base-directory rules the desktop uses.
#if !defined(__APPLE__)

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "CorvelCommand/LineTool.h"
#include "CorvelCommand/LiveTool.h"
#include "CorvelCore/Brand/Brand.h"

namespace corvel {
namespace {

// Preferences are a small JSON object; anything larger is not ours.
constexpr std::size_t kMaxPreferencesBytes = 1 << 20;

std::string homeFolder() {
  if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/') return home;
  if (const passwd* entry = ::getpwuid(::getuid()); entry != nullptr && entry->pw_dir != nullptr) {
    return entry->pw_dir;
  }
  return "/";
}

// An XDG folder variable counts only when it holds an absolute path.
std::string xdgFolder(const char* variable, const char* fallbackInHome) {
  if (const char* value = std::getenv(variable); value != nullptr && value[0] == '/') {
    return value;
  }
  return homeFolder() + "/" + fallbackInHome;
}

}  // namespace

std::string LiveTool::supportFolder() {
  return xdgFolder("XDG_DATA_HOME", ".local/share") + "/" + std::string(Brand::supportFolderName);
}

std::optional<JSONValue> LiveTool::preference(std::string_view key) {
  const std::string path = xdgFolder("XDG_CONFIG_HOME", ".config") + "/" +
                           std::string(Brand::supportFolderName) + "/Preferences.json";
  const std::optional<std::string> text = LineTool::read(path, kMaxPreferencesBytes, true);
  if (!text) return std::nullopt;
  auto document = JSONValue::decode(*text);
  if (!document || !document->isObject()) return std::nullopt;
  const JSONValue* value = document->asObject()->find(key);
  if (value == nullptr) return std::nullopt;
  return *value;
}

}  // namespace corvel

#endif
