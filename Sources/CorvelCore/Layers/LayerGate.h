// LayerGate: sits in the app's keyboard event path and decides, for every
// event, whether a layer runs it, whether it passes through untouched, or
// whether it is swallowed. A layer takes over only the keys it assigns, and
// only once its chord has been held for its hold delay (see LayerHolds).
//
// Decisions this gate makes for the cases a layer does not clearly own:
//   - A key pressed while a layer is armed that the layer does not assign
//     passes: the chord keeps working as an ordinary shortcut for every other
//     key, and the gate never eats a keystroke it has no use for.
//   - A key-up whose key-down a layer ran is swallowed, so that apps never see
//     half a keystroke. When the key-down is older than `staleAfterNs` the
//     key-up passes instead: the entry most likely outlived a key-up the gate
//     never saw (the event tap was paused), and letting a key-up through is
//     harmless while eating one could leave an app with a stuck key.
//   - Auto-repeat key-downs are never presses: they neither arm a layer nor
//     spoil a hold. The repeats of a key a layer ran are swallowed (and keep
//     its key-up from going stale while the key is held); every other repeat
//     passes.
//   - A fresh key-down that no layer runs forgets any earlier entry for its
//     code, so that its own key-up reaches the apps that saw it go down.
//   - Events the app posts itself (their user data is `ownTag`) pass without
//     touching any state, so a layer's own keystrokes cannot spoil its hold.
//   - Event types other than the three below pass.
//
// Every key-down a layer runs has its key-up swallowed, however many are
// pending at once: the gate sets no limit. The first `swallowReserve` pending
// keys live in fixed storage inside the gate, so that deciding does not
// allocate in any ordinary use; more (only a keyboard mashed while a layer
// shows, or key-ups the gate never saw) go to storage that grows. There is
// at most one entry per key code that names a key, so it never holds more
// entries than the keyboard has keys.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <variant>
#include <vector>

#include "CorvelCore/Faces/LayerTrigger.h"
#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Layers/LayerHolds.h"
#include "CorvelCore/Support/UUID.h"

namespace corvel {

// What the gate knows of one enabled layer.
struct LayerRoute {
  UUID id;
  LayerTrigger trigger;
  double holdDelay = 0;              // seconds
  std::set<std::uint16_t> keyCodes;  // Mac key codes of the keys the layer assigns

  friend bool operator==(const LayerRoute&, const LayerRoute&) = default;
};

// What becomes of one keyboard event.
class GateDecision {
 public:
  // The layer `id` runs its action for `key`; the event goes no further.
  struct Run {
    UUID id;
    KeyID key;
    friend bool operator==(const Run&, const Run&) = default;
  };
  // The event goes on to the system and the apps.
  struct Pass {
    friend bool operator==(const Pass&, const Pass&) = default;
  };
  // The event goes no further and nothing runs.
  struct Swallow {
    friend bool operator==(const Swallow&, const Swallow&) = default;
  };

  [[nodiscard]] static GateDecision run(const UUID& id, KeyID key) { return {Run{id, key}}; }
  [[nodiscard]] static GateDecision pass() { return {Pass{}}; }
  [[nodiscard]] static GateDecision swallow() { return {Swallow{}}; }

  [[nodiscard]] bool isRun() const { return std::holds_alternative<Run>(value_); }
  [[nodiscard]] bool isPass() const { return std::holds_alternative<Pass>(value_); }
  [[nodiscard]] bool isSwallow() const { return std::holds_alternative<Swallow>(value_); }
  // The layer and key to run, or null when the decision is not `run`.
  [[nodiscard]] const Run* ran() const { return std::get_if<Run>(&value_); }
  [[nodiscard]] const std::variant<Run, Pass, Swallow>& value() const { return value_; }

  friend bool operator==(const GateDecision&, const GateDecision&) = default;

 private:
  GateDecision(std::variant<Run, Pass, Swallow> value) : value_(value) {}

  std::variant<Run, Pass, Swallow> value_;
};

class LayerGate {
 public:
  // The platform's event type numbers.
  static constexpr std::uint32_t keyDown = 10;
  static constexpr std::uint32_t keyUp = 11;
  static constexpr std::uint32_t flagsChanged = 12;
  // A key-down taken longer ago than this no longer has its key-up swallowed.
  static constexpr std::uint64_t staleAfterNs = 5'000'000'000;
  // Pending key-ups held without allocating; more are held too.
  static constexpr std::size_t swallowReserve = 32;

  // A gate over `routes`, one hold per route in order; events whose user
  // data equals `ownTag` are the app's own.
  LayerGate(std::span<const LayerRoute> routes, std::int64_t ownTag);

  // Takes new routes; holds of unchanged layers and chords keep their timing,
  // and pending key-ups stay pending.
  void update(std::span<const LayerRoute> routes);
  // Decides one event: its type number, Mac key code, system modifier flags,
  // whether it is an auto-repeat, its time in nanoseconds and its user data.
  GateDecision decide(std::uint32_t type, std::uint16_t keyCode, std::uint64_t flags, bool isRepeat,
                      std::uint64_t timestampNs, std::int64_t userData);
  // Stops waiting for the key-up of `keyCode`; it will pass.
  void release(std::uint16_t keyCode);
  // Returns every hold to its first state; pending key-ups stay pending.
  void reset() { holds_.reset(); }

  // The key codes whose key-up is still to be swallowed, ascending.
  [[nodiscard]] std::vector<std::uint16_t> swallowed() const;
  [[nodiscard]] const LayerHolds& holds() const { return holds_; }
  [[nodiscard]] std::int64_t ownTag() const { return ownTag_; }

 private:
  // A key-down a layer took, waiting for its key-up.
  struct Taken {
    std::uint16_t keyCode = 0;
    std::uint64_t at = 0;
  };

  GateDecision keyWentDown(std::uint16_t keyCode, std::uint64_t flags, bool isRepeat,
                           std::uint64_t t);
  GateDecision keyWentUp(std::uint16_t keyCode, std::uint64_t t);
  [[nodiscard]] bool assigns(std::size_t route, std::uint16_t keyCode) const;
  // The pending entries are numbered 0 ..< takenCount(): the fixed ones
  // first, then the grown ones, which exist only while the fixed ones are full.
  [[nodiscard]] std::size_t takenCount() const { return fixedCount_ + grown_.size(); }
  Taken& taken(std::size_t index);
  [[nodiscard]] const Taken& taken(std::size_t index) const;
  [[nodiscard]] std::optional<std::size_t> findTaken(std::uint16_t keyCode) const;
  void recordTaken(std::uint16_t keyCode, std::uint64_t t);
  void dropTaken(std::optional<std::size_t> index);

  LayerHolds holds_;
  std::vector<std::vector<std::uint16_t>> codes_;  // per route, ascending
  std::int64_t ownTag_;
  std::array<Taken, swallowReserve> fixed_{};
  std::size_t fixedCount_ = 0;
  std::vector<Taken> grown_;  // keeps its storage once grown
};

}  // namespace corvel
