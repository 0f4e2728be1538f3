// ExportPath: decides whether an export may write a path, without touching
// the disk. The file-system questions come in as functions, so the rules run
// the same against the real disk (ExportWriter) and against a test's fake.
//
// An export always names a new file with the kind's extension, in a folder
// that exists, on this machine, and never inside the app's bundle or its
// support folder, however the path is spelled or linked.
#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Automation/ExportKind.h"
#include "CorvelCore/Automation/ExportRefusal.h"

namespace corvel {

// Which folder an entry is: its volume's device number and its serial number
// there. Two spellings name the same folder when their identities are equal.
struct FileIdentity {
  std::uint64_t volume = 0;
  std::uint64_t file = 0;
  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

// The questions the rules ask of a file system.
struct FileQuestions {
  // Anything at the path, a dangling link included.
  std::function<bool(const std::string&)> fileExists;
  // A folder at the path, following links.
  std::function<bool(const std::string&)> isDirectory;
  // The path with every link resolved, or nothing when it cannot be resolved.
  std::function<std::optional<std::string>(const std::string&)> realPath;
  // The identity of the folder at the path and of each folder above it, up
  // to the top; empty when the path cannot be read.
  std::function<std::vector<FileIdentity>(const std::string&)> identities;
};

struct ExportPath {
  // Folders whose first path component marks a network mount.
  static constexpr std::string_view networkFolders[] = {"net", "network"};

  // The extensions a kind may be written with, compared without regard to case.
  [[nodiscard]] static std::span<const std::string_view> extensions(ExportKind kind);
  // True when the file name's text after its last "." (which must not be its
  // first character) is one of the kind's extensions.
  [[nodiscard]] static bool hasExtension(std::string_view name, ExportKind kind);
  // The path's components with "." dropped and each ".." taking away the one
  // before it; nothing when a ".." would climb above the top folder (take
  // away the first component itself).
  [[nodiscard]] static std::optional<std::vector<std::string>> standardised(std::string_view path);

  // The standardised path to write, or the first rule it breaks: absolute,
  // no climbing above the top, not a folder name, the kind's extension, not
  // on the network, not inside the app or its support folder, in a folder
  // that exists, and nothing there yet. `appBundle` is absent when the app's
  // bundle is not known (it then protects nothing).
  [[nodiscard]] static std::expected<std::string, ExportRefusal> check(
      std::string_view path, ExportKind kind, const std::optional<std::string>& appBundle,
      const std::string& supportFolder, const FileQuestions& files);
};

}  // namespace corvel
