// InteractState: decides when the board takes clicks (interactive mode) and
// when it goes back to letting them pass to what lies under it. Interactive
// mode ends after `idleTimeout` seconds without a click on the board, on
// Escape, or when the grip is clicked again; pinned from the menu it stays
// until unpinned. A plain value fed with the time (seconds on one monotonic
// clock); the caller calls `tick` at `nextDeadline`.
#pragma once

#include <optional>

namespace corvel {

class InteractState {
 public:
  // Starts not interactive and not pinned.
  explicit InteractState(double idleTimeout) : idleTimeout_(idleTimeout) {}

  [[nodiscard]] double idleTimeout() const { return idleTimeout_; }
  // The board takes clicks.
  [[nodiscard]] bool isActive() const { return isActive_; }
  // Interactive mode was switched on from the menu and has no idle time-out.
  [[nodiscard]] bool isPinned() const { return isPinned_; }
  // When interactive mode ends unless the board is clicked first.
  [[nodiscard]] std::optional<double> nextDeadline() const { return timeoutAt_; }

  // The grip toggles interactive mode; entering it starts the idle time-out.
  void gripClicked(double now);
  // A click on the board while interactive (and not pinned) restarts the idle time-out.
  void boardClicked(double now);
  // The menu item flips pinning; a pinned board is interactive with no time-out,
  // so the time of the toggle plays no part.
  void menuToggled(double now);
  // Escape ends interactive mode unless the board is pinned.
  void escapePressed();
  // Ends interactive mode, pinned or not.
  void leave();
  // Answers true when the idle time-out has just ended interactive mode.
  bool tick(double now);

 private:
  double idleTimeout_;
  bool isActive_ = false;
  bool isPinned_ = false;
  std::optional<double> timeoutAt_;
};

}  // namespace corvel
