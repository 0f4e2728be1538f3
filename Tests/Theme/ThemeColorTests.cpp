#include "CorvelCore/Theme/ThemeColor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>

namespace corvel {
namespace {

TEST(ThemeColorTest, ParsesOnlyHashFollowedByThreeSixOrEightHexDigits) {
  struct Case {
    std::string text;
    std::optional<std::uint32_t> rgba;
  };
  const Case cases[] = {
      {"#abc", 0xAABBCCFF},       {"#ABC", 0xAABBCCFF},          {"#AABBCC80", 0xAABBCC80},
      {"#00ff7F", 0x00FF7FFF},    {"#000000", 0x000000FF},       {"#FFFFFF00", 0xFFFFFF00},
      {"#12345", std::nullopt},   {"abc", std::nullopt},         {"#GG0000", std::nullopt},
      {"", std::nullopt},         {"#", std::nullopt},           {"#1234", std::nullopt},
      {"#1234567", std::nullopt}, {"#123456789", std::nullopt},  {" #abc", std::nullopt},
      {"#abc ", std::nullopt},    {"#+bc", std::nullopt},        {"#0x1234", std::nullopt},
      {"##abcdef", std::nullopt}, {"#ab\xC3\xA9", std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const auto parsed = ThemeColor::parse(c.text);
    ASSERT_EQ(parsed.has_value(), c.rgba.has_value());
    if (parsed) {
      EXPECT_EQ(parsed->rgba(), *c.rgba);
    }
  }
}

TEST(ThemeColorTest, HexIsUpperCaseWithAlphaOnlyWhenNotFull) {
  struct Case {
    ThemeColor color;
    std::string hex;
  };
  const Case cases[] = {
      {{1, 0, 0, 1}, "#FF0000"},
      {{0.5, 0.5, 0.5, 1}, "#808080"},
      {ThemeColor::fromRGBA(0x0A0B0C80), "#0A0B0C80"},
      {{0, 0, 0, 0}, "#00000000"},
      {{1.5, -2, 0.2, 7}, "#FF0033"},
      {{0, 0, 0, 0.999}, "#000000"},
      {{0, 0, 0, 0.997}, "#000000FE"},
      {{std::nan(""), 1, 1, std::nan("")}, "#00FFFF00"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.hex);
    EXPECT_EQ(c.color.hex(), c.hex);
  }
}

TEST(ThemeColorTest, LuminanceContrastAndCompositing) {
  const auto white = ThemeColor::fromRGB(0xFFFFFF);
  const auto black = ThemeColor::fromRGB(0x000000);
  EXPECT_DOUBLE_EQ(white.relativeLuminance(), 1.0);
  EXPECT_DOUBLE_EQ(black.relativeLuminance(), 0.0);
  EXPECT_NEAR(ThemeColor::fromRGB(0x808080).relativeLuminance(), 0.2158605, 1e-6);
  EXPECT_DOUBLE_EQ(ThemeColor::contrast(black, white), 21.0);
  EXPECT_DOUBLE_EQ(ThemeColor::contrast(white, black), 21.0);
  EXPECT_DOUBLE_EQ(ThemeColor::contrast(white, white), 1.0);
  EXPECT_NEAR(ThemeColor::contrast(ThemeColor::fromRGB(0x777777), white), 4.478, 1e-3);

  const auto half = ThemeColor{1, 0, 0, 0.5}.composited(ThemeColor{0, 0, 1, 0.2});
  EXPECT_EQ(half, (ThemeColor{0.5, 0, 0.5, 1}));
  EXPECT_EQ((ThemeColor{2, 0.5, -1, 1}.composited(black)), (ThemeColor{1, 0.5, 0, 1}));
  EXPECT_EQ((ThemeColor{1, 1, 1, 0}.composited(black)), black);
}

}  // namespace
}  // namespace corvel
