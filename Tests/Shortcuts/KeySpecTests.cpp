#include "CorvelCore/Shortcuts/KeySpec.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

using namespace std::string_view_literals;

TEST(KeySpecTest, ReadsAndWritesOneCanonicalText) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"cmd+shift+k", "shift+cmd+k"},
      {"Cmd+Shift+K", "shift+cmd+k"},
      {"Alt+Cmd+K", "opt+cmd+k"},
      {"cmd+opt+k", "opt+cmd+k"},
      {"fn+cmd+shift+opt+ctrl+left", "ctrl+opt+shift+cmd+fn+left"},
      {"cmd+cmd+k", "cmd+k"},
      {"ctrl+k ctrl+s", "ctrl+k ctrl+s"},
      {"CMD+PLUS", "cmd+plus"},
      {"plus", "plus"},
      {"cmd+keyA", "cmd+a"},
      {"ctrl+ArrowLeft", "ctrl+left"},
      {"cmd+minus", "cmd+-"},
      {"shift+/", "shift+/"},
      {"cmd+`", "cmd+`"},
      {"cmd+§", "cmd+§"},
      {"F5", "f5"},
      {"PageDown", "pagedown"},
      {"\u212A", "k"},  // the Kelvin sign lowers to k
  };
  for (const auto& [text, written] : cases) {
    SCOPED_TRACE(std::string(text));
    const auto steps = KeySpec::parse(text);
    ASSERT_TRUE(steps.has_value());
    EXPECT_EQ(KeySpec::format(*steps), written);
  }
  EXPECT_EQ(KeySpec::parse("cmd+plus"),
            (std::vector<KeyCombo>{{{KeyModifier::command}, KeyID::keypadPlus}}));
  EXPECT_EQ(KeySpec::parse("ctrl+k shift+2"),
            (std::vector<KeyCombo>{{{KeyModifier::control}, KeyID::keyK},
                                   {{KeyModifier::shift}, KeyID::digit2}}));
}

TEST(KeySpecTest, RefusesWhatIsNoShortcut) {
  const std::string_view cases[] = {
      " ",      "",       "+",      "+k",       "fn",        "backspace",
      "esc",    "cmd+",   "a  b",   "cmd++",    "k+cmd",     "cmd\u00A0+k",
      "a b c",  "cmd+é",  "cmd+?",  "cmd+ k",   " cmd+k",    "cmd+command+k",
      "cmd+k ", "keya+b", "lcmd+k", "cmd+\xff", "cmd+shift", "ctrl+k\tctrl+s"};
  for (std::string_view text : cases) {
    SCOPED_TRACE(std::string(text));
    EXPECT_EQ(KeySpec::parse(text), std::nullopt);
  }
  EXPECT_EQ(KeySpec::parse("cmd+a\0"sv), std::nullopt);
}

TEST(KeySpecTest, EveryKeyAndModifierSetRoundTrips) {
  const KeyModifiers sets[] = {{},
                               {KeyModifier::fn},
                               {KeyModifier::command, KeyModifier::shift},
                               {KeyModifier::control, KeyModifier::option, KeyModifier::shift,
                                KeyModifier::command, KeyModifier::fn}};
  for (const KeyInfo& info : allKeys()) {
    for (const KeyModifiers& modifiers : sets) {
      const std::vector<KeyCombo> steps{{modifiers, info.id}, {{}, info.id}};
      SCOPED_TRACE(KeySpec::format(steps));
      EXPECT_EQ(KeySpec::parse(KeySpec::format(steps)), steps);
    }
  }
}

}  // namespace
}  // namespace corvel
