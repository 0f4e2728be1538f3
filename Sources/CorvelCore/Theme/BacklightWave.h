// BacklightWave: the ripple of light a `wave` backlight answers a key press
// with. The pressed key's neighbours light one after another, nearest first,
// each after a delay that grows with its distance; the board's drawing code
// runs the light itself with the times given here.
#pragma once

#include <vector>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Keyboard/KeyboardGeometry.h"

namespace corvel {

struct BacklightWave {
  // Largest centre-to-centre distance, in the geometry's units, at which a
  // key still takes part; a key exactly this far away does not.
  static constexpr double reach = 2.8;
  // Seconds of delay per unit of distance.
  static constexpr double stepDelay = 0.07;
  // Seconds a key stays lit.
  static constexpr double hold = 0.24;
  // Seconds over which a lit key fades out.
  static constexpr double fadeOut = 0.12;

  // One neighbour and when it lights, in seconds after the press.
  struct Step {
    KeyID key;
    double delay;
    friend bool operator==(const Step&, const Step&) = default;
  };

  // The keys within `reach` of `key`'s centre (a two-rectangle key counts
  // by the centre of their union), nearest first and in the geometry's order
  // on equal distance, each with distance × `stepDelay`. The pressed key is
  // never among them; a key the geometry lacks gives none.
  [[nodiscard]] static std::vector<Step> neighbours(KeyID key, const KeyboardGeometry& geometry);
};

}  // namespace corvel
