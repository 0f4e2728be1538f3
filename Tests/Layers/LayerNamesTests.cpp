#include "CorvelCore/Layers/LayerNames.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

TEST(LayerNamesTest, BundleIDs) {
  struct Case {
    std::string text;
    bool valid;
  };
  const Case cases[] = {
      {"com.apple.Safari", true},
      {"com.example.my-app_2", true},
      {"org.\xC3\xA9t\xC3\xA9.app", true},  // Unicode letters
      {"com.cafe\xCC\x81", true},           // a letter with a combining accent
      {"x", true},
      {"", false},
      {".com.apple", false},
      {"com..apple", false},
      {"com.apple safari", false},
      {"com/apple", false},
      {"com.apple.\xE2\x9C\x93", false},  // a symbol
      {"com.\xCC\x81", false},            // a mark with no letter
      {"com.\xFF", false},
      {std::string(255, 'a'), true},
      {std::string(256, 'a'), false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(LayerNames::isBundleID(c.text), c.valid);
  }
}

TEST(LayerNamesTest, SymbolNames) {
  struct Case {
    std::string text;
    bool valid;
  };
  const Case cases[] = {
      {"star.fill", true},
      {"arrow.left.2", true},
      {"a", true},
      {"Star.Fill", false},
      {".star", false},
      {"star.", false},
      {"", false},
      {"star fill", false},
      {"star-fill", false},
      {std::string(100, 'a'), true},
      {std::string(101, 'a'), false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(LayerNames::isSymbolName(c.text), c.valid);
  }
}

}  // namespace
}  // namespace corvel
