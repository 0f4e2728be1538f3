// FishScript: the fish completions of `quillon`, written from the completion
// model: `complete` lines guarded by conditions on the words typed so far.
#pragma once

#include <string>

#include "Tools/Completions/CompletionModel.h"

namespace corvel {

struct FishScript {
  // The whole file, for a folder fish loads completions from.
  [[nodiscard]] static std::string text(const CompletionModel& model);
};

}  // namespace corvel
