// ExportKind: what an export writes (and what an import brings in): all the
// layers, one theme, or one app's changed cheatsheet.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "CorvelCore/Support/EnumName.h"

namespace corvel {

enum class ExportKind { layers, theme, sheet };

inline constexpr std::array<EnumName<ExportKind>, 3> exportKindNames{{
    {ExportKind::layers, "layers"},
    {ExportKind::theme, "theme"},
    {ExportKind::sheet, "sheet"},
}};

// The written name of a kind ("layers", "theme", "sheet").
[[nodiscard]] constexpr std::string_view rawValue(ExportKind kind) {
  return rawValue(exportKindNames, kind);
}

// The kind written exactly as `raw`, or nothing.
[[nodiscard]] constexpr std::optional<ExportKind> exportKind(std::string_view raw) {
  return caseNamed<ExportKind>(exportKindNames, raw);
}

}  // namespace corvel
