#include "CorvelCore/FnTripleTap/FnTripleTap.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

constexpr std::uint64_t fnFlag = 0x800000;
constexpr std::uint64_t shiftFlags = 0x20000 | 0x2;  // left shift

// One event fed at a time, with the answer it must give.
struct Fed {
  KeyEvent event;
  double now;
  bool fires = false;
};

Fed fnDown(double now, bool fires = false) {
  return {KeyEvent::flagsChanged(KeyID::function, fnFlag), now, fires};
}
Fed fnUp(double now) { return {KeyEvent::flagsChanged(KeyID::function, 0), now}; }

TEST(FnTripleTapTest, Scenarios) {
  const struct {
    std::string name;
    std::vector<Fed> events;
  } cases[] = {
      {"three taps inside the window",
       {fnDown(0), fnUp(0.05), fnDown(0.2), fnUp(0.25), fnDown(0.4, true), fnUp(0.45)}},
      {"the third tap exactly at the window's end", {fnDown(0), fnDown(0.3), fnDown(0.5, true)}},
      {"a fourth tap starts a new run",
       {fnDown(0), fnDown(0.1), fnDown(0.2, true), fnDown(0.3), fnDown(0.4), fnDown(0.45, true)}},
      {"the window counts from the first tap, not between taps",
       {fnDown(0), fnDown(0.3), fnDown(0.6), fnDown(0.8), fnDown(0.9, true)}},
      {"taps spread wider than the window never fire",
       {fnDown(0), fnDown(0.6), fnDown(1.2), fnDown(1.8)}},
      {"a key pressed between taps starts over",
       {fnDown(0),
        fnDown(0.1),
        {KeyEvent::keyDown(KeyID::keyA), 0.15},
        fnDown(0.2),
        fnDown(0.3),
        fnDown(0.35, true)}},
      {"fn with shift starts over",
       {fnDown(0),
        fnDown(0.1),
        {KeyEvent::flagsChanged(KeyID::function, fnFlag | shiftFlags), 0.2},
        fnDown(0.3),
        fnDown(0.35),
        fnDown(0.4, true)}},
      {"fn with only the right command side bit starts over",
       {fnDown(0), fnDown(0.1), {KeyEvent::flagsChanged(KeyID::function, fnFlag | 0x10), 0.2}}},
      {"another modifier going down starts over",
       {fnDown(0),
        fnDown(0.1),
        {KeyEvent::flagsChanged(KeyID::shiftLeft, shiftFlags), 0.15},
        fnDown(0.2)}},
      {"a media key press starts over; its release does not",
       {fnDown(0),
        {KeyEvent::media(true), 0.05},
        fnDown(0.1),
        fnDown(0.2),
        {KeyEvent::media(false), 0.25},
        fnDown(0.3, true)}},
      {"key-ups and fn's own key-down change nothing",
       {fnDown(0),
        {KeyEvent::keyUp(KeyID::keyA), 0.05},
        {KeyEvent::keyDown(KeyID::function), 0.1},
        fnDown(0.2),
        fnDown(0.3, true)}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FnTripleTap tap(0.5);
    for (std::size_t i = 0; i < c.events.size(); ++i) {
      SCOPED_TRACE("event " + std::to_string(i));
      EXPECT_EQ(tap.feed(c.events[i].event, c.events[i].now), c.events[i].fires);
    }
  }
}

TEST(FnTripleTapTest, CountsAndFirstPress) {
  FnTripleTap tap(0.5);
  tap.feed(fnDown(1).event, 1);
  tap.feed(fnDown(1.2).event, 1.2);
  EXPECT_EQ(tap.presses(), 2);
  EXPECT_EQ(tap.firstPress(), 1.0);
  tap.feed(fnDown(1.3).event, 1.3);
  EXPECT_EQ(tap.presses(), 0);
}

}  // namespace
}  // namespace corvel
