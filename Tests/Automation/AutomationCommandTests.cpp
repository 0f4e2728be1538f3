#include "CorvelCore/Automation/AutomationCommand.h"

#include <gtest/gtest.h>

#include <charconv>
#include <set>
#include <string>

namespace corvel {
namespace {

LayerTrigger rightCommandShift() {
  return LayerTrigger(
      {{TriggerModifier::command, Side::right}, {TriggerModifier::shift, Side::right}});
}

TEST(AutomationCommandTest, BuildsLinks) {
  ShowOptions options;
  options.position = PositionRequest::point(12.5, -40);
  options.width = 800;
  options.screen = ScreenRequest::name("LG UltraFine");
  options.theme = "Night Owl";
  options.fill = FillMode::dimmed;
  options.hideAfterMS = 1500;
  options.fadeOutMS = 0;
  TemporaryLayerSpec layer{"Work & Play",
                           {{"q", KeyAssignment::text("a=b|c?d#e")},
                            {"escape", KeyAssignment::symbol("xmark")},
                            {"1", KeyAssignment::text("s:x")},
                            {"2", KeyAssignment::text("-")}}};
  StoredLayerSpec stored{rightCommandShift(), "Mail",
                         "com.apple.mail",    0.25,
                         FillMode::blank,     {{"m", KeyAssignment::app("com.apple.mail")}}};
  struct Case {
    AutomationCommand command;
    std::string link;
  };
  const Case cases[] = {
      {AutomationCommand::show(options, layer),
       "quillon://show?position=12.5:-40&width=800&screen=LG%20UltraFine&theme=Night%20Owl"
       "&fill=dimmed&hideAfterMS=1500&fadeOutMS=0&name=Work%20%26%20Play&1=text:s:x&2=text:-"
       "&escape=s:xmark&q=a%3Db%7Cc%3Fd%23e"},
      {AutomationCommand::toggle({.position = PositionRequest::named(NamedPosition::topLeft)},
                                 std::nullopt),
       "quillon://toggle?position=topLeft"},
      {AutomationCommand::hide(300), "quillon://hide?fadeOutMS=300"},
      {AutomationCommand::hide(std::nullopt), "quillon://hide"},
      {AutomationCommand::profile("Caf\xC3\xA9"), "quillon://profile?name=Caf%C3%A9"},
      {AutomationCommand::theme("a+b"), "quillon://theme?name=a%2Bb"},
      {AutomationCommand::layerShow(
           {std::nullopt, {{"f", KeyAssignment::symbolText("magnifyingglass", "Find")}}},
           ShowOptions{}),
       "quillon://layer/show?f=s:magnifyingglass%7CFind"},
      {AutomationCommand::layerStore(stored),
       "quillon://layer/store?modifiers=rshift-rcmd&name=Mail&app=com.apple.mail&holdDelay=0.25"
       "&fill=blank&m=a:com.apple.mail"},
      {AutomationCommand::layerEdit({LayerTrigger::hyper(), std::nullopt, "Nav"},
                                    {{"h", std::nullopt}, {"j", KeyAssignment::text("Down")}}),
       "quillon://layer/edit?modifiers=hyper&name=Nav&h=-&j=Down"},
      {AutomationCommand::layerRemove({std::nullopt, "com.apple.Safari", "Web"}),
       "quillon://layer/remove?app=com.apple.Safari&name=Web"},
      {AutomationCommand::exportFile(ExportKind::sheet, "/tmp/My Sheet.quillonsheet", std::nullopt,
                                     "com.apple.Safari"),
       "quillon://export?what=sheet&file=/tmp/My%20Sheet.quillonsheet&app=com.apple.Safari"},
      {AutomationCommand::importFile("/a/~b@c"), "quillon://import?file=/a/~b@c"},
      {AutomationCommand::clickToType(false), "quillon://clickToType?on=0"},
      {AutomationCommand::layerReset(), "quillon://layer/reset"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.link);
    EXPECT_EQ(c.command.link(), c.link);
    EXPECT_EQ(c.command.linkSize(), c.link.size());
  }
}

// Numbers are written exactly as std::to_chars writes them: whole numbers,
// which take a shorter way, on both sides of where the form with an
// exponent becomes the shorter one, and at the edges of that way.
TEST(AutomationCommandTest, WritesNumbersInTheirShortestForm) {
  for (double value :
       {1.0, -7.0, 900.0, 10000.0, 100000.0, -100000.0, 1200000.0, 12000000.0, -120000000.0,
        100000000000001.0, 999999999999999.0, 1e15, 1e20, 0.0, -0.0, 0.5, -12.25, 1e-7}) {
    SCOPED_TRACE(value);
    char buffer[32];
    std::string text(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
    if (const auto plus = text.find('+'); plus != std::string::npos) text.replace(plus, 1, "%2B");
    ShowOptions options;
    options.position = PositionRequest::point(value, value);
    EXPECT_EQ(AutomationCommand::show(options, std::nullopt).link(),
              "quillon://show?position=" + text + ":" + text);
  }
}

TEST(AutomationCommandTest, FitsLinkAtExactlyTheLimit) {
  // Eleven keys of 120 emoji (12 encoded bytes each) and one to fill up:
  // texts that need no "text:" prefix, so only the exact size decides.
  std::string emoji = "\xF0\x9F\x98\x80";
  std::string full;
  for (int i = 0; i < 120; ++i) full += emoji;
  TemporaryLayerSpec layer;
  for (char key = 'a'; key < 'a' + 11; ++key)
    layer.keys.add(std::string(1, key), KeyAssignment::text(full));
  std::string last(8, 'x');
  for (int i = 0; i < 40; ++i) last += emoji;
  layer.keys.add("l", KeyAssignment::text(last));
  auto fits = AutomationCommand::layerShow(layer, std::nullopt);
  ASSERT_EQ(fits.link().size(), AutomationCommand::maxURLBytes);
  EXPECT_TRUE(fits.fitsLink());
  layer.keys.set("l", KeyAssignment::text(last + "x"));
  EXPECT_FALSE(AutomationCommand::layerShow(layer, std::nullopt).fitsLink());
}

TEST(AutomationCommandTest, ShownLayerFollowsKeysAndFill) {
  ShowOptions filled;
  filled.fill = FillMode::blank;
  auto withFill = AutomationCommand::show(filled, std::nullopt);
  ASSERT_TRUE(withFill.as<AutomationCommand::Show>()->layer);
  auto emptyLayer = AutomationCommand::toggle({}, TemporaryLayerSpec{"Named", {}});
  EXPECT_FALSE(emptyLayer.as<AutomationCommand::Toggle>()->layer);
  EXPECT_EQ(AutomationCommand::layerShow({}, ShowOptions{}),
            AutomationCommand::layerShow({}, std::nullopt));
}

TEST(AutomationCommandTest, SourcesMaySendTheirVerbs) {
  using enum AutomationSource;
  struct Case {
    std::string_view verb;
    bool url, notification, commandLine, intent;
  };
  const Case cases[] = {
      {"show", true, true, true, true},           {"layer/reset", true, true, true, true},
      {"export", true, false, true, true},        {"import", true, false, true, true},
      {"clickToType", false, false, false, true}, {"reset", true, true, true, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.verb);
    EXPECT_EQ(AutomationCommand::isAllowed(c.verb, url), c.url);
    EXPECT_EQ(AutomationCommand::isAllowed(c.verb, notification), c.notification);
    EXPECT_EQ(AutomationCommand::isAllowed(c.verb, commandLine), c.commandLine);
    EXPECT_EQ(AutomationCommand::isAllowed(c.verb, intent), c.intent);
  }
  EXPECT_FALSE(
      AutomationCommand::exportFile(ExportKind::layers, "/x", {}, {}).isAllowed(notification));
  EXPECT_TRUE(AutomationCommand::clickToType(true).isAllowed(intent));
}

TEST(AutomationCommandTest, NotificationNames) {
  // Seventeen distinct names, each naming a verb; a verb's slash is a dot.
  const auto names = AutomationCommand::notificationNames();
  const std::set<std::string> distinct(names.begin(), names.end());
  EXPECT_EQ(distinct.size(), 17u);
  EXPECT_TRUE(distinct.contains("app.quillon.Quillon.layer.show"));
  for (const auto& name : names) EXPECT_TRUE(AutomationCommand::verb(name)) << name;

  struct Case {
    std::string name;
    std::optional<std::string> verb;
  };
  const Case cases[] = {
      {"app.quillon.Quillon.layer.store", "layer/store"},
      {"app.quillon.Quillon.remove", "remove"},
      {"app.quillon.Quillon.Show", std::nullopt},
      {"app.quillon.Quillon.layer.bogus", std::nullopt},
      {"app.corvel.Corvel.show", std::nullopt},
      {"app.quillon.Quillon.", std::nullopt},
      {"app.quillon.Quillonshow", std::nullopt},
  };
  for (const auto& c : cases) EXPECT_EQ(AutomationCommand::verb(c.name), c.verb) << c.name;
}

TEST(AutomationCommandTest, AppsNamedAreDistinct) {
  KeyAssignments keys;
  for (char c = 'a'; c <= 'i'; ++c) keys.add(std::string(1, c), KeyAssignment::app("com.x"));
  keys.add("1", KeyAssignment::app("com.y"));
  keys.add("2", KeyAssignment::text("com.z"));
  EXPECT_EQ(AutomationCommand::show({}, TemporaryLayerSpec{std::nullopt, keys}).appsNamed(),
            (std::set<std::string>{"com.x", "com.y"}));
  EXPECT_EQ(AutomationCommand::layerEdit({std::nullopt, "com.w", "N"},
                                         {{"a", KeyAssignment::app("com.v")}, {"b", std::nullopt}})
                .appsNamed(),
            (std::set<std::string>{"com.v"}));
}

}  // namespace
}  // namespace corvel
