#include "CorvelCore/Keyboard/KeyID.h"

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <string>

#include "CorvelCore/Keyboard/KeySet.h"

namespace corvel {
namespace {

std::string lowered(std::string_view text) {
  std::string result(text);
  for (char& byte : result)
    byte = static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
  return result;
}

TEST(KeyIDTests, namesAreDistinctAndSafeToWrite) {
  std::set<std::string_view> identifiers;
  std::set<std::string_view> names;
  for (const KeyInfo& info : allKeys()) {
    SCOPED_TRACE(std::string(info.identifier));
    EXPECT_TRUE(identifiers.insert(info.identifier).second);
    EXPECT_TRUE(names.insert(info.name).second);
    EXPECT_EQ(info.name, lowered(info.name));
    EXPECT_EQ(info.name.find(' '), std::string_view::npos);
    if (info.id != KeyID::keypadPlus) {
      EXPECT_EQ(info.name.find('+'), std::string_view::npos);
    }
    EXPECT_EQ(keyInfo(info.id).id, info.id);
  }
  // A lowered identifier that is another key's name would make one text mean two keys.
  for (const KeyInfo& info : allKeys()) {
    const auto other = keyIDForSpecName(lowered(info.identifier));
    if (other) {
      EXPECT_EQ(*other, info.id) << info.identifier;
    }
  }
  for (std::string_view reserved : {"cmd", "shift", "opt", "alt", "ctrl", "fn", "plus", "?"}) {
    EXPECT_FALSE(names.contains(reserved)) << reserved;
  }
}

TEST(KeyIDTests, fixedNamesNameTheirKeys) {
  const std::pair<std::string_view, KeyID> cases[] = {
      {"left", KeyID::arrowLeft},   {"right", KeyID::arrowRight},
      {"up", KeyID::arrowUp},       {"down", KeyID::arrowDown},
      {"home", KeyID::home},        {"end", KeyID::end},
      {"pageup", KeyID::pageUp},    {"pagedown", KeyID::pageDown},
      {"return", KeyID::returnKey}, {"enter", KeyID::keypadEnter},
      {"tab", KeyID::tab},          {"space", KeyID::space},
      {"delete", KeyID::deleteKey}, {"forwarddelete", KeyID::forwardDelete},
      {"escape", KeyID::escape},    {"a", KeyID::keyA},
      {"0", KeyID::digit0},         {"f5", KeyID::f5},
      {"§", KeyID::section},        {"+", KeyID::keypadPlus},
  };
  for (const auto& [name, key] : cases) {
    SCOPED_TRACE(std::string(name));
    EXPECT_EQ(keyIDForSpecName(name), key);
  }
  EXPECT_EQ(keyIDForSpecName("Escape"), std::nullopt);
  EXPECT_EQ(keyID("keyA"), KeyID::keyA);
  EXPECT_EQ(keyID("arrowLeft"), KeyID::arrowLeft);
  EXPECT_EQ(keyID("KeyA"), std::nullopt);
  EXPECT_EQ(keyID(""), std::nullopt);
}

// Published kVK_* values of HIToolbox's Events.h.
TEST(KeyIDTests, macCodesMatchThePublishedValues) {
  const std::pair<KeyID, std::uint16_t> cases[] = {
      {KeyID::keyA, 0x00},
      {KeyID::keyS, 0x01},
      {KeyID::keyZ, 0x06},
      {KeyID::section, 0x0A},
      {KeyID::keyB, 0x0B},
      {KeyID::keyQ, 0x0C},
      {KeyID::keyY, 0x10},
      {KeyID::digit1, 0x12},
      {KeyID::digit6, 0x16},
      {KeyID::digit5, 0x17},
      {KeyID::equal, 0x18},
      {KeyID::digit0, 0x1D},
      {KeyID::bracketRight, 0x1E},
      {KeyID::keyI, 0x22},
      {KeyID::returnKey, 0x24},
      {KeyID::quote, 0x27},
      {KeyID::backslash, 0x2A},
      {KeyID::keyM, 0x2E},
      {KeyID::tab, 0x30},
      {KeyID::space, 0x31},
      {KeyID::backquote, 0x32},
      {KeyID::deleteKey, 0x33},
      {KeyID::escape, 0x35},
      {KeyID::commandRight, 0x36},
      {KeyID::commandLeft, 0x37},
      {KeyID::shiftLeft, 0x38},
      {KeyID::capsLock, 0x39},
      {KeyID::optionLeft, 0x3A},
      {KeyID::controlLeft, 0x3B},
      {KeyID::shiftRight, 0x3C},
      {KeyID::optionRight, 0x3D},
      {KeyID::controlRight, 0x3E},
      {KeyID::function, 0x3F},
      {KeyID::f17, 0x40},
      {KeyID::keypadDecimal, 0x41},
      {KeyID::keypadMultiply, 0x43},
      {KeyID::keypadPlus, 0x45},
      {KeyID::keypadClear, 0x47},
      {KeyID::keypadEnter, 0x4C},
      {KeyID::keypadEquals, 0x51},
      {KeyID::keypad0, 0x52},
      {KeyID::keypad7, 0x59},
      {KeyID::f20, 0x5A},
      {KeyID::keypad8, 0x5B},
      {KeyID::yen, 0x5D},
      {KeyID::f5, 0x60},
      {KeyID::f3, 0x63},
      {KeyID::kana, 0x68},
      {KeyID::f10, 0x6D},
      {KeyID::f12, 0x6F},
      {KeyID::help, 0x72},
      {KeyID::home, 0x73},
      {KeyID::forwardDelete, 0x75},
      {KeyID::f2, 0x78},
      {KeyID::f1, 0x7A},
      {KeyID::arrowLeft, 0x7B},
      {KeyID::arrowDown, 0x7D},
      {KeyID::arrowUp, 0x7E},
  };
  for (const auto& [key, code] : cases) {
    SCOPED_TRACE(std::string(keyInfo(key).identifier));
    EXPECT_EQ(keyInfo(key).macCode, code);
    EXPECT_EQ(keyIDForMacCode(code), key);
  }
  for (int unused : {0x34, 0x42, 0x48, 0x6E, 0x7F, 0x80, 0xFFFF}) {
    EXPECT_EQ(keyIDForMacCode(static_cast<std::uint16_t>(unused)), std::nullopt) << unused;
  }
}

TEST(KeyIDTests, groupsFollowTheKeysRoles) {
  const std::pair<KeyID, std::string_view> cases[] = {
      {KeyID::keyQ, "character"},
      {KeyID::section, "character"},
      {KeyID::space, "character"},
      {KeyID::escape, "accent"},
      {KeyID::deleteKey, "accent"},
      {KeyID::capsLock, "inert"},
      {KeyID::f13, "function"},
      {KeyID::help, "navigation"},
      {KeyID::forwardDelete, "navigation"},
      {KeyID::keypadEnter, "numpad"},
      {KeyID::function, "modifier"},
      {KeyID::commandRight, "modifier"},
  };
  for (const auto& [key, group] : cases) {
    EXPECT_EQ(rawValue(keyInfo(key).group), group) << keyInfo(key).identifier;
  }
}

TEST(KeyIDTests, outOfRangeValuesReadAsAnUnknownKey) {
  const auto stray = static_cast<KeyID>(keyCount + 3);
  EXPECT_EQ(keyInfo(stray).name, "?");
  EXPECT_EQ(keyInfo(stray).macCode, std::nullopt);
  KeySet set{KeyID::keyA, stray, KeyID::function};
  EXPECT_EQ(set.size(), 2U);
  EXPECT_FALSE(set.contains(stray));
  EXPECT_TRUE(set.contains(KeyID::function));
  set.erase(KeyID::function);
  EXPECT_EQ(set, KeySet{KeyID::keyA});
}

}  // namespace
}  // namespace corvel
