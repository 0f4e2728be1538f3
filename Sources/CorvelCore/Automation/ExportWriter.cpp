#include "CorvelCore/Automation/ExportWriter.h"

#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace corvel {
namespace {

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  if (slash == 0) return "/";
  return path.substr(0, slash);
}

std::string nameOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool writeAll(int fd, std::string_view data) {
  while (!data.empty()) {
    const ssize_t written = ::write(fd, data.data(), data.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// The system's own exclusive rename: 0, or the error it gave.
int systemRenameExclusive(const std::string& from, const std::string& to) {
#if defined(__APPLE__)
  return ::renamex_np(from.c_str(), to.c_str(), RENAME_EXCL) == 0 ? 0 : errno;
#else
  return ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0 ? 0
                                                                                          : errno;
#endif
}

int linkThenUnlink(const std::string& from, const std::string& to) {
  if (::link(from.c_str(), to.c_str()) != 0) return errno;
  ::unlink(from.c_str());
  return 0;
}

}  // namespace

std::vector<FileIdentity> ExportWriter::diskIdentities(const std::string& path) {
  std::vector<FileIdentity> chain;
  std::string current = path;
  // PATH_MAX bounds how many "/.." steps can be meaningful.
  for (int step = 0; step < PATH_MAX / 3; ++step) {
    struct stat info {};
    if (::lstat(current.c_str(), &info) != 0) break;
    const FileIdentity identity{static_cast<std::uint64_t>(info.st_dev),
                                static_cast<std::uint64_t>(info.st_ino)};
    if (std::find(chain.begin(), chain.end(), identity) != chain.end()) break;
    chain.push_back(identity);
    current += "/..";
  }
  return chain;
}

int ExportWriter::moveExclusive(const std::string& from, const std::string& to,
                                const Mover& rename) {
  const int error = rename(from, to);
  // Volumes that cannot rename exclusively say so in one of these ways
  // (Linux's file systems with EINVAL or ENOSYS, macOS's with ENOTSUP); a
  // hard link fails the same way when the name is taken, and is just as
  // atomic.
  if (error == EINVAL || error == ENOSYS || error == ENOTSUP) return linkThenUnlink(from, to);
  return error;
}

int ExportWriter::moveExclusive(const std::string& from, const std::string& to) {
  return moveExclusive(from, to, systemRenameExclusive);
}

FileQuestions ExportWriter::disk() {
  FileQuestions files;
  files.fileExists = [](const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
  };
  files.isDirectory = [](const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
  };
  files.realPath = [](const std::string& path) -> std::optional<std::string> {
    char* resolved = ::realpath(path.c_str(), nullptr);
    if (resolved == nullptr) return std::nullopt;
    std::string text(resolved);
    std::free(resolved);
    return text;
  };
  files.identities = &ExportWriter::diskIdentities;
  return files;
}

std::expected<std::string, ExportRefusal> ExportWriter::check(
    std::string_view path, ExportKind kind, const std::optional<std::string>& appBundle,
    const std::string& supportFolder) {
  return ExportPath::check(path, kind, appBundle, supportFolder, disk());
}

std::expected<void, ExportRefusal> ExportWriter::writeNew(std::string_view data,
                                                          const std::string& path) {
  // The temporary folder sits beside the destination, so it is on the same
  // volume and the final rename cannot cross file systems.
  std::string folderTemplate = folderOf(path) + "/.quillon-export-XXXXXX";
  if (::mkdtemp(folderTemplate.data()) == nullptr) {
    return std::unexpected(ExportRefusal::couldNotWrite);
  }
  const std::string temporaryFolder = folderTemplate;
  const std::string temporaryFile = temporaryFolder + "/" + nameOf(path);

  std::expected<void, ExportRefusal> result;
  const int fd = ::open(temporaryFile.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
  if (fd < 0) {
    result = std::unexpected(ExportRefusal::couldNotWrite);
  } else {
    const bool written = writeAll(fd, data);
    const bool closed = ::close(fd) == 0;
    if (!written || !closed) {
      result = std::unexpected(ExportRefusal::couldNotWrite);
    } else if (const int error = moveExclusive(temporaryFile, path); error != 0) {
      result =
          std::unexpected(error == EEXIST ? ExportRefusal::exists : ExportRefusal::couldNotWrite);
    }
  }
  ::unlink(temporaryFile.c_str());
  ::rmdir(temporaryFolder.c_str());
  return result;
}

}  // namespace corvel
