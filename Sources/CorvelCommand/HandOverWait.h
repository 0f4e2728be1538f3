// HandOverWait: the bounded wait that follows handing one link to the app.
// The system opens the link on its own schedule and reports back on a thread
// of its choosing; the waiting thread keeps its event loop turning in short
// slices, so whatever the open request needs on that thread can still run,
// and gives up when the time is over. The platform supplies the three
// effects (open, turn the loop, read the clock), which keeps the rules here
// the same on every platform and testable with fakes.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "CorvelCommand/HandOver.h"
#include "CorvelCore/Automation/CommandLineInterface.h"

namespace corvel {

struct HandOverWait {
  // How long the tool waits for the system's report, in seconds.
  static constexpr double seconds = CommandLineInterface::handOverSeconds;
  // The longest single turn of the event loop while waiting, in seconds.
  static constexpr double sliceSeconds = 0.05;

  using Clock = std::chrono::steady_clock;
  // The system's report: `hadError` true when it could not give the link to
  // the app. Safe to call from any thread, more than once, and after the
  // wait has returned; only the first call before the deadline counts.
  using Report = std::function<void(bool hadError)>;
  // Starts opening `link` with the app at `app` and arranges for `Report`
  // to be called once the system knows how it went (possibly before
  // returning, when the request cannot even be made).
  using Open = std::function<void(const std::string& link, const std::string& app, Report)>;
  // Runs the waiting thread's event loop once, for at most the given seconds.
  using TurnEventLoop = std::function<void(double maxSeconds)>;
  using Now = std::function<Clock::time_point()>;

  // Opens the link and waits for the report: `delivered` or `failed` as soon
  // as it comes, `timedOut` when `limitSeconds` pass without one (returning
  // at most one slice late). `Lock` guards the state shared with the report;
  // it needs only `lock` and `unlock`.
  template <class Lock = std::mutex>
  [[nodiscard]] static HandOver run(const std::string& link, const std::string& app,
                                    const Open& open, const TurnEventLoop& turnEventLoop,
                                    const Now& now, double limitSeconds = seconds);

 private:
  // Lives as long as either the waiter or the report still holds it, so a
  // report that comes late writes into memory that still exists.
  template <class Lock>
  struct Shared {
    Lock lock;
    std::optional<HandOver> outcome;

    // Settles the outcome unless it is settled already; returns the outcome.
    HandOver settle(HandOver proposed) {
      std::lock_guard<Lock> guard(lock);
      if (!outcome) outcome = proposed;
      return *outcome;
    }
    std::optional<HandOver> read() {
      std::lock_guard<Lock> guard(lock);
      return outcome;
    }
  };
};

template <class Lock>
HandOver HandOverWait::run(const std::string& link, const std::string& app, const Open& open,
                           const TurnEventLoop& turnEventLoop, const Now& now,
                           double limitSeconds) {
  auto shared = std::make_shared<Shared<Lock>>();
  open(link, app, [shared](bool hadError) {
    (void)shared->settle(hadError ? HandOver::failed : HandOver::delivered);
  });

  const auto deadline = now() + std::chrono::duration_cast<Clock::duration>(
                                    std::chrono::duration<double>(limitSeconds));
  while (now() < deadline) {
    if (const std::optional<HandOver> outcome = shared->read()) return *outcome;
    turnEventLoop(sliceSeconds);
  }
  // Settling here makes any later report a no-op, while a report that came
  // during the last slice still counts.
  return shared->settle(HandOver::timedOut);
}

}  // namespace corvel
