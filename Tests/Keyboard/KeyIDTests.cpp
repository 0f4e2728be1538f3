#include "CorvelCore/Keyboard/KeyID.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "CorvelCore/Keyboard/KeySet.h"
#include "CorvelCore/Support/UnicodeText.h"

namespace corvel {
namespace {

TEST(KeyIDTest, NamesAndCodesAreDistinctAndNamesSafeToWrite) {
  std::set<std::string_view> identifiers;
  std::set<std::string_view> names;
  std::set<std::uint16_t> codes;
  for (const KeyInfo& info : allKeys()) {
    SCOPED_TRACE(std::string(info.identifier));
    EXPECT_TRUE(identifiers.insert(info.identifier).second);
    EXPECT_TRUE(names.insert(info.name).second);
    if (info.macCode) {
      EXPECT_TRUE(codes.insert(*info.macCode).second);
    }
    EXPECT_EQ(info.name, UnicodeText::lowercased(info.name));
    EXPECT_EQ(info.name.find(' '), std::string_view::npos);
    EXPECT_TRUE(info.name == "+" || info.name.find('+') == std::string_view::npos);
    // A lowered identifier naming another key would make one text mean two keys.
    const auto named = keyIDForSpecName(UnicodeText::lowercased(info.identifier));
    EXPECT_EQ(named.value_or(info.id), info.id);
  }
  for (std::string_view reserved : {"cmd", "shift", "opt", "alt", "ctrl", "fn", "plus", "?"}) {
    EXPECT_FALSE(names.contains(reserved)) << reserved;
  }
}

// A row of each group and the codes out of sequence, the published kVK_*
// values of HIToolbox's Events.h.
TEST(KeyIDTest, LookUpsByIdentifierNameAndCode) {
  struct Row {
    std::string_view identifier, name;
    std::uint16_t code;
    std::string_view group;
  };
  const Row rows[] = {
      {"keyA", "a", 0x00, "character"},
      {"section", "§", 0x0A, "character"},
      {"digit6", "6", 0x16, "character"},
      {"digit5", "5", 0x17, "character"},
      {"digit0", "0", 0x1D, "character"},
      {"return", "return", 0x24, "accent"},
      {"commandRight", "rightcommand", 0x36, "modifier"},
      {"commandLeft", "leftcommand", 0x37, "modifier"},
      {"capsLock", "capslock", 0x39, "inert"},
      {"function", "function", 0x3F, "modifier"},
      {"f17", "f17", 0x40, "function"},
      {"keypadPlus", "+", 0x45, "numpad"},
      {"keypadEnter", "enter", 0x4C, "numpad"},
      {"f5", "f5", 0x60, "function"},
      {"f3", "f3", 0x63, "function"},
      {"forwardDelete", "forwarddelete", 0x75, "navigation"},
      {"f1", "f1", 0x7A, "function"},
      {"arrowLeft", "left", 0x7B, "navigation"},
      {"arrowRight", "right", 0x7C, "navigation"},
      {"arrowDown", "down", 0x7D, "navigation"},
      {"arrowUp", "up", 0x7E, "navigation"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.identifier));
    const auto key = keyID(row.identifier);
    ASSERT_TRUE(key.has_value());
    EXPECT_EQ(keyInfo(*key).name, row.name);
    EXPECT_EQ(keyIDForSpecName(row.name), key);
    EXPECT_EQ(keyInfo(*key).macCode, row.code);
    EXPECT_EQ(keyIDForMacCode(row.code), key);
    EXPECT_EQ(rawValue(keyInfo(*key).group), row.group);
  }
  EXPECT_EQ(keyID("KeyA"), std::nullopt);
  EXPECT_EQ(keyIDForSpecName("Escape"), std::nullopt);
  for (int unused : {0x34, 0x42, 0x48, 0x6E, 0x7F, 0x80, 0xFFFF}) {
    EXPECT_EQ(keyIDForMacCode(static_cast<std::uint16_t>(unused)), std::nullopt) << unused;
  }
}

TEST(KeyIDTest, OutOfRangeValuesReadAsAnUnknownKey) {
  const auto stray = static_cast<KeyID>(keyCount + 3);
  EXPECT_EQ(keyInfo(stray).name, "?");
  EXPECT_EQ(keyInfo(stray).macCode, std::nullopt);
  KeySet set{KeyID::keyA, stray, KeyID::function};
  EXPECT_EQ(set.size(), 2U);
  set.erase(KeyID::function);
  EXPECT_EQ(set, KeySet{KeyID::keyA});
}

}  // namespace
}  // namespace corvel
