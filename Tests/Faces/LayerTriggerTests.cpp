#include "CorvelCore/Faces/LayerTrigger.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CorvelCore/Automation/TriggerText.h"

namespace corvel {
namespace {

using M = TriggerModifier;

// Triggers in their short text form keep the tables readable.
LayerTrigger T(std::string_view text) {
  return text.empty() ? LayerTrigger() : TriggerText::parse(text).value_or(LayerTrigger());
}

TEST(LayerTriggerTest, NormalisesParts) {
  struct Case {
    std::vector<TriggerPart> given, normal;
  };
  const Case cases[] = {
      {{{M::shift, Side::left}, {M::control}, {M::shift, Side::left}},
       {{M::control}, {M::shift, Side::left}}},
      {{{M::fn, Side::left}, {M::fn}}, {{M::fn}}},
      {{{M::command, Side::right}, {M::command}, {M::command, Side::left}},
       {{M::command, Side::left}, {M::command, Side::right}, {M::command}}},
      {{{M::fn}, {M::control, Side::right}}, {{M::control, Side::right}, {M::fn}}},
      {{{static_cast<M>(9)}, {M::option, static_cast<Side>(7)}, {M::option}}, {{M::option}}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(LayerTrigger(test.normal).title());
    EXPECT_EQ(LayerTrigger(test.given).parts(), test.normal);
  }
}

TEST(LayerTriggerTest, MatchesExactly) {
  struct Case {
    std::string_view trigger;
    std::uint16_t mask;
    bool matches;
  };
  const Case cases[] = {
      {"rcmd-rshift", 0x00A0, true},  {"rcmd-rshift", 0x00A1, false},
      {"rcmd-rshift", 0x0060, false}, {"rcmd-rshift", 0x0080, false},
      {"cmd", 0x0040, true},          {"cmd", 0x0080, true},
      {"cmd", 0x00C0, true},          {"cmd", 0x0000, false},
      {"cmd", 0x0140, false},         {"cmd", 0x8040, false},
      {"lcmd-rcmd", 0x00C0, true},    {"lcmd-rcmd", 0x0080, false},
      {"cmd-rcmd", 0x0080, true},     {"cmd-rcmd", 0x00C0, true},
      {"cmd-rcmd", 0x0040, false},    {"fn-opt", 0x0108, true},
      {"fn-opt", 0x0004, false},      {"", 0x0000, false},
      {"hyper", 0x0055, true},        {"hyper", 0x0054, false},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(std::string(test.trigger) + " with mask " + std::to_string(test.mask));
    EXPECT_EQ(T(test.trigger).matches(test.mask), test.matches);
  }
}

TEST(LayerTriggerTest, ReadsMasksFromFlagsAndKeys) {
  const std::pair<std::uint64_t, std::uint16_t> flags[] = {
      {0x100000, 0x0040}, {0x100010, 0x0080}, {0x100018, 0x00C0},          {0x42000, 0x0002},
      {0x40001, 0x0001},  {0x800000, 0x0100}, {0x80060, 0x000C},           {0x20004, 0x0020},
      {0x20000, 0x0010},  {0x0, 0x0000},      {~std::uint64_t{0}, 0x01FF},
  };
  for (const auto& [deviceFlags, mask] : flags) {
    EXPECT_EQ(LayerTrigger::mask(deviceFlags), mask) << std::hex << deviceFlags;
  }
  EXPECT_EQ(LayerTrigger::heldMask({KeyID::commandRight, KeyID::shiftRight, KeyID::keyA}), 0x00A0);
  EXPECT_EQ(LayerTrigger::heldMask({KeyID::function, KeyID::controlLeft}), 0x0101);
  EXPECT_EQ(LayerTrigger::heldMask({KeyID::capsLock}), 0x0000);
  EXPECT_FALSE(T("rcmd").matchesDeviceFlags(0x100000));
  EXPECT_TRUE(T("ropt").matchesHeld({KeyID::optionRight}));
}

TEST(LayerTriggerTest, TheMostSpecificEarliestMatchWins) {
  const KeySet rightKeys{KeyID::commandRight, KeyID::shiftRight};
  struct Case {
    std::vector<std::string_view> triggers;
    KeySet held;
    std::optional<std::size_t> winner;
  };
  const Case cases[] = {
      {{"cmd-shift", "rcmd-rshift"}, rightKeys, 1},
      {{"rcmd-rshift", "cmd-shift"}, rightKeys, 0},
      {{"cmd-shift", "shift-cmd"}, rightKeys, 0},
      {{"cmd-shift", "rcmd-shift", "rcmd-rshift"}, rightKeys, 2},
      {{"rcmd-shift", "rcmd-rshift", "rcmd-shift"}, {KeyID::commandRight, KeyID::shiftLeft}, 0},
      {{"cmd-shift", "rcmd-rshift"}, {KeyID::commandLeft}, std::nullopt},
      {{}, rightKeys, std::nullopt},
  };
  for (const Case& test : cases) {
    std::vector<LayerTrigger> triggers;
    for (std::string_view text : test.triggers) triggers.push_back(T(text));
    SCOPED_TRACE(testing::PrintToString(test.triggers));
    EXPECT_EQ(LayerTrigger::winner(triggers, test.held), test.winner);
  }
}

TEST(LayerTriggerTest, ShowsItselfToTheUser) {
  struct Case {
    std::string_view trigger, title;
    int specificity;
    bool catchesTyping;
  };
  const Case cases[] = {
      {"", "No trigger", 0, false},
      {"hyper", "Hyper (⌃⌥⇧⌘)", 0, false},
      {"lctrl-opt", "Left ⌃ ⌥", 1, false},
      {"rcmd-fn", "Right ⌘ fn", 1, false},
      {"shift", "⇧", 0, true},
      {"ropt-lshift", "Right ⌥ Left ⇧", 2, true},
      {"opt-cmd", "⌥ ⌘", 0, false},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(std::string(test.trigger));
    EXPECT_EQ(T(test.trigger).title(), test.title);
    EXPECT_EQ(T(test.trigger).specificity(), test.specificity);
    EXPECT_EQ(T(test.trigger).catchesTyping(), test.catchesTyping);
  }
  EXPECT_EQ(T("rcmd-shift-fn").keycaps(),
            (std::vector<KeyID>{KeyID::shiftLeft, KeyID::commandRight, KeyID::function}));
  EXPECT_EQ(T("rcmd-cmd-fn").modifierKeys(),
            (std::vector<KeyID>{KeyID::commandLeft, KeyID::commandRight, KeyID::function}));
  EXPECT_EQ(TriggerPart(M::shift, Side::right).keys(), std::vector<KeyID>{KeyID::shiftRight});
}

TEST(LayerTriggerTest, ReadsAndWritesJSON) {
  const LayerTrigger sample = T("rshift-cmd");
  EXPECT_EQ(
      sample.json().compactText(),
      R"({"parts":[{"modifier":"shift","side":"right"},{"modifier":"command","side":"either"}]})");
  EXPECT_EQ(LayerTrigger::fromJSON(sample.json()), sample);

  const std::pair<std::string_view, std::optional<LayerTrigger>> cases[] = {
      {R"({"parts":[{"modifier":"fn","side":"left"}]})", T("fn")},
      {R"({"parts":[{"modifier":"option"},{"modifier":"option","side":null}]})", T("opt")},
      {R"({"parts":[],"note":1})", LayerTrigger()},
      {R"({"parts":[{"modifier":"command","side":"Right"}]})", std::nullopt},
      {R"({"parts":[{"modifier":"command","side":1}]})", std::nullopt},
      {R"({"parts":[{"modifier":"hyper"}]})", std::nullopt},
      {R"({"parts":[{"side":"left"}]})", std::nullopt},
      {R"({"parts":["command"]})", std::nullopt},
      {R"({"parts":{"modifier":"command"}})", std::nullopt},
      {R"([{"modifier":"command"}])", std::nullopt},
  };
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(std::string(text));
    const auto value = JSONValue::decode(text);
    ASSERT_TRUE(value.has_value());
    EXPECT_EQ(LayerTrigger::fromJSON(*value), expected);
  }
}

}  // namespace
}  // namespace corvel
