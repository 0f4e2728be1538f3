#include "CorvelCore/Theme/BacklightWave.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace corvel {

std::vector<BacklightWave::Step> BacklightWave::neighbours(KeyID key,
                                                           const KeyboardGeometry& geometry) {
  std::vector<Step> steps;
  const Keycap* pressed = geometry.cap(key);
  if (pressed == nullptr) return steps;
  const KeyFrame pressedShape = pressed->shape();
  const double x = pressedShape.midX();
  const double y = pressedShape.midY();

  struct Kept {
    double distance;
    std::size_t order;
    KeyID key;
  };
  const std::span<const Keycap> caps = geometry.caps();
  std::vector<Kept> kept;
  kept.reserve(caps.size());
  for (std::size_t i = 0; i < caps.size(); ++i) {
    if (caps[i].key == key) continue;
    const KeyFrame shape = caps[i].shape();
    const double distance = std::hypot(shape.midX() - x, shape.midY() - y);
    if (distance < reach) kept.push_back({distance, i, caps[i].key});
  }
  // The position breaks ties, so an unstable sort gives the geometry's order.
  std::sort(kept.begin(), kept.end(), [](const Kept& a, const Kept& b) {
    return a.distance != b.distance ? a.distance < b.distance : a.order < b.order;
  });
  steps.reserve(kept.size());
  for (const Kept& k : kept) steps.push_back({k.key, k.distance * stepDelay});
  return steps;
}

}  // namespace corvel
