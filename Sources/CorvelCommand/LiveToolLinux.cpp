// Where the app keeps its files and settings on Linux, following the XDG
// base-directory rules the desktop uses.
#if !defined(__APPLE__)

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

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
  // Read as far as it goes, a piece at a time: the file is usually tiny, and
  // room for the largest one would cost more to clear than to read it. Plain
  // system calls: a file stream would first set up its locale.
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return std::nullopt;
  std::string text;
  std::array<char, 4096> piece{};
  bool failed = false;
  while (text.size() <= kMaxPreferencesBytes) {
    const ssize_t count = ::read(fd, piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      failed = count < 0;
      break;
    }
    text.append(piece.data(), static_cast<std::size_t>(count));
  }
  ::close(fd);
  if (failed || text.size() > kMaxPreferencesBytes) return std::nullopt;
  auto document = JSONValue::decode(text);
  if (!document || !document->isObject()) return std::nullopt;
  const JSONValue* value = document->asObject()->find(key);
  if (value == nullptr) return std::nullopt;
  return *value;
}

}  // namespace corvel

#endif
