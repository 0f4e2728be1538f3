#include "CorvelCore/TextLimits/TextLimits.h"

#include <gtest/gtest.h>

#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

std::string repeated(std::string_view piece, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) out += piece;
  return out;
}

const std::string kAcute = "\xCC\x81";                                       // U+0301
const std::string kFamily = "\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9";  // man ZWJ woman

TEST(TextLimitsTest, CutsToCharacters) {
  struct Case {
    const char* name;
    std::string text;
    std::int64_t limit;
    std::string expected;
  };
  const Case cases[] = {
      {"shorter than the limit", "abc", 10, "abc"},
      {"plain text", repeated("x", 70), TextLimits::layerName, repeated("x", 64)},
      {"negative limit", "abc", -3, ""},
      {"zero limit", "abc", 0, ""},
      {"emoji sequence counts once", kFamily + "ab", 2, kFamily + "a"},
      {"CR LF is one character", "a\r\nb", 2, "a\r\n"},
      {"accents stay with their letter", "e" + kAcute + "f", 1, "e" + kAcute},
      {"piled accents keep 16 scalars", "e" + repeated(kAcute, 20), 1, "e" + repeated(kAcute, 15)},
      {"piled accents, larger limit", "e" + repeated(kAcute, 20) + "g", 5,
       "e" + repeated(kAcute, 15) + "g"},
      {"exactly 16 scalars stay", "e" + repeated(kAcute, 15) + "z", 9,
       "e" + repeated(kAcute, 15) + "z"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(TextLimits::cut(c.text, c.limit), c.expected);
  }
}

TEST(TextLimitsTest, CountsCharacters) {
  EXPECT_EQ(TextLimits::characterCount(""), 0u);
  EXPECT_EQ(TextLimits::characterCount("abc"), 3u);
  EXPECT_EQ(TextLimits::characterCount(kFamily), 1u);
  EXPECT_EQ(TextLimits::characterCount("a\r\n"), 2u);
  EXPECT_EQ(TextLimits::characterCount("e" + repeated(kAcute, 40)), 1u);
}

TEST(TextLimitsTest, SurvivesBrokenUTF8) {
  const std::string hostile[] = {"\xFF\xFE",         "a\xC3",        "\xE2\x82",
                                 "\xF4\x90\x80\x80", "\xED\xA0\x80", repeated("\xCC", 50)};
  for (const auto& text : hostile) {
    SCOPED_TRACE(testing::PrintToString(text));
    const std::string cut = TextLimits::cut(text, 3);
    EXPECT_LE(cut.size(), text.size());
    EXPECT_LE(TextLimits::characterCount(cut), 3u);
  }
}

TEST(UTF8Test, DecodesStrictly) {
  struct Case {
    std::string text;
    std::size_t scalars;
    bool valid;
  };
  const Case cases[] = {
      {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", 4, true},
      {"\xC0\xAF", 2, false},          // overlong
      {"\xED\xA0\x80", 3, false},      // surrogate
      {"\xF4\x90\x80\x80", 4, false},  // above U+10FFFF
      {"\xE2\x82", 1, false},          // truncated
      {"\xEF\xBF\xBD", 1, true},       // U+FFFD itself
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.text));
    EXPECT_EQ(UTF8::scalarCount(c.text), c.scalars);
    EXPECT_EQ(UTF8::isValid(c.text), c.valid);
  }
}

}  // namespace
}  // namespace corvel
