// LayerHolds: times each layer's chord. A layer arms only when its chord has
// been held, exactly and without a key pressed in between, for the layer's
// hold delay; a key pressed before that turns the chord into an ordinary
// shortcut modifier until the held modifiers change. When several chords
// match what is held, the most specific wins (the earlier layer on a tie).
//
// Times are nanoseconds on one monotonic clock (the keyboard events' own
// timestamps). Updating the held modifiers and pressing a key never allocate.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "CorvelCore/Faces/LayerTrigger.h"
#include "CorvelCore/Layers/LayerArming.h"
#include "CorvelCore/Support/UUID.h"

namespace corvel {

class LayerHolds {
 public:
  // The timing state of one layer's chord.
  struct Hold {
    UUID id;                    // the layer
    LayerTrigger trigger;       // its chord
    std::uint64_t delayNs = 0;  // the hold delay (see `delayNs`)
    bool matched = false;       // the chord is held exactly now
    std::uint64_t since = 0;    // when the chord began to match
    // A key was pressed while the chord was held but before it armed; the
    // hold does not arm again until the chord is taken up anew.
    bool dirty = false;

    friend bool operator==(const Hold&, const Hold&) = default;
  };

  enum class PressState { armed, notArmed, noActiveHold };

  // What a key press found: the active hold's index (none with
  // `noActiveHold`) and whether it was armed.
  struct Press {
    std::optional<std::size_t> index;
    PressState state = PressState::noActiveHold;

    friend bool operator==(const Press&, const Press&) = default;
  };

  // A hold delay in whole nanoseconds, rounded; negative, NaN or infinite
  // gives 0, and a delay beyond 64 bits gives the largest value.
  [[nodiscard]] static std::uint64_t delayNs(double seconds);

  LayerHolds() = default;
  // One hold per arming, in order: not matched, not dirty, since 0; nothing
  // held, no active hold.
  explicit LayerHolds(std::span<const LayerArming> armings);

  [[nodiscard]] const std::vector<Hold>& holds() const { return holds_; }
  // The last mask of held modifiers.
  [[nodiscard]] std::uint16_t held() const { return held_; }
  // The index of the winning matched hold, if any.
  [[nodiscard]] std::optional<std::size_t> active() const { return active_; }

  // Replaces the holds from new armings; a hold whose layer and chord are
  // unchanged keeps its timing (its delay is the new one), and the others
  // start afresh. The held mask stays.
  void update(std::span<const LayerArming> armings);
  // The held modifiers are now `mask` at `t`: chords that begin to match
  // start their time, chords that stop matching drop it, and the winner is
  // chosen anew. The same mask again changes nothing.
  void heldChanged(std::uint16_t mask, std::uint64_t t);
  // A key went down at `t`: armed when the active hold is matched, clean
  // and held for its delay; otherwise the active hold turns dirty.
  Press keyPressed(std::uint64_t t);
  // Forgets what is held and every hold's timing.
  void reset();

 private:
  // Masks reach up to the fn bit, so every mask below this is tabulated.
  static constexpr std::size_t tabulatedMasks = 0x200;

  // A hold's chord answered in advance: whether it matches each mask, and
  // its specificity.
  struct Matcher {
    std::bitset<tabulatedMasks> matches;
    int specificity = 0;
  };

  [[nodiscard]] bool matches(std::size_t index, std::uint16_t mask) const;
  void rebuildMatchers();
  void chooseActive();

  std::vector<Hold> holds_;
  std::vector<Matcher> matchers_;
  std::uint16_t held_ = 0;
  std::optional<std::size_t> active_;
};

}  // namespace corvel
