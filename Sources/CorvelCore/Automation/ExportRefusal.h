// ExportRefusal: every reason an export is not written, with its sentence in
// both wordings: the link's (whose parameter is `file`) and the tool's
// (whose option is `-f`).
#pragma once

#include <string_view>

#include "CorvelCore/Automation/ExportKind.h"

namespace corvel {

enum class ExportRefusal {
  notAbsolute,
  exists,
  noFolder,
  wrongExtension,
  insideQuillon,
  nothingToExport,
  couldNotWrite,
  onNetwork,
};

// The sentence in the link's wording.
[[nodiscard]] std::string_view message(ExportRefusal refusal);

// The sentence in the tool's wording; `kind` picks the extension and
// nothing-to-export sentences, and `named` says whether `--name` was given
// (for layers, a name that matched nothing reads differently from no layers).
[[nodiscard]] std::string_view toolMessage(ExportRefusal refusal, ExportKind kind, bool named);

}  // namespace corvel
