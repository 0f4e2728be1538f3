// LayerArming: what the code that watches the keyboard needs of one layer to
// time its chord: the layer's identity, the chord it is held on, and how long
// the chord must be held before the layer takes over keys.
#pragma once

#include "CorvelCore/Faces/LayerTrigger.h"
#include "CorvelCore/Support/UUID.h"

namespace corvel {

struct LayerArming {
  UUID id;
  LayerTrigger trigger;
  // Seconds the chord must be held before a key press arms the layer.
  double holdDelay = 0;

  friend bool operator==(const LayerArming&, const LayerArming&) = default;
};

}  // namespace corvel
