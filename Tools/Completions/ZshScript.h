// ZshScript: the zsh completion function `_quillon`, written from the
// completion model for the completion system (compinit): a file named
// `_quillon` in a folder of $fpath.
#pragma once

#include <string>

#include "Tools/Completions/CompletionModel.h"

namespace corvel {

struct ZshScript {
  // The whole file, beginning with its #compdef line.
  [[nodiscard]] static std::string text(const CompletionModel& model);
};

}  // namespace corvel
