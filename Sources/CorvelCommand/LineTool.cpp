#include "CorvelCommand/LineTool.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace corvel {

std::int32_t LineTool::run(std::span<const std::string>, const ToolWorld& world) {
  world.err("quillon: the driver is being built.\n");
  return 1;
}

std::optional<std::string> LineTool::read(const std::string& path, std::size_t max,
                                          bool followLinks) {
  const int flags = O_RDONLY | O_CLOEXEC | (followLinks ? 0 : O_NOFOLLOW);
  const int fd = ::open(path.c_str(), flags);
  if (fd < 0) return std::nullopt;
  std::optional<std::string> bytes;
  struct stat info {};
  if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode)) {
    // Read one byte past the limit, so a file that grew since fstat is still
    // caught as too large.
    std::string buffer(max + 1, '\0');
    std::size_t filled = 0;
    bool failed = false;
    while (filled < buffer.size()) {
      const ssize_t count = ::read(fd, buffer.data() + filled, buffer.size() - filled);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) {
        failed = true;
        break;
      }
      if (count == 0) break;
      filled += static_cast<std::size_t>(count);
    }
    if (!failed && filled <= max) {
      buffer.resize(filled);
      bytes = std::move(buffer);
    }
  }
  ::close(fd);
  return bytes;
}

}  // namespace corvel
