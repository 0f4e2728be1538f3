#include "CorvelCore/Overlay/InteractState.h"

#include <gtest/gtest.h>

#include <optional>

namespace corvel {
namespace {

constexpr double idle = 4;

TEST(InteractStateTest, GripClickRunsUntilIdleAndBoardClicksExtend) {
  InteractState state(idle);
  state.gripClicked(10);
  EXPECT_TRUE(state.isActive());
  EXPECT_EQ(state.nextDeadline(), 14.0);
  state.boardClicked(11);
  EXPECT_EQ(state.nextDeadline(), 15.0);
  EXPECT_FALSE(state.tick(14.9));
  EXPECT_TRUE(state.isActive());
  EXPECT_TRUE(state.tick(15));
  EXPECT_FALSE(state.isActive());
  EXPECT_EQ(state.nextDeadline(), std::nullopt);
  EXPECT_FALSE(state.tick(16));
}

TEST(InteractStateTest, WaysOut) {
  const struct {
    const char* name;
    void (*act)(InteractState&);
  } cases[] = {
      {"escape", [](InteractState& s) { s.escapePressed(); }},
      {"grip again", [](InteractState& s) { s.gripClicked(2); }},
      {"leave", [](InteractState& s) { s.leave(); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    InteractState state(idle);
    state.gripClicked(0);
    c.act(state);
    EXPECT_FALSE(state.isActive());
    EXPECT_EQ(state.nextDeadline(), std::nullopt);
  }
}

TEST(InteractStateTest, PinnedBoardIgnoresEscapeAndTime) {
  InteractState state(idle);
  state.gripClicked(0);
  state.menuToggled(1);
  EXPECT_TRUE(state.isActive());
  EXPECT_TRUE(state.isPinned());
  EXPECT_EQ(state.nextDeadline(), std::nullopt);
  state.escapePressed();
  state.boardClicked(2);
  EXPECT_FALSE(state.tick(100));
  EXPECT_TRUE(state.isActive());
  EXPECT_EQ(state.nextDeadline(), std::nullopt);

  state.menuToggled(101);
  EXPECT_FALSE(state.isActive());
  EXPECT_FALSE(state.isPinned());
}

TEST(InteractStateTest, BoardClickWhileNotInteractiveDoesNothing) {
  InteractState state(idle);
  state.boardClicked(3);
  EXPECT_FALSE(state.isActive());
  EXPECT_EQ(state.nextDeadline(), std::nullopt);
}

TEST(InteractStateTest, GripClickOnPinnedBoardUnpins) {
  InteractState state(idle);
  state.menuToggled(0);
  state.gripClicked(1);
  EXPECT_FALSE(state.isActive());
  EXPECT_FALSE(state.isPinned());
}

}  // namespace
}  // namespace corvel
