#include "CorvelCore/Automation/AutomationParser.h"

#include "CorvelCore/Automation/KeyName.h"
#include "CorvelCore/Keyboard/KeyID.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace corvel {
namespace {

using Result = std::expected<AutomationCommand, AutomationError>;

std::string describe(const Result& result) {
  return result ? result->link() : "error: " + result.error().message();
}

Result show(ShowOptions options, std::optional<TemporaryLayerSpec> layer = std::nullopt) {
  return AutomationCommand::show(std::move(options), std::move(layer));
}
Result error(AutomationError error) { return std::unexpected(std::move(error)); }
Result bad(std::string parameter) { return error(AutomationError::badValue(std::move(parameter))); }

// The i-th of the keys that have a canonical name, so that 0, 1, 2 ... name
// distinct keys.
std::string keyName(std::size_t i) {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> found;
    for (const auto& key : allKeys()) {
      auto name = KeyName::canonical(key.name);
      if (name && std::find(found.begin(), found.end(), *name) == found.end()) {
        found.push_back(*name);
      }
    }
    return found;
  }();
  return names.at(i);
}

std::string repeated(std::string_view piece, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += piece;
  return text;
}

TEST(AutomationParserTest, ReadsLinks) {
  LayerTrigger commandShift(
      {{TriggerModifier::command, Side::either}, {TriggerModifier::shift, Side::either}});
  struct Case {
    std::string link;
    Result expected;
  };
  const Case cases[] = {
      {"quillon://Layer/Store?modifiers=rcmd",
       AutomationCommand::layerStore({LayerTrigger({{TriggerModifier::command, Side::right}})})},
      {"QUILLON://store?Modifiers=Cmd%2BShift&name=%20Work%0A",
       AutomationCommand::layerStore({commandShift, "Work"})},
      {"quillon:///show/", show({})},
      {"quillon:show", show({})},
      {"quillon://show#fragment", show({})},
      {"quillon://show?width=299", bad("width")},
      {"quillon://show?width=5000&Width=400", bad("width")},
      {"quillon://show?width=5000", show({.width = 4000})},
      {"quillon://show?width=+1e3", show({.width = 1000})},
      {"quillon://show?width=inf", bad("width")},
      {"quillon://show?hideAfterMS=99999999", show({.hideAfterMS = 3600000})},
      {"quillon://show?hideAfterMS=99999999999999999999999", show({.hideAfterMS = 3600000})},
      {"quillon://show?hideAfterMS=1.5", bad("hideAfterMS")},
      {"quillon://show?fadeOutMS=-1", bad("fadeOutMS")},
      {"quillon://show?fadeOutMS=%20+7%0A", show({.fadeOutMS = 7})},
      {"quillon://show?position=Bottom%20Right",
       show({.position = PositionRequest::named(NamedPosition::bottomRight)})},
      {"quillon://show?position=top-left",
       show({.position = PositionRequest::named(NamedPosition::topLeft)})},
      {"quillon://show?position=CENTRE",
       show({.position = PositionRequest::named(NamedPosition::center)})},
      {"quillon://show?position=12.5:40", show({.position = PositionRequest::point(12.5, 40)})},
      {"quillon://show?position=12:", bad("position")},
      {"quillon://show?position=1:2:3", bad("position")},
      {"quillon://show?position=top&x:y=3:4", show({.position = PositionRequest::point(3, 4)})},
      {"quillon://show?x:y=3", bad("x:y")},
      {"quillon://show?screen=2", show({.screen = ScreenRequest::id(2)})},
      {"quillon://show?screen=4294967296", bad("screen")},
      {"quillon://show?screen=%20LG%09Ultra%20", show({.screen = ScreenRequest::name("LG Ultra")})},
      {"quillon://show?screen=%20", bad("screen")},
      // A name that cleans to digits is that display's number.
      {"quillon://toggle?screen=0%02",
       AutomationCommand::toggle({.screen = ScreenRequest::id(0)}, {})},
      {"quillon://toggle?screen=%E2%80%8B204%09",
       AutomationCommand::toggle({.screen = ScreenRequest::id(204)}, {})},
      {"quillon://toggle?screen=Studio%02",
       AutomationCommand::toggle({.screen = ScreenRequest::name("Studio")}, {})},
      {"quillon://toggle?screen=4294967296%02", bad("screen")},
      {"quillon://toggle?screen=%02", bad("screen")},
      {"quillon://show?theme=%E2%80%8B", bad("theme")},
      {"quillon://show?fill=Dim", show({.fill = FillMode::dimmed}, TemporaryLayerSpec{})},
      {"quillon://show?fill=grey", bad("fill")},
      {"quillon://show?blank", show({.fill = FillMode::blank}, TemporaryLayerSpec{})},
      {"quillon://show?blank=off", show({})},
      {"quillon://show?blank=maybe", bad("blank")},
      {"quillon://show?fill=visible&blank=maybe",
       show({.fill = FillMode::visible}, TemporaryLayerSpec{})},
      {"quillon://show?name=Nav&unknown=1&zz=2", show({})},
      {"quillon://show?name=Nav&ESC=s:xmark",
       show({}, TemporaryLayerSpec{"Nav", {{"escape", KeyAssignment::symbol("xmark")}}})},
      {"quillon://show?esc=s:xmark&Escape=x", bad("escape")},
      {"quillon://show?q=s:Bad", bad("q")},
      {"quillon://toggle?name=" + std::string(70, 'n') + "&a=x",
       AutomationCommand::toggle(
           {}, TemporaryLayerSpec{std::string(64, 'n'), {{"a", KeyAssignment::text("x")}}})},
      {"quillon://layer/show", AutomationCommand::layerShow({}, std::nullopt)},
      {"quillon://layer/show?width=300",
       AutomationCommand::layerShow({}, ShowOptions{.width = 300})},
      {"quillon://hide?fadeOutMS=20000&width=1", AutomationCommand::hide(10000)},
      {"quillon://profile", error(AutomationError::missing("name"))},
      {"quillon://theme?name=%20Dark%0D%0AMode", AutomationCommand::theme("Dark Mode")},
      {"quillon://layer/reset?anything=%ZZ-is-never-read", error(AutomationError::unknownVerb(""))},
      {"quillon://reset?anything=at-all", AutomationCommand::layerReset()},
      {"quillon://layer/store?name=Work", error(AutomationError::missing("modifiers"))},
      {"quillon://layer/store?modifiers=cmd--shift", bad("modifiers")},
      {"quillon://layer/store?modifiers=hyper&holdDelay=9&app=%20com.a%20",
       AutomationCommand::layerStore({LayerTrigger::hyper(), std::nullopt, "com.a", 5.0})},
      {"quillon://layer/store?modifiers=hyper&holdDelay=-0.5", bad("holdDelay")},
      {"quillon://layer/store?modifiers=hyper&app=not%20an%20id", bad("app")},
      {"quillon://layer/edit?name=Nav&h=%20-%20&j=text:-",
       AutomationCommand::layerEdit({std::nullopt, std::nullopt, "Nav"},
                                    {{"h", std::nullopt}, {"j", KeyAssignment::text("-")}})},
      {"quillon://layer/remove?app=com.a", error(AutomationError::missing("modifiers"))},
      {"quillon://layer/remove?modifiers=cmd&q=x",
       AutomationCommand::layerRemove({LayerTrigger({{TriggerModifier::command, Side::either}})})},
      {"quillon://export?file=/tmp/x",
       AutomationCommand::exportFile(ExportKind::layers, "/tmp/x", std::nullopt, std::nullopt)},
      {"quillon://export?what=%20Theme&file=/t&name=Dusk",
       AutomationCommand::exportFile(ExportKind::theme, "/t", "Dusk", std::nullopt)},
      {"quillon://export?what=sheets&file=/t", bad("what")},
      {"quillon://export?file=tmp/x", bad("file")},
      {"quillon://export?file=%20/tmp/x", bad("file")},
      {"quillon://export?file=/tmp/%07x", bad("file")},
      {"quillon://export?what=theme", error(AutomationError::missing("file"))},
      {"quillon://export?what=sheet&file=/s", error(AutomationError::missing("app"))},
      {"quillon://import?file=/a/b.quillonlayer",
       AutomationCommand::importFile("/a/b.quillonlayer")},
      {"quillon://import", error(AutomationError::missing("file"))},
      {"quillon://clickToType?on", error(AutomationError::notAllowed("clickToType"))},
      {"quillon://shwo", error(AutomationError::unknownVerb("shwo"))},
      {"quillon://show2", error(AutomationError::unknownVerb(""))},
      {"quillon://", error(AutomationError::unknownVerb(""))},
      {"https://show", error(AutomationError::unknownVerb(""))},
      {"quillon//show", error(AutomationError::unknownVerb(""))},
      {"://show", error(AutomationError::unknownVerb(""))},
      {"quillon://show?name=%E0%A4", error(AutomationError::unknownVerb(""))},
      {"quillon://show?name=%C3%28", error(AutomationError::unknownVerb(""))},
      {"quillon://sh%6fw", show({})},
      // Each verb passes on the refusal of each of its parameters.
      {"quillon://profile?name=%20", bad("name")},
      {"quillon://theme?name=%0A", bad("name")},
      {"quillon://toggle?name=%20", bad("name")},
      {"quillon://layer/show?width=1", bad("width")},
      {"quillon://hide?fadeOutMS=+", bad("fadeOutMS")},
      {"quillon://hide?fadeOutMS=1x", bad("fadeOutMS")},
      {"quillon://layer/store?modifiers=cmd&name=%20", bad("name")},
      {"quillon://layer/store?modifiers=cmd&fill=grey", bad("fill")},
      {"quillon://layer/store?modifiers=cmd&a=s:Bad", bad("a")},
      {"quillon://layer/edit?modifiers=nope", bad("modifiers")},
      {"quillon://layer/edit?name=N&a=s:Bad", bad("a")},
      {"quillon://layer/remove?modifiers=cmd&app=a%20b", bad("app")},
      {"quillon://layer/remove?name=%20", bad("name")},
      {"quillon://import?file=x", bad("file")},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.link);
    EXPECT_EQ(describe(AutomationParser::parse(c.link)), describe(c.expected));
    EXPECT_EQ(AutomationParser::parse(c.link), c.expected);
  }
}

TEST(AutomationParserTest, SourcesAndLimits) {
  using enum AutomationSource;
  struct Case {
    std::string label;
    std::string verb;
    std::vector<AutomationPair> pairs;
    AutomationSource source;
    Result expected;
  };
  std::vector<AutomationPair> many(201, {"x", "1"});
  std::vector<AutomationPair> keys81;
  std::vector<AutomationPair> keys80;
  for (int i = 0; i < 81; ++i) {
    std::string key = keyName(static_cast<std::size_t>(i));
    keys81.emplace_back(key, "x");
    if (i < 80) keys80.emplace_back(key, "x");
  }
  const Case cases[] = {
      {"shortcut bare on",
       "clickToType",
       {{"on", ""}},
       intent,
       AutomationCommand::clickToType(true)},
      {"shortcut off",
       "clicktotype",
       {{"On", " No "}},
       intent,
       AutomationCommand::clickToType(false)},
      {"shortcut bad", "clickToType", {{"on", "2"}}, intent, bad("on")},
      {"shortcut missing", "clickToType", {}, intent, error(AutomationError::missing("on"))},
      {"click from the tool",
       "clickToType",
       {{"on", "1"}},
       commandLine,
       error(AutomationError::notAllowed("clickToType"))},
      {"export by notification",
       "EXPORT",
       {{"file", "/x"}},
       notification,
       error(AutomationError::notAllowed("export"))},
      {"export from the tool",
       "export",
       {{"file", "/x"}},
       commandLine,
       AutomationCommand::exportFile(ExportKind::layers, "/x", {}, {})},
      {"short verb by notification",
       "remove",
       {{"name", "N"}},
       notification,
       AutomationCommand::layerRemove({std::nullopt, std::nullopt, "N"})},
      {"201 pairs", "hide", many, url, error(AutomationError::tooLarge())},
      {"81 keys", "layer/show", keys81, url, error(AutomationError::tooLarge())},
      {"80 keys", "hide", keys80, url, AutomationCommand::hide(std::nullopt)},
      {"long value",
       "hide",
       {{"note", std::string(2001, 'v')}},
       url,
       error(AutomationError::tooLarge())},
      {"long name",
       "hide",
       {{std::string(2001, 'n'), ""}},
       url,
       error(AutomationError::tooLarge())},
      // 2000 scalars of two bytes each are within the limit.
      {"2000 scalars",
       "hide",
       {{"note", repeated("\xC3\xA9", 2000)}},
       url,
       AutomationCommand::hide(std::nullopt)},
      {"ill-formed bytes are mended",
       "theme",
       {{"name", "a\xFF"}},
       notification,
       AutomationCommand::theme("a\xEF\xBF\xBD")},
      {"unsafe verb is not echoed", "sh ow", {}, url, error(AutomationError::unknownVerb(""))},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    EXPECT_EQ(AutomationParser::parse(c.verb, c.pairs, c.source), c.expected);
  }
  EXPECT_EQ(AutomationParser::parse("layer/store", keys80, url),
            error(AutomationError::missing("modifiers")));
}

TEST(AutomationParserTest, RefusesWhatNoLinkCanHold) {
  // Each value is within its own limit, but the command's link is not.
  std::vector<AutomationPair> pairs;
  for (int i = 0; i < 12; ++i)
    pairs.emplace_back(keyName(static_cast<std::size_t>(i)), repeated("\xF0\x9F\x98\x80", 120));
  EXPECT_EQ(AutomationParser::parse("show", pairs, AutomationSource::commandLine),
            error(AutomationError::tooLarge()));
  pairs.pop_back();
  EXPECT_TRUE(AutomationParser::parse("show", pairs, AutomationSource::commandLine));

  // A link of exactly the limit is read; one byte more is not.
  std::string link = "quillon://hide?";
  for (int i = 0; i < 8; ++i) link += "p" + std::to_string(i) + "=" + std::string(2000, 'x') + "&";
  link += "q=" + std::string(AutomationCommand::maxURLBytes - link.size() - 2, 'x');
  ASSERT_EQ(link.size(), AutomationCommand::maxURLBytes);
  EXPECT_EQ(AutomationParser::parse(link), AutomationCommand::hide(std::nullopt));
  EXPECT_EQ(AutomationParser::parse(link + "x"), error(AutomationError::tooLarge()));
}

TEST(AutomationParserTest, HostileLinksAreRefused) {
  std::string params;
  for (int i = 0; i < 10000; ++i) params += "&k" + std::to_string(i) + "=v";
  EXPECT_EQ(AutomationParser::parse("quillon://show?" + params),
            error(AutomationError::tooLarge()));
  std::string shortParams;
  for (int i = 0; i < 3000; ++i) shortParams += "&";
  EXPECT_EQ(AutomationParser::parse("quillon://show?" + shortParams),
            error(AutomationError::tooLarge()));
  EXPECT_EQ(AutomationParser::parse(std::string(1 << 20, '%')), error(AutomationError::tooLarge()));
  for (const char* broken :
       {"quillon://show?name=%", "quillon://show?name=%4", "quillon://show?%G1=x", "quillon://sh%",
        "quillon://show?name=%FF", "quillon://show?a=%00%"}) {
    EXPECT_EQ(AutomationParser::parse(broken), error(AutomationError::unknownVerb(""))) << broken;
  }
}

}  // namespace
}  // namespace corvel
