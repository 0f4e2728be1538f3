#include "CorvelCommand/HandOverWait.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <thread>
#include <vector>

namespace corvel {
namespace {

using namespace std::chrono_literals;

// A system whose clock moves only while the event loop turns, and which
// reports (or not) at a chosen moment.
struct FakeSystem {
  static constexpr int duringOpen = -1;

  std::optional<int> reportAtTurn;  // duringOpen, or the turn (from 1) that reports
  bool hadError = false;
  double secondsPerTurn = HandOverWait::sliceSeconds;

  HandOverWait::Clock::time_point now{};
  std::vector<double> turns;
  HandOverWait::Report report;
  std::string openedLink;
  std::string openedApp;

  HandOver run() {
    return HandOverWait::run(
        "quillon://hide", "/Applications/Quillon.app",
        [this](const std::string& link, const std::string& app, HandOverWait::Report given) {
          openedLink = link;
          openedApp = app;
          report = std::move(given);
          if (reportAtTurn == duringOpen) report(hadError);
        },
        [this](double maxSeconds) {
          turns.push_back(maxSeconds);
          now += std::chrono::duration_cast<HandOverWait::Clock::duration>(
              std::chrono::duration<double>(secondsPerTurn));
          if (reportAtTurn == static_cast<int>(turns.size())) report(hadError);
        },
        [this] { return now; });
  }
};

TEST(HandOverWaitTest, EndsAtTheReportOrAtTheDeadline) {
  struct Case {
    const char* name;
    std::optional<int> reportAtTurn;
    bool hadError;
    double secondsPerTurn;
    HandOver expected;
    std::size_t turns;
  };
  const Case cases[] = {
      {"report without error at once", FakeSystem::duringOpen, false, 0.05, HandOver::delivered, 0},
      {"report with error at once", FakeSystem::duringOpen, true, 0.05, HandOver::failed, 0},
      {"report without error while waiting", 3, false, 0.05, HandOver::delivered, 3},
      {"report with error while waiting", 1, true, 0.05, HandOver::failed, 1},
      {"report during the last slice", 100, false, 0.05, HandOver::delivered, 100},
      {"no report", std::nullopt, false, 0.05, HandOver::timedOut, 100},
      {"no report, loop returning early", std::nullopt, false, 0.003, HandOver::timedOut, 1667},
      {"report after the deadline", 101, false, 0.05, HandOver::timedOut, 100},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    FakeSystem system;
    system.reportAtTurn = c.reportAtTurn;
    system.hadError = c.hadError;
    system.secondsPerTurn = c.secondsPerTurn;
    EXPECT_EQ(system.run(), c.expected);
    EXPECT_EQ(system.turns.size(), c.turns);
    EXPECT_EQ(system.openedLink, "quillon://hide");
    EXPECT_EQ(system.openedApp, "/Applications/Quillon.app");
    for (const double turn : system.turns) EXPECT_EQ(turn, HandOverWait::sliceSeconds);
  }
}

TEST(HandOverWaitTest, TakesTheReportFromAnotherThread) {
  std::thread reporter;
  std::atomic<int> turns = 0;
  const HandOver outcome = HandOverWait::run(
      "quillon://show", "/Applications/Quillon.app",
      [&reporter](const std::string&, const std::string&, HandOverWait::Report report) {
        reporter = std::thread([report] {
          std::this_thread::sleep_for(20ms);
          report(false);
        });
      },
      [&turns](double maxSeconds) {
        ++turns;
        std::this_thread::sleep_for(std::chrono::duration<double>(maxSeconds / 10));
      },
      [] { return HandOverWait::Clock::now(); });
  reporter.join();
  EXPECT_EQ(outcome, HandOver::delivered);
  EXPECT_GT(turns.load(), 0);
}

}  // namespace
}  // namespace corvel
