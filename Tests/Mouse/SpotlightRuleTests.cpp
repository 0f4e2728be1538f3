#include "CorvelCore/Mouse/SpotlightRule.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

struct PressRelease {
  std::string name;
  bool startsOn;
  double pressAt;
  double releaseAt;
  bool pressAnswer;
  bool onWhileHeld;
  bool releaseAnswer;
  bool onAfter;
};

TEST(SpotlightRuleTest, TapsToggleAndHoldsShowOnlyWhileHeld) {
  const PressRelease cases[] = {
      {"tap from off stays on", false, 0, 0.2, true, true, false, true},
      {"tap from on turns off", true, 0, 0.2, false, true, true, false},
      {"hold from off shows only while held", false, 0, 1.0, true, true, true, false},
      {"hold from on changes nothing", true, 0, 1.0, false, true, false, true},
      {"exactly tapMax is a tap", false, 0, 0.3, true, true, false, true},
      {"just over tapMax is a hold", false, 0, 0.30001, true, true, true, false},
      {"release before press reads as a tap", true, 5, 4, false, true, true, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    SpotlightRule rule(c.startsOn);
    EXPECT_EQ(rule.pressed(c.pressAt), c.pressAnswer);
    EXPECT_EQ(rule.isOn(), c.onWhileHeld);
    EXPECT_EQ(rule.released(c.releaseAt), c.releaseAnswer);
    EXPECT_EQ(rule.isOn(), c.onAfter);
    EXPECT_FALSE(rule.press().has_value());
  }
}

TEST(SpotlightRuleTest, SecondPressIsIgnoredAndTimedFromTheFirst) {
  SpotlightRule rule;
  EXPECT_TRUE(rule.pressed(0));
  EXPECT_FALSE(rule.pressed(0.9));
  // Timed from 0, so 1.0 is a hold even though the second press was recent.
  EXPECT_TRUE(rule.released(1.0));
  EXPECT_FALSE(rule.isOn());
}

TEST(SpotlightRuleTest, ReleaseWithoutPressAndForgottenPressDoNothing) {
  SpotlightRule rule(true);
  EXPECT_FALSE(rule.released(1));
  EXPECT_TRUE(rule.isOn());

  SpotlightRule forgetting;
  EXPECT_TRUE(forgetting.pressed(0));
  forgetting.forgetPress();
  EXPECT_TRUE(forgetting.isOn());
  EXPECT_FALSE(forgetting.released(2));
  EXPECT_TRUE(forgetting.isOn());
}

TEST(SpotlightRuleTest, MenuToggleDuringAPressKeepsThePress) {
  SpotlightRule rule;
  EXPECT_TRUE(rule.pressed(0));
  rule.menuToggled();
  EXPECT_FALSE(rule.isOn());
  ASSERT_TRUE(rule.press().has_value());
  // A hold restores the state from before the press (off), which it already is.
  EXPECT_FALSE(rule.released(2));
  EXPECT_FALSE(rule.isOn());
}

}  // namespace
}  // namespace corvel
