// ExportWriter: the export path rules bound to the real file system, and the
// one way an export file is written: complete, and never over another file.
#pragma once

#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Automation/ExportPath.h"

namespace corvel {

struct ExportWriter {
  // The file-system questions answered by this machine's disk.
  [[nodiscard]] static FileQuestions disk();

  // The identities of the folder at `path` and every folder above it, read
  // without following a final link, up to the top (which is its own parent).
  [[nodiscard]] static std::vector<FileIdentity> diskIdentities(const std::string& path);

  // `ExportPath::check` against the real disk.
  [[nodiscard]] static std::expected<std::string, ExportRefusal> check(
      std::string_view path, ExportKind kind, const std::optional<std::string>& appBundle,
      const std::string& supportFolder);

  // Writes `data` as a new file at `path`: first into a temporary folder
  // beside it, then moved into place with a rename that fails if anything is
  // there. `exists` when something got there first, `couldNotWrite` for any
  // other failure. The temporary folder is always removed.
  [[nodiscard]] static std::expected<void, ExportRefusal> writeNew(std::string_view data,
                                                                   const std::string& path);

  // A move of one file to a name: 0, or the error number it failed with.
  using Mover = std::function<int(const std::string& from, const std::string& to)>;
  // Moves `from` to `to` unless something is at `to`; the check and the move
  // are one step, so a file that appears in between is never replaced. Where
  // the volume has no exclusive rename, `to` is linked to `from` (which fails
  // the same way when the name is taken) and `from` is then removed.
  [[nodiscard]] static int moveExclusive(const std::string& from, const std::string& to);
  // The same with the exclusive rename given, as a volume without one would
  // answer it.
  [[nodiscard]] static int moveExclusive(const std::string& from, const std::string& to,
                                         const Mover& rename);
};

}  // namespace corvel
