#include "CorvelCore/Layers/LayerHolds.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace corvel {
namespace {

constexpr std::uint16_t rightCommand = LayerTrigger::commandRightBit;
constexpr std::uint16_t rightShift = LayerTrigger::shiftRightBit;
constexpr std::uint64_t ms = 1'000'000;

UUID layerID(std::uint8_t n) { return UUID({n, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}); }

LayerArming arming(std::uint8_t n, const std::vector<TriggerPart>& parts, double delay) {
  return {layerID(n), LayerTrigger(parts), delay};
}

TEST(LayerHoldsTest, DelayInNanoseconds) {
  constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
  const struct {
    double seconds;
    std::uint64_t expected;
  } cases[] = {
      {0.2, 200'000'000},
      {0, 0},
      {-1, 0},
      {4e-10, 0},
      {6e-10, 1},
      {std::nan(""), 0},
      {std::numeric_limits<double>::infinity(), 0},
      {-std::numeric_limits<double>::infinity(), 0},
      {1.8e10, 18'000'000'000'000'000'000u},
      {1.8446744073709552e10, largest},
      {1e300, largest},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.seconds);
    EXPECT_EQ(LayerHolds::delayNs(c.seconds), c.expected);
  }
}

TEST(LayerHoldsTest, KeyPressAnswers) {
  using State = LayerHolds::PressState;
  const std::vector<LayerArming> armings{arming(
      1, {{TriggerModifier::command, Side::right}, {TriggerModifier::shift, Side::right}}, 0.2)};
  LayerHolds holds(armings);
  EXPECT_EQ(holds.keyPressed(0), (LayerHolds::Press{std::nullopt, State::noActiveHold}));

  holds.heldChanged(rightCommand | rightShift, 100 * ms);
  EXPECT_EQ(holds.active(), 0u);
  EXPECT_EQ(holds.keyPressed(299 * ms), (LayerHolds::Press{0, State::notArmed}));
  EXPECT_TRUE(holds.holds()[0].dirty);
  // Once dirty, time alone does not help.
  EXPECT_EQ(holds.keyPressed(900 * ms), (LayerHolds::Press{0, State::notArmed}));

  // The same mask again changes nothing; a change and back starts afresh.
  holds.heldChanged(rightCommand | rightShift, 950 * ms);
  EXPECT_TRUE(holds.holds()[0].dirty);
  holds.heldChanged(rightCommand, 960 * ms);
  EXPECT_FALSE(holds.holds()[0].matched);
  EXPECT_EQ(holds.active(), std::nullopt);
  holds.heldChanged(rightCommand | rightShift, 1000 * ms);
  EXPECT_EQ(holds.holds()[0].since, 1000 * ms);
  EXPECT_FALSE(holds.holds()[0].dirty);
  EXPECT_EQ(holds.keyPressed(1200 * ms), (LayerHolds::Press{0, State::armed}));
  // Armed presses leave the hold clean.
  EXPECT_EQ(holds.keyPressed(1300 * ms), (LayerHolds::Press{0, State::armed}));
}

TEST(LayerHoldsTest, CleanHoldKeepsItsTimeWhileStillMatching) {
  const std::vector<LayerArming> armings{arming(1, {{TriggerModifier::command}}, 0.2)};
  LayerHolds holds(armings);
  holds.heldChanged(LayerTrigger::commandLeftBit, 0);
  holds.heldChanged(LayerTrigger::commandLeftBit | rightCommand, 150 * ms);
  EXPECT_EQ(holds.holds()[0].since, 0u);
  EXPECT_EQ(holds.keyPressed(200 * ms).state, LayerHolds::PressState::armed);
}

TEST(LayerHoldsTest, UpdateKeepsUnchangedHoldsAndResetClearsAll) {
  std::vector<LayerArming> armings{
      arming(1, {{TriggerModifier::command, Side::right}}, 0.2),
      arming(2, {{TriggerModifier::command}}, 0.5),
  };
  LayerHolds holds(armings);
  holds.heldChanged(rightCommand, 10 * ms);
  EXPECT_EQ(holds.active(), 0u);
  holds.keyPressed(20 * ms);

  // Layer 1 gets a new delay (kept), layer 2 a new chord (fresh), and a
  // layer 3 comes first (fresh, so not matched though its chord is held).
  armings[0].holdDelay = 1.0;
  armings[1].trigger = LayerTrigger({{TriggerModifier::command, Side::right}});
  armings.insert(armings.begin(), arming(3, {{TriggerModifier::command, Side::right}}, 0));
  holds.update(armings);
  ASSERT_EQ(holds.holds().size(), 3u);
  EXPECT_FALSE(holds.holds()[0].matched);
  EXPECT_EQ(holds.holds()[1].id, layerID(1));
  EXPECT_TRUE(holds.holds()[1].matched);
  EXPECT_TRUE(holds.holds()[1].dirty);
  EXPECT_EQ(holds.holds()[1].since, 10 * ms);
  EXPECT_EQ(holds.holds()[1].delayNs, 1000 * ms);
  EXPECT_FALSE(holds.holds()[2].matched);
  EXPECT_EQ(holds.active(), 1u);
  EXPECT_EQ(holds.held(), rightCommand);

  holds.reset();
  EXPECT_EQ(holds.held(), 0);
  EXPECT_EQ(holds.active(), std::nullopt);
  for (const auto& hold : holds.holds()) {
    EXPECT_FALSE(hold.matched);
    EXPECT_FALSE(hold.dirty);
    EXPECT_EQ(hold.since, 0u);
  }
}

TEST(LayerHoldsTest, MasksBeyondTheKeyboardBitsNeverMatch) {
  const std::vector<LayerArming> armings{arming(1, {{TriggerModifier::command}}, 0)};
  LayerHolds holds(armings);
  holds.heldChanged(0x8040, 0);
  EXPECT_EQ(holds.active(), std::nullopt);
}

}  // namespace
}  // namespace corvel
