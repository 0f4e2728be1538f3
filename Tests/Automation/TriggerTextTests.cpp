#include "CorvelCore/Automation/TriggerText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

using namespace std::string_view_literals;

TEST(TriggerTextTest, ReadsAndWritesTriggers) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"Cmd+Shift", "shift-cmd"},
      {"command-shift", "shift-cmd"},
      {"rcmd-rshift", "rshift-rcmd"},
      {"control+alt", "ctrl-opt"},
      {"lcmd-rcmd", "lcmd-rcmd"},
      {"rcmd-lcmd-cmd", "lcmd-rcmd-cmd"},
      {"cmd-rcmd", "rcmd-cmd"},
      {"ctrl+fn", "fn-ctrl"},
      {"cmd-cmd-command", "cmd"},
      {"LAlt", "lopt"},
      {"RControl", "rctrl"},
      {"\t cmd\u3000", "cmd"},
      {" HYPER ", "hyper"},
      {"ctrl-opt-shift-cmd", "hyper"},
      {"shift-shift-shift-shift-shift-shift-shift-shift-shift-shift-lcmd", "shift-lcmd"},
  };
  for (const auto& [text, written] : cases) {
    SCOPED_TRACE(std::string(text));
    const auto trigger = TriggerText::parse(text);
    ASSERT_TRUE(trigger.has_value());
    EXPECT_EQ(TriggerText::format(*trigger), written);
  }
  EXPECT_EQ(TriggerText::parse("hyper"), LayerTrigger::hyper());
  EXPECT_EQ(TriggerText::parse("rcmd-rshift"),
            LayerTrigger(
                {{TriggerModifier::shift, Side::right}, {TriggerModifier::command, Side::right}}));
}

TEST(TriggerTextTest, RefusesAnythingElse) {
  const std::string_view cases[] = {
      "  \t ", "",      "cmd--shift", "-cmd",      "cmd-",   "cmd+-shift", "rfn",       "lfn",
      "l",     "r",     "lhyper",     "hyper-cmd", "super",  "cmd shift",  "cmd_shift", "xcmd",
      "lrcmd", "cmd\n", "c\u200Bmd",  "cmd-\xff",  "\u0130", "cmd-%2D",    "\u00A0-cmd"};
  for (std::string_view text : cases) {
    SCOPED_TRACE(std::string(text));
    EXPECT_EQ(TriggerText::parse(text), std::nullopt);
  }
  EXPECT_EQ(TriggerText::parse("cmd\x00"sv), std::nullopt);
  // 65 scalars.
  EXPECT_EQ(TriggerText::parse("shift-shift-shift-shift-shift-shift-shift-shift-shift-shift-rctrl"),
            std::nullopt);
}

// Every normalised trigger, over every set of the thirteen distinct parts.
// Only the trigger of all thirteen parts writes more than the longest text
// read (68 scalars), and it is refused rather than misread.
TEST(TriggerTextTest, EveryTriggerReadsBackFromItsText) {
  std::vector<TriggerPart> all;
  for (auto modifier : {TriggerModifier::control, TriggerModifier::option, TriggerModifier::shift,
                        TriggerModifier::command}) {
    for (auto side : {Side::left, Side::right, Side::either}) all.emplace_back(modifier, side);
  }
  all.emplace_back(TriggerModifier::fn);
  int tooLong = 0;
  for (unsigned subset = 1; subset < (1U << all.size()); ++subset) {
    std::vector<TriggerPart> parts;
    for (std::size_t bit = 0; bit < all.size(); ++bit) {
      if ((subset & (1U << bit)) != 0) parts.push_back(all[bit]);
    }
    const LayerTrigger trigger(parts);
    const std::string text = TriggerText::format(trigger);
    if (text.size() > TriggerText::maxScalars) {
      ++tooLong;
      ASSERT_EQ(TriggerText::parse(text), std::nullopt) << text;
    } else {
      ASSERT_EQ(TriggerText::parse(text), trigger) << text;
    }
  }
  EXPECT_EQ(tooLong, 1);
}

}  // namespace
}  // namespace corvel
