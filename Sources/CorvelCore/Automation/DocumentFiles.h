// DocumentFiles: the file names each kind of document goes by, from its
// codec's own extensions. An export is written with the current extension
// (layers also as ".json"); an import and the support folder's listings also
// read files saved under the app's earlier name.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "CorvelCore/Automation/ExportKind.h"

namespace corvel {

struct DocumentFiles {
  // The kind's own extension: "quillonlayer", "quillontheme", "quillonsheet".
  [[nodiscard]] static std::string_view current(ExportKind kind);
  // What a file of the kind is kept as: the current extension, then the earlier one.
  [[nodiscard]] static std::span<const std::string_view> kept(ExportKind kind);
  // What an export of the kind may be named with.
  [[nodiscard]] static std::span<const std::string_view> exported(ExportKind kind);
  // What an import of the kind reads.
  [[nodiscard]] static std::span<const std::string_view> imported(ExportKind kind);
  // The kind an import path names by its extension, or nothing.
  [[nodiscard]] static std::optional<ExportKind> importKind(std::string_view path);
  // The largest file of the kind that is read, in bytes.
  [[nodiscard]] static std::size_t maxBytes(ExportKind kind);
};

}  // namespace corvel
