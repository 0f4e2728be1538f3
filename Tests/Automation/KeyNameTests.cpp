#include "CorvelCore/Automation/KeyName.h"

#include <gtest/gtest.h>

#include <string>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Shortcuts/KeySpec.h"

namespace corvel {
namespace {

using namespace std::string_view_literals;

TEST(KeyNameTest, GivesOneNamePerKey) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"Esc", "escape"},
      {"ESCAPE", "escape"},
      {"%65sc", "escape"},
      {"%65%73%63", "escape"},
      {"Backspace", "delete"},
      {"A", "a"},
      {"keyA", "a"},
      {"PageUp", "pageup"},
      {"F5", "f5"},
      {"enter", "enter"},
      {"+", "plus"},
      {"%2B", "plus"},
      {"Plus", "plus"},
      {"§", "§"},
      {"%c2%a7", "§"},
      {"`", "`"},
      {"\u212A", "k"},
      // A character of another layout names the key that types it.
      {"\u00C9", "\u00E9"},
      {"e\u0301", "e\u0301"},
      {"%", "%"},
      {"\U0001F600", "\U0001F600"},
      // 39 scalars before decoding, 13 after: the limit counts the decoded name.
      {"%66%6F%72%77%61%72%64%64%65%6C%65%74%65", "forwarddelete"},
  };
  for (const auto& [text, name] : cases) {
    SCOPED_TRACE(std::string(text));
    EXPECT_EQ(KeyName::canonical(text), name);
  }
}

TEST(KeyNameTest, RefusesWhatNamesNoKey) {
  const std::string_view cases[] = {
      " ",    "",           "\t",      "\u00A0", "\u200B",      "\x01", "\u2028",
      "\xff", "\U000F0000", "%%",      "%zz",    "%6",          "%FF",  "%20",
      "%09",  "%00",        "cmd",     "fn",     "cmd+a",       "a b",  "esc esc",
      "ab",   "?",          "escape ", "%65sc%", "\xed\xa0\x80"};
  for (std::string_view text : cases) {
    SCOPED_TRACE(std::string(text));
    EXPECT_EQ(KeyName::canonical(text), std::nullopt);
  }
  EXPECT_EQ(KeyName::canonical("\x00"sv), std::nullopt);
  EXPECT_EQ(KeyName::canonical(std::string(33, 'a')), std::nullopt);
}

TEST(KeyNameTest, EveryKeyHasACanonicalNameThatNamesItBack) {
  for (const KeyInfo& info : allKeys()) {
    SCOPED_TRACE(std::string(info.identifier));
    const auto name = KeyName::canonical(info.name);
    ASSERT_TRUE(name.has_value());
    EXPECT_EQ(KeySpec::key(*name), info.id);
    EXPECT_EQ(KeyName::canonical(info.identifier), name);
    EXPECT_EQ(KeyName::canonical(*name), name);
  }
}

}  // namespace
}  // namespace corvel
