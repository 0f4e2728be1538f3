#include "CorvelCore/Keyboard/KeyboardGeometry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

const KeyboardGeometry* const models[] = {&KeyboardGeometry::macBookANSI(),
                                          &KeyboardGeometry::fullSizeISO()};

bool overlaps(const KeyFrame& a, const KeyFrame& b) {
  constexpr double slack = 1e-9;
  return a.x < b.maxX() - slack && b.x < a.maxX() - slack && a.y < b.maxY() - slack &&
         b.y < a.maxY() - slack;
}

std::vector<KeyFrame> framesOf(const Keycap& cap) {
  std::vector<KeyFrame> frames{cap.frame};
  if (cap.secondFrame) frames.push_back(*cap.secondFrame);
  return frames;
}

TEST(KeyboardGeometryTest, EveryCapIsFoundOnceAndNoCapsOverlap) {
  for (const KeyboardGeometry* model : models) {
    SCOPED_TRACE(std::string(model->name()));
    const auto caps = model->caps();
    for (std::size_t i = 0; i < caps.size(); ++i) {
      SCOPED_TRACE(std::string(keyInfo(caps[i].key).identifier));
      EXPECT_EQ(model->cap(caps[i].key), &caps[i]) << "listed twice";
      for (const KeyFrame& frame : framesOf(caps[i])) {
        EXPECT_GT(frame.width, 0);
        EXPECT_GT(frame.height, 0);
      }
      for (std::size_t j = i + 1; j < caps.size(); ++j) {
        for (const KeyFrame& a : framesOf(caps[i])) {
          for (const KeyFrame& b : framesOf(caps[j])) {
            EXPECT_FALSE(overlaps(a, b)) << keyInfo(caps[j].key).identifier;
          }
        }
      }
    }
  }
}

TEST(KeyboardGeometryTest, ModelsHoldTheirKeys) {
  const struct {
    const KeyboardGeometry* model;
    std::size_t capCount;
    double width;
    std::vector<KeyID> has;
    std::vector<KeyID> lacks;
  } cases[] = {
      {&KeyboardGeometry::macBookANSI(),
       77,
       14.5,
       {KeyID::function, KeyID::backquote, KeyID::backslash, KeyID::arrowUp, KeyID::f12},
       {KeyID::section, KeyID::controlRight, KeyID::keypad5, KeyID::f13, KeyID::home,
        static_cast<KeyID>(keyCount), static_cast<KeyID>(250)}},
      {&KeyboardGeometry::fullSizeISO(),
       109,
       22.5,
       {KeyID::section, KeyID::backquote, KeyID::controlRight, KeyID::keypadEnter, KeyID::f19,
        KeyID::forwardDelete, KeyID::function},
       {KeyID::f20, KeyID::help, KeyID::yen, KeyID::keypadComma}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.model->name()));
    EXPECT_EQ(c.model->caps().size(), c.capCount);
    EXPECT_EQ(c.model->bounds(), (KeyFrame{0, 0, c.width, 6}));
    for (KeyID key : c.has) EXPECT_NE(c.model->cap(key), nullptr) << keyInfo(key).identifier;
    for (KeyID key : c.lacks) EXPECT_EQ(c.model->cap(key), nullptr) << keyInfo(key).identifier;
  }
}

TEST(KeyboardGeometryTest, ISOReturnIsTwoRectangles) {
  const Keycap* enter = KeyboardGeometry::fullSizeISO().cap(KeyID::returnKey);
  ASSERT_NE(enter, nullptr);
  ASSERT_TRUE(enter->secondFrame.has_value());
  EXPECT_EQ(enter->shape(), (KeyFrame{13.5, 2, 1, 2}));
  const Keycap* ansiReturn = KeyboardGeometry::macBookANSI().cap(KeyID::returnKey);
  ASSERT_NE(ansiReturn, nullptr);
  EXPECT_EQ(ansiReturn->shape(), ansiReturn->frame);
}

}  // namespace
}  // namespace corvel
