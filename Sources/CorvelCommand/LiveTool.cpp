#include "CorvelCommand/LiveTool.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "CorvelCommand/Locations.h"
#include "CorvelCore/Automation/ExportWriter.h"

namespace corvel {
namespace {

ToolWorld::Written write(std::FILE* stream, std::string_view text) {
  const std::size_t written = std::fwrite(text.data(), 1, text.size(), stream);
  if (std::fflush(stream) == 0 && written == text.size()) return ToolWorld::Written::all;
  const bool readerGone = errno == EPIPE;
  std::clearerr(stream);
  return readerGone ? ToolWorld::Written::readerGone : ToolWorld::Written::failed;
}

// Asks for the memory to be backed by huge pages where the system gives
// them on request: filling a large buffer a small page at a time takes the
// system longer than reading the file into it.
void adviseHugePages(char* data, std::size_t size) {
#ifdef MADV_HUGEPAGE
  constexpr std::size_t kHugePage = std::size_t{2} << 20;
  if (size < 2 * kHugePage) return;
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  // The whole pages of the buffer.
  const std::size_t skip = (page - reinterpret_cast<std::uintptr_t>(data) % page) % page;
  const std::size_t length = (size - skip) / page * page;
  // Only advice: memory it is refused for is read into all the same.
  if (length > 0) (void)::madvise(data + skip, length, MADV_HUGEPAGE);
#else
  (void)data;
  (void)size;
#endif
}

// Reads an open regular file of `size` bytes, up to one byte past `maxBytes`
// so that a file that grew since it was measured is still caught as too
// large.
std::optional<std::string> readOpen(int fd, std::size_t size, std::size_t maxBytes) {
  std::string buffer;
  const std::size_t expected = std::min(size, maxBytes);
  buffer.reserve(expected + 1 + JSONValue::readPadding);
  adviseHugePages(buffer.data(), buffer.capacity());
  // Room the file's bytes then fill; not cleared first, as they overwrite it.
  const auto grow = [&buffer](std::size_t to) {
    buffer.resize_and_overwrite(to, [](char*, std::size_t room) { return room; });
  };
  grow(expected + 1);
  std::size_t filled = 0;
  while (true) {
    if (filled == buffer.size()) {
      if (buffer.size() > maxBytes) return std::nullopt;
      grow(std::min(buffer.size() * 2, maxBytes + 1));
    }
    const ssize_t count = ::read(fd, buffer.data() + filled, buffer.size() - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
  }
  if (filled > maxBytes) return std::nullopt;
  // Zeroed room after the bytes lets the JSON reader read them in place.
  buffer.resize(filled);
  buffer.append(JSONValue::readPadding, '\0');
  buffer.resize(filled);
  return buffer;
}

}  // namespace

ToolWorld LiveTool::world() {
  ToolWorld world;
  std::error_code error;
  world.currentDirectory = std::filesystem::current_path(error).string();
  world.homeFolder = Locations::current().home;
  world.supportFolder = supportFolder();
  world.preference = &LiveTool::preference;
  world.readFile = &LiveTool::readFile;
  world.listFolder = &LiveTool::listFolder;
  world.exportChecks = ExportWriter::disk();
  world.writeNew = &ExportWriter::writeNew;
  world.quillonApp = &LiveTool::quillonApp;
  world.resolveApp = &LiveTool::app;
  world.handOver = &LiveTool::handOver;
  world.version = version();
  world.out = [](std::string_view text) { return write(stdout, text); };
  world.err = [](std::string_view text) { return write(stderr, text); };
  return world;
}

std::expected<std::string, ToolWorld::ReadProblem> LiveTool::readFile(const std::string& path,
                                                                      std::size_t maxBytes) {
  // Without blocking: opening a FIFO must not wait for a writer.
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) {
    struct stat info {};
    const bool nothingThere = errno == ENOENT && ::lstat(path.c_str(), &info) != 0;
    return std::unexpected(nothingThere ? ToolWorld::ReadProblem::missing
                                        : ToolWorld::ReadProblem::unreadable);
  }
  std::optional<std::string> bytes;
  struct stat info {};
  if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_size >= 0 &&
      static_cast<std::uint64_t>(info.st_size) <= maxBytes) {
    bytes = readOpen(fd, static_cast<std::size_t>(info.st_size), maxBytes);
  }
  ::close(fd);
  if (!bytes) return std::unexpected(ToolWorld::ReadProblem::unreadable);
  return std::move(*bytes);
}

std::vector<ToolWorld::FolderFile> LiveTool::listFolder(const std::string& folder) {
  std::vector<ToolWorld::FolderFile> files;
  std::error_code error;
  for (std::filesystem::directory_iterator entries(folder, error), end; !error && entries != end;
       entries.increment(error)) {
    const auto& entry = *entries;
    ToolWorld::FolderFile file{entry.path().filename().string(), std::nullopt};
    std::error_code status;
    const bool regular = entry.is_regular_file(status);
    if (status) {
      files.push_back(std::move(file));  // read fails later; kept so it is skipped, not lost
      continue;
    }
    if (!regular) continue;
    std::error_code time;
    const auto modified = entry.last_write_time(time);
    if (!time) file.modified = modified;
    files.push_back(std::move(file));
  }
  return files;
}

}  // namespace corvel
