// LayerSummary: what a listing shows of a layer: its name, trigger, app,
// whether it is on or waits for review, and how many keys it assigns.
// LayerCodec::summaries reads these straight from a layers file, for the
// layers `decodeFile` would keep, without building the layers themselves.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "CorvelCore/Faces/LayerTrigger.h"
#include "CorvelCore/Layers/Layer.h"

namespace corvel {

struct LayerSummary {
  std::string name;
  LayerTrigger trigger;
  std::optional<std::string> appScope;
  bool enabled = false;
  bool needsReview = false;
  std::int64_t keys = 0;

  [[nodiscard]] static LayerSummary of(const Layer& layer) {
    return {layer.name,    layer.trigger,     layer.appScope,
            layer.enabled, layer.needsReview, static_cast<std::int64_t>(layer.keys.size())};
  }

  friend bool operator==(const LayerSummary&, const LayerSummary&) = default;
};

}  // namespace corvel
