#include "CorvelCore/Layers/LayerText.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

std::string scalars(std::initializer_list<char32_t> list) {
  std::string out;
  for (char32_t c : list) UTF8::append(out, c);
  return out;
}

TEST(LayerTextTest, CleansScalarByScalar) {
  struct Case {
    const char* name;
    std::string input;
    std::string expected;
    std::size_t removed;
  };
  const Case cases[] = {
      {"plain", "Hello\tworld\n", "Hello\tworld\n", 0},
      {"CR LF gives one feed", "a\r\nb\r\n", "a\nb\n", 0},
      {"lone CR and separators", scalars({'a', '\r', 'b', 0x85, 'c', 0x2028, 'd', 0x2029}),
       "a\nb\nc\nd\n", 0},
      {"CR CR LF", "a\r\r\nb", "a\n\nb", 0},
      {"controls go", scalars({'a', 0x00, 0x07, 0x1B, 0x7F, 0x9F, 'b'}), "ab", 5},
      {"format and bidi controls go",
       scalars({'a', 0x200B, 0x200E, 0x202E, 0x2066, 0xFEFF, 0x00AD, 'b'}), "ab", 6},
      {"joiner at the start", scalars({0x200D, 'a'}), "a", 1},
      {"joiner after a space", scalars({'a', ' ', 0x200D, 'b'}), "a b", 1},
      {"joiner after a letter", scalars({'a', 0x200D, 'b'}), scalars({'a', 0x200D, 'b'}), 0},
      {"joiner between emoji", scalars({0x1F468, 0x200D, 0x1F469}),
       scalars({0x1F468, 0x200D, 0x1F469}), 0},
      {"joiner after emoji before text", scalars({0x1F468, 0x200D, '!'}), scalars({0x1F468, '!'}),
       1},
      {"joiner between ASCII digits", scalars({'1', 0x200D, '2'}), "12", 1},
      {"joiner at the end after emoji", scalars({0x1F468, 0x200D}), scalars({0x1F468}), 1},
      // Malayalam chillu forms, Devanagari half forms and Persian need ZWJ and ZWNJ.
      {"joiner after a virama", scalars({0x0D28, 0x0D4D, 0x200D, 0x0D31}),
       scalars({0x0D28, 0x0D4D, 0x200D, 0x0D31}), 0},
      {"joiners after viramas",
       scalars({0x0915, 0x094D, 0x200D, 0x0937, ' ', 0x0915, 0x094D, 0x200C, 0x0937}),
       scalars({0x0915, 0x094D, 0x200D, 0x0937, ' ', 0x0915, 0x094D, 0x200C, 0x0937}), 0},
      {"non-joiner after a letter", scalars({0x0645, 0x200C, 0x0627}),
       scalars({0x0645, 0x200C, 0x0627}), 0},
      {"flag tags", scalars({0x1F3F4, 0xE0067, 0xE0062, 0xE0065, 0xE006E, 0xE0067, 0xE007F}),
       scalars({0x1F3F4, 0xE0067, 0xE0062, 0xE0065, 0xE006E, 0xE0067, 0xE007F}), 0},
      {"stray tags", scalars({'a', 0xE0067, 0x1F3F4, 0xE007F, 0xE0067}),
       scalars({'a', 0x1F3F4, 0xE007F}), 2},
      {"invalid UTF-8 reads as replacement",
       "a\xFF"
       "b",
       "a\xEF\xBF\xBD"
       "b",
       0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const auto cleaned = LayerText::clean(c.input);
    EXPECT_EQ(cleaned.text, c.expected);
    EXPECT_EQ(cleaned.removed, c.removed);
  }
}

// Every sequence of Unicode's own emoji test file survives cleaning untouched.
TEST(LayerTextTest, EveryEmojiTestSequenceSurvives) {
  const std::filesystem::path file = "/usr/share/unicode/emoji/emoji-test.txt";
  std::ifstream in(file);
  if (!in) GTEST_SKIP() << "emoji-test.txt is not installed (package unicode-data)";
  std::string line;
  int sequences = 0;
  while (std::getline(in, line)) {
    if (line.empty() || line.front() == '#') continue;
    const std::size_t semicolon = line.find(';');
    if (semicolon == std::string::npos) continue;
    std::string text;
    std::istringstream codes(line.substr(0, semicolon));
    std::string code;
    while (codes >> code) UTF8::append(text, static_cast<char32_t>(std::stoul(code, nullptr, 16)));
    const auto cleaned = LayerText::clean(text);
    EXPECT_EQ(cleaned.removed, 0u) << line;
    EXPECT_EQ(cleaned.text, text) << line;
    ++sequences;
  }
  EXPECT_GT(sequences, 4000);
}

}  // namespace
}  // namespace corvel
