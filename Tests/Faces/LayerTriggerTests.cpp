#include "CorvelCore/Faces/LayerTrigger.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

using M = TriggerModifier;

LayerTrigger trigger(std::vector<TriggerPart> parts) { return LayerTrigger(std::move(parts)); }

TEST(LayerTriggerTests, normalisesParts) {
  struct Case {
    std::vector<TriggerPart> given;
    std::vector<TriggerPart> normal;
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
    SCOPED_TRACE(trigger(test.normal).title());
    EXPECT_EQ(trigger(test.given).parts(), test.normal);
  }
}

TEST(LayerTriggerTests, matchesExactly) {
  const LayerTrigger rightCommandShift =
      trigger({{M::command, Side::right}, {M::shift, Side::right}});
  const LayerTrigger anyCommand = trigger({{M::command}});
  const LayerTrigger bothCommands = trigger({{M::command, Side::left}, {M::command, Side::right}});
  const LayerTrigger commandAndRight = trigger({{M::command}, {M::command, Side::right}});
  const LayerTrigger fnOption = trigger({{M::fn}, {M::option}});
  struct Case {
    const LayerTrigger& trigger;
    std::uint16_t mask;
    bool matches;
  };
  const Case cases[] = {
      {rightCommandShift, 0x00A0, true},
      {rightCommandShift, 0x00A1, false},
      {rightCommandShift, 0x0060, false},
      {rightCommandShift, 0x0080, false},
      {anyCommand, 0x0040, true},
      {anyCommand, 0x0080, true},
      {anyCommand, 0x00C0, true},
      {anyCommand, 0x0000, false},
      {anyCommand, 0x0140, false},
      {anyCommand, 0x8040, false},
      {bothCommands, 0x00C0, true},
      {bothCommands, 0x0080, false},
      {commandAndRight, 0x0080, true},
      {commandAndRight, 0x00C0, true},
      {commandAndRight, 0x0040, false},
      {fnOption, 0x0108, true},
      {fnOption, 0x0004, false},
      {LayerTrigger(), 0x0000, false},
      {LayerTrigger::hyper(), 0x0055, true},
      {LayerTrigger::hyper(), 0x00FF, true},
      {LayerTrigger::hyper(), 0x0054, false},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.trigger.title() + " with mask " + std::to_string(test.mask));
    EXPECT_EQ(test.trigger.matches(test.mask), test.matches);
  }
}

TEST(LayerTriggerTests, readsMasksFromFlagsAndKeys) {
  const std::pair<std::uint64_t, std::uint16_t> flags[] = {
      {0x100000, 0x0040},
      {0x100010, 0x0080},
      {0x100018, 0x00C0},
      {0x42000, 0x0002},
      {0x40001, 0x0001},
      {0x800000, 0x0100},
      {0x80060, 0x000C},
      {0x20004, 0x0020},
      {0x20000, 0x0010},
      {0x0, 0x0000},
      {0xFFFFFFFFFFFFFFFF, 0x01FF},
  };
  for (const auto& [deviceFlags, mask] : flags) {
    EXPECT_EQ(LayerTrigger::mask(deviceFlags), mask) << std::hex << deviceFlags;
  }
  EXPECT_EQ(LayerTrigger::heldMask({KeyID::commandRight, KeyID::shiftRight, KeyID::keyA}), 0x00A0);
  EXPECT_EQ(LayerTrigger::heldMask({KeyID::function, KeyID::controlLeft}), 0x0101);
  EXPECT_EQ(LayerTrigger::heldMask({KeyID::capsLock}), 0x0000);
  EXPECT_TRUE(trigger({{M::command}}).matchesDeviceFlags(0x100000));
  EXPECT_FALSE(trigger({{M::command, Side::right}}).matchesDeviceFlags(0x100000));
  EXPECT_TRUE(trigger({{M::option, Side::right}}).matchesHeld({KeyID::optionRight}));
}

TEST(LayerTriggerTests, theMostSpecificEarliestMatchWins) {
  const LayerTrigger either = trigger({{M::command}, {M::shift}});
  const LayerTrigger right = trigger({{M::command, Side::right}, {M::shift, Side::right}});
  const LayerTrigger oneSide = trigger({{M::command, Side::right}, {M::shift}});
  const KeySet rightKeys{KeyID::commandRight, KeyID::shiftRight};
  struct Case {
    std::vector<LayerTrigger> triggers;
    KeySet held;
    std::optional<std::size_t> winner;
  };
  const Case cases[] = {
      {{either, right}, rightKeys, 1},
      {{right, either}, rightKeys, 0},
      {{either, either}, rightKeys, 0},
      {{either, oneSide, right}, rightKeys, 2},
      {{oneSide, right, oneSide}, {KeyID::commandRight, KeyID::shiftLeft}, 0},
      {{either, right}, {KeyID::commandLeft, KeyID::shiftLeft}, 0},
      {{either, right}, {KeyID::commandLeft}, std::nullopt},
      {{}, rightKeys, std::nullopt},
  };
  for (std::size_t index = 0; index < std::size(cases); ++index) {
    SCOPED_TRACE(index);
    EXPECT_EQ(LayerTrigger::winner(cases[index].triggers, cases[index].held), cases[index].winner);
  }
}

TEST(LayerTriggerTests, showsItselfToTheUser) {
  struct Case {
    LayerTrigger trigger;
    std::string title;
    int specificity;
    bool catchesTyping;
    std::vector<KeyID> keycaps;
  };
  const Case cases[] = {
      {LayerTrigger(), "No trigger", 0, false, {}},
      {LayerTrigger::hyper(),
       "Hyper (⌃⌥⇧⌘)",
       0,
       false,
       {KeyID::controlLeft, KeyID::optionLeft, KeyID::shiftLeft, KeyID::commandLeft}},
      {trigger({{M::control, Side::left}, {M::option}}),
       "Left ⌃ ⌥",
       1,
       false,
       {KeyID::controlLeft, KeyID::optionLeft}},
      {trigger({{M::command, Side::right}, {M::fn}}),
       "Right ⌘ fn",
       1,
       false,
       {KeyID::commandRight, KeyID::function}},
      {trigger({{M::shift}}), "⇧", 0, true, {KeyID::shiftLeft}},
      {trigger({{M::option, Side::right}, {M::shift, Side::left}}),
       "Right ⌥ Left ⇧",
       2,
       true,
       {KeyID::optionRight, KeyID::shiftLeft}},
      {trigger({{M::option}, {M::command}}),
       "⌥ ⌘",
       0,
       false,
       {KeyID::optionLeft, KeyID::commandLeft}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.title);
    EXPECT_EQ(test.trigger.title(), test.title);
    EXPECT_EQ(test.trigger.specificity(), test.specificity);
    EXPECT_EQ(test.trigger.catchesTyping(), test.catchesTyping);
    EXPECT_EQ(test.trigger.keycaps(), test.keycaps);
  }
  EXPECT_EQ(trigger({{M::command}, {M::command, Side::right}, {M::fn}}).modifierKeys(),
            (std::vector<KeyID>{KeyID::commandLeft, KeyID::commandRight, KeyID::function}));
  EXPECT_EQ(TriggerPart(M::shift, Side::right).keys(), std::vector<KeyID>{KeyID::shiftRight});
}

TEST(LayerTriggerTests, readsAndWritesJSON) {
  const LayerTrigger sample = trigger({{M::shift, Side::right}, {M::command}});
  EXPECT_EQ(
      sample.json().compactText(),
      R"({"parts":[{"modifier":"shift","side":"right"},{"modifier":"command","side":"either"}]})");
  EXPECT_EQ(LayerTrigger::fromJSON(sample.json()), sample);
  EXPECT_EQ(LayerTrigger::fromJSON(LayerTrigger::hyper().json()), LayerTrigger::hyper());

  const std::pair<std::string_view, std::optional<LayerTrigger>> cases[] = {
      {R"({"parts":[{"modifier":"fn","side":"left"}]})", trigger({{M::fn}})},
      {R"({"parts":[{"modifier":"option"},{"modifier":"option","side":null}]})",
       trigger({{M::option}})},
      {R"({"parts":[],"note":1})", LayerTrigger()},
      {R"({"parts":[{"modifier":"command","side":"Right"}]})", std::nullopt},
      {R"({"parts":[{"modifier":"command","side":1}]})", std::nullopt},
      {R"({"parts":[{"modifier":"hyper"}]})", std::nullopt},
      {R"({"parts":[{"side":"left"}]})", std::nullopt},
      {R"({"parts":["command"]})", std::nullopt},
      {R"({"parts":{"modifier":"command"}})", std::nullopt},
      {R"({"modifier":"command"})", std::nullopt},
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
