// Inputs the fuzzers found, kept as cases: each link and command line must
// read as stated, and the command must come back from its own link.
#include "CorvelCore/Automation/AutomationParser.h"
#include "CorvelCore/Automation/CommandLineInterface.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

AutomationCommand toggleOn(ScreenRequest screen) {
  ShowOptions options;
  options.screen = std::move(screen);
  return AutomationCommand::toggle(std::move(options), std::nullopt);
}

void expectLinkReadsBack(const AutomationCommand& command) {
  const auto again = AutomationParser::parse(command.link());
  ASSERT_TRUE(again.has_value()) << command.link();
  EXPECT_EQ(*again, command) << command.link();
}

// A screen name that cleans to digits is that display number; a name that
// cleans to nothing is refused.
TEST(AutomationRegressionTest, LinksReadBackAsTheSameCommand) {
  const struct {
    std::string link;
    std::optional<AutomationCommand> expected;
  } cases[] = {
      {"quillon://toggle?screen=0%02", toggleOn(ScreenRequest::id(0))},
      {"quillon://toggle?screen=%E2%80%8B204%09", toggleOn(ScreenRequest::id(204))},
      {"quillon://toggle?screen=4294967296%02", std::nullopt},
      {"quillon://toggle?screen=%02", std::nullopt},
      {"quillon://toggle?screen=Studio%02", toggleOn(ScreenRequest::name("Studio"))},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.link);
    const auto command = AutomationParser::parse(test.link);
    if (!test.expected) {
      ASSERT_FALSE(command.has_value());
      EXPECT_EQ(command.error(), AutomationError::badValue("screen"));
      continue;
    }
    ASSERT_TRUE(command.has_value()) << command.error().message();
    EXPECT_EQ(*command, *test.expected);
    expectLinkReadsBack(*command);
  }
}

TEST(AutomationRegressionTest, CommandLinesReadBackAsTheSameCommand) {
  const std::vector<std::vector<std::string>> lines = {
      {"toggle", "--screen", std::string("0\x02")},
  };
  for (const auto& words : lines) {
    SCOPED_TRACE(words.back());
    const auto action = CommandLineInterface::parse(
        words, {"/work", "/home", [](std::string_view) { return AppMatch::none(); }});
    ASSERT_TRUE(action.has_value());
    const auto* send = action->as<CommandLineAction::Send>();
    ASSERT_NE(send, nullptr);
    EXPECT_EQ(send->command, toggleOn(ScreenRequest::id(0)));
    expectLinkReadsBack(send->command);
  }
}

}  // namespace
}  // namespace corvel
