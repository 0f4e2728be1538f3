#include "CorvelCore/Overlay/HoverFader.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace corvel {
namespace {

// One thing that happens to the fader, and what it must answer.
struct Step {
  enum Kind { inside, outside, tick } kind;
  double now;
  std::optional<double> answer;
};

void play(HoverFader& fader, const std::vector<Step>& steps) {
  for (std::size_t i = 0; i < steps.size(); ++i) {
    SCOPED_TRACE("step " + std::to_string(i));
    const Step& step = steps[i];
    const std::optional<double> answer = step.kind == Step::tick
                                             ? fader.tick(step.now)
                                             : fader.pointer(step.kind == Step::inside, step.now);
    EXPECT_EQ(answer, step.answer);
  }
}

TEST(HoverFaderTest, Scenarios) {
  const struct {
    std::string name;
    std::vector<Step> steps;
  } cases[] = {
      {"passing through before the delay never fades",
       {{Step::inside, 0, {}},
        {Step::inside, 0.5, {}},
        {Step::outside, 0.9, {}},
        {Step::tick, 2, {}}}},
      {"resting fades once, leaving restores",
       {{Step::inside, 0, {}},
        {Step::tick, 0.99, {}},
        {Step::tick, 1, 0.3},
        {Step::tick, 5, {}},
        {Step::inside, 6, {}},
        {Step::outside, 7, 1.0},
        {Step::outside, 8, {}}}},
      {"a move inside after the delay fades without a tick",
       {{Step::inside, 0, {}}, {Step::inside, 1.5, 0.3}, {Step::inside, 2, {}}}},
      {"moving inside does not restart the delay",
       {{Step::inside, 0, {}}, {Step::inside, 0.9, {}}, {Step::tick, 1, 0.3}}},
      {"coming back restarts the delay",
       {{Step::inside, 0, {}},
        {Step::outside, 0.5, {}},
        {Step::inside, 0.8, {}},
        {Step::tick, 1.5, {}},
        {Step::tick, 1.8, 0.3}}},
      {"leaving from outside does nothing", {{Step::outside, 0, {}}, {Step::tick, 9, {}}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    HoverFader fader(1.0, 0.3);
    play(fader, c.steps);
  }
}

TEST(HoverFaderTest, DeadlineFollowsThePendingFade) {
  HoverFader fader(1.0, 0.3);
  EXPECT_EQ(fader.nextDeadline(), std::nullopt);
  fader.pointer(true, 2);
  EXPECT_EQ(fader.nextDeadline(), 3.0);
  fader.tick(3);
  EXPECT_EQ(fader.nextDeadline(), std::nullopt);
  EXPECT_EQ(fader.alpha(), 0.3);
}

TEST(HoverFaderTest, FadedAlphaOfOneNeverReports) {
  HoverFader fader(0, HoverFader::normalAlpha);
  EXPECT_EQ(fader.pointer(true, 0), std::nullopt);
  EXPECT_EQ(fader.pointer(false, 1), std::nullopt);
}

}  // namespace
}  // namespace corvel
