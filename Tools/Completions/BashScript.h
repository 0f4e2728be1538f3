// BashScript: the bash completion of `quillon`, written from the completion
// model. It needs bash 4.1 or later (as bash-completion 2 does) and nothing
// else: no bash-completion helpers, no jq.
#pragma once

#include <string>

#include "Tools/Completions/CompletionModel.h"

namespace corvel {

struct BashScript {
  // The whole script; sourcing it defines `_quillon` and registers it for
  // the command `quillon`.
  [[nodiscard]] static std::string text(const CompletionModel& model);
};

}  // namespace corvel
