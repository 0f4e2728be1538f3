// LayerArming: what the code that watches the keyboard needs of one layer to
// arm it: which layer, the chord that arms it, and how long that chord must
// be held before the layer shows.
#pragma once

#include "CorvelCore/Faces/LayerTrigger.h"
#include "CorvelCore/Support/UUID.h"

namespace corvel {

struct LayerArming {
  UUID id;
  LayerTrigger trigger;
  double holdDelay = 0.0;  // seconds

  friend bool operator==(const LayerArming&, const LayerArming&) = default;
};

}  // namespace corvel
