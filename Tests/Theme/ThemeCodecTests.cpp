#include "CorvelCore/Theme/ThemeCodec.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>

#include "CorvelCore/Theme/BuiltInThemes.h"

namespace corvel {
namespace {

ThemeColor hex(std::string_view text) {
  return ThemeColor::parse(text).value_or(ThemeColor{-1, -1, -1, -1});
}

// The written document's member at a dotted path, or nothing.
std::optional<JSONValue> written(const Theme& theme, std::string_view path) {
  auto document = JSONValue::decode(ThemeCodec::encode(theme));
  if (!document) return std::nullopt;
  const JSONValue* value = &*document;
  std::size_t start = 0;
  while (start <= path.size()) {
    const std::size_t dot = std::min(path.find('.', start), path.size());
    const JSONObject* object = value->asObject();
    value = object != nullptr ? object->find(path.substr(start, dot - start)) : nullptr;
    if (value == nullptr) return std::nullopt;
    start = dot + 1;
  }
  return *value;
}

JSONValue json(std::string_view text) { return JSONValue::decode(text).value_or("not JSON"); }

TEST(ThemeCodecTest, RefusesOnlyTheFiveUnreadableCases) {
  struct Case {
    std::string text;
    ThemeError error;
  };
  const Case cases[] = {
      {"", ThemeError::notJSON()},
      {"[1]", ThemeError::notJSON()},
      {R"({"name":"T")", ThemeError::notJSON()},
      {R"({"version":0,"name":"T"})", ThemeError::unsupportedVersion(0)},
      {R"({"version":-3,"name":"T"})", ThemeError::unsupportedVersion(-3)},
      {R"({"version":0.9,"name":"T"})", ThemeError::unsupportedVersion(0)},
      {R"({"version":0})", ThemeError::unsupportedVersion(0)},
      {R"({})", ThemeError::missingName()},
      {R"({"name":" \t\u0007\n "})", ThemeError::missingName()},
      {R"({"name":5})", ThemeError::missingName()},
      {R"({"lockLight":"red"})", ThemeError::badColor("lockLight", "red")},
      {R"({"name":"T","lockLight":null})", ThemeError::badColor("lockLight", "null")},
      {R"({"name":"T","caps":{"side":"#12"}})", ThemeError::badColor("caps.side", "#12")},
      {R"({"name":"T","caps":{"ring":[]}})", ThemeError::badColor("caps.ring", "[]")},
      {R"({"name":"T","plate":{"fill":{"top":"#fff"}}})",
       ThemeError::badColor("plate.fill.bottom", R"({"top":"#fff"})")},
      {R"({"name":"T","plate":{"fill":{"top":"x","bottom":"#000"}}})",
       ThemeError::badColor("plate.fill.top", "x")},
      {R"({"name":"T","press":{"fill":{"top":"#000","bottom":3}}})",
       ThemeError::badColor("press.fill.bottom", "3")},
      {R"({"name":"T","caps":{"alpha":"#GG0000"}})", ThemeError::badColor("caps.alpha", "#GG0000")},
      {R"({"name":"T","plate":{"shadow":{"color":"#ggg"}}})",
       ThemeError::badColor("plate.shadow.color", "#ggg")},
      {R"({"name":"T","plate":{"frame":{"color":{"r":1}}}})",
       ThemeError::badColor("plate.frame.color", R"({"r":1})")},
      {R"({"name":"T","mouse":{"left":"blue"}})", ThemeError::badColor("mouse.left", "blue")},
      {R"({"name":"T","backlight":{"color":"#1234"}})",
       ThemeError::badColor("backlight.color", "#1234")},
      {R"({"name":"T","overrides":{"keyA":{"cap":"#zz"}}})",
       ThemeError::badColor("overrides.keyA.cap", "#zz")},
      {R"({"name":"T","overrides":{"digit1":{"legend":1}}})",
       ThemeError::badColor("overrides.digit1.legend", "1")},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const auto theme = ThemeCodec::decode(c.text);
    ASSERT_FALSE(theme.has_value());
    EXPECT_EQ(theme.error(), c.error);
  }
}

TEST(ThemeCodecTest, ReadsUpToOneMebibyte) {
  const std::string theme = R"({"name":"T"})";
  std::string exact = theme + std::string(ThemeCodec::maxFileBytes - theme.size(), ' ');
  EXPECT_TRUE(ThemeCodec::decode(exact).has_value());
  exact.push_back(' ');
  EXPECT_EQ(ThemeCodec::decode(exact).error(), ThemeError::tooLarge());
  EXPECT_EQ(ThemeCodec::decode(std::string(ThemeCodec::maxFileBytes + 1, '[')).error(),
            ThemeError::tooLarge());
}

TEST(ThemeCodecTest, NamesIdsAndVersions) {
  struct Case {
    std::string text;
    std::function<bool(const Theme&)> read;
    std::string path;
    JSONValue written;
  };
  const Case cases[] = {
      {R"({"name":"T"})", [](const Theme& t) { return t.version == 1 && t.id == "untitled"; },
       "version", 1},
      {R"({"name":"T","version":7})", [](const Theme& t) { return t.version == 7; }, "version", 7},
      {R"({"name":"T","version":"2"})", [](const Theme& t) { return t.version == 1; }, "version",
       "2"},
      {R"({"name":"T","id":"retro-80s"})", [](const Theme& t) { return t.id == "retro-80s"; }, "id",
       "retro-80s"},
      {R"({"name":"T","id":"Retro 80s"})", [](const Theme& t) { return t.id == "untitled"; }, "id",
       "untitled"},
      {R"({"name":"T","id":5})", [](const Theme& t) { return t.unread.empty(); }, "id", "untitled"},
      {R"({"name":"  Retro\u0007 80s\u2028"})",
       [](const Theme& t) { return t.name == "Retro 80s"; }, "name", "Retro 80s"},
      {R"({"name":"T"})", [](const Theme& t) { return t.family == "Custom"; }, "family", "Custom"},
      {R"({"name":"T","family":" \u200B "})", [](const Theme& t) { return t.family == "Custom"; },
       "family", "Custom"},
      {R"({"name":"T","family":["Neon"]})", [](const Theme& t) { return t.family == "Custom"; },
       "family", json(R"(["Neon"])")},
      {R"({"name":"T","basedOn":"ink"})", [](const Theme& t) { return t.basedOn == "ink"; },
       "basedOn", "ink"},
      {R"({"name":"T","basedOn":null})", [](const Theme& t) { return !t.basedOn; }, "basedOn",
       nullptr},
      {R"({"name":"T","future":{"x":[1]}})", [](const Theme& t) { return t.extras.size() == 1; },
       "future", json(R"({"x":[1]})")},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const auto theme = ThemeCodec::decode(c.text);
    ASSERT_TRUE(theme.has_value());
    EXPECT_TRUE(c.read(*theme));
    EXPECT_EQ(written(*theme, c.path), c.written);
  }
}

TEST(ThemeCodecTest, WrongTypesFallBackAndGoBackOutClampedNumbersDoNot) {
  const Theme& defaults = Theme::defaults();
  struct Case {
    std::string members;  // inside the root object, after the name
    std::function<bool(const Theme&)> read;
    std::string path;
    std::string written;  // JSON
  };
  const Case cases[] = {
      {R"("caps":{"gap":99})", [](const Theme& t) { return t.caps.gap == 12; }, "caps.gap", "12"},
      {R"("caps":{"gap":"wide"})", [&](const Theme& t) { return t.caps.gap == defaults.caps.gap; },
       "caps.gap", R"("wide")"},
      {R"("caps":7)", [&](const Theme& t) { return t.caps == defaults.caps; }, "caps", "7"},
      {R"("caps":null)", [&](const Theme& t) { return t.caps == defaults.caps; }, "caps", "null"},
      {R"("caps":{"ring":null})", [](const Theme& t) { return !t.caps.ring; }, "caps.ring", "null"},
      {R"("legends":{"weight":1000.7})", [](const Theme& t) { return t.legends.weight == 900; },
       "legends.weight", "900"},
      {R"("legends":{"weight":350.9})", [](const Theme& t) { return t.legends.weight == 350; },
       "legends.weight", "350"},
      {R"("legends":{"weight":"bold"})",
       [&](const Theme& t) { return t.legends.weight == defaults.legends.weight; },
       "legends.weight", R"("bold")"},
      {R"("legends":{"family":"  Menlo\u0007 "})",
       [](const Theme& t) { return t.legends.family == "Menlo"; }, "legends.family", R"("Menlo")"},
      {R"("legends":{"family":"   "})", [](const Theme& t) { return !t.legends.family; },
       "legends.family", "null"},
      {R"("legends":{"family":5})", [](const Theme& t) { return !t.legends.family; },
       "legends.family", "5"},
      {R"("legends":{"glow":{"radius":500,"x":-100,"y":"up"}})",
       [](const Theme& t) {
         return t.legends.glow && t.legends.glow->radius == 80 && t.legends.glow->x == -60;
       },
       "legends.glow.y", R"("up")"},
      {R"("press":{"glow":"soft"})", [](const Theme& t) { return !t.press.glow; }, "press.glow",
       R"("soft")"},
      {R"("press":{"fadeMs":1e9,"fill":null})",
       [&](const Theme& t) {
         return t.press.fadeMs == 2000 && t.press.fill == defaults.press.fill;
       },
       "press.fill", "null"},
      {R"("plate":{"corners":[1,2,3]})", [](const Theme& t) { return !t.plate.corners; },
       "plate.corners", "[1,2,3]"},
      {R"("plate":{"corners":[1,"2",3,4]})", [](const Theme& t) { return !t.plate.corners; },
       "plate.corners", R"([1,"2",3,4])"},
      {R"("plate":{"corners":[1,2,-3,99]})",
       [](const Theme& t) {
         return t.plate.corners == CornerRadii{1, 2, 0, 60};
       },
       "plate.corners", "[1,2,0,60]"},
      {R"("plate":{"material":"glass","padding":0})",
       [&](const Theme& t) {
         return t.plate.material == defaults.plate.material && t.plate.padding == 2;
       },
       "plate.material", R"("glass")"},
      {R"("plate":{"frame":"thin"})", [](const Theme& t) { return !t.plate.frame; }, "plate.frame",
       R"("thin")"},
      {R"("plate":{"frame":{"width":40,"style":"dashed"}})",
       [](const Theme& t) { return t.plate.frame && t.plate.frame->width == 12; },
       "plate.frame.style", R"("dashed")"},
      {R"("plate":{"grid":{"spacing":1,"lineWidth":9}})",
       [](const Theme& t) {
         return t.plate.grid && t.plate.grid->spacing == 4 && t.plate.grid->lineWidth == 4;
       },
       "plate.grid.lineWidth", "4"},
      {R"("pill":"neon")", [&](const Theme& t) { return t.pill == defaults.pill; }, "pill",
       R"("neon")"},
      {R"("sound":"piano")", [](const Theme& t) { return !t.sound; }, "sound", R"("piano")"},
      {R"("sound":3)", [](const Theme& t) { return !t.sound; }, "sound", "3"},
      {R"("sound":"thock")", [](const Theme& t) { return t.sound == "thock"; }, "sound",
       R"("thock")"},
      {R"("mouse":{"halo":"#fff"})",
       [](const Theme& t) { return t.mouse && t.mouse->left == MouseStyle{}.left; }, "mouse.halo",
       R"("#FFFFFF")"},
      {R"("cheatsheet":{"label":"#000","sparkle":true})",
       [](const Theme& t) { return t.cheatsheet.extras.size() == 1; }, "cheatsheet.sparkle",
       "true"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.members);
    const auto theme = ThemeCodec::decode(R"({"name":"T",)" + c.members + "}");
    ASSERT_TRUE(theme.has_value());
    EXPECT_TRUE(c.read(*theme));
    EXPECT_EQ(written(*theme, c.path), json(c.written));
  }
}

TEST(ThemeCodecTest, FillsReadAndWriteInTheirFourForms) {
  const ThemeColor black = hex("#000"), white = hex("#fff");
  struct Case {
    std::string fill;
    Fill read;
    std::string written;
  };
  const auto gradient = [&](Shape shape, JSONObject extras = {}) {
    return Fill::gradient({std::move(shape), black, white, std::move(extras)});
  };
  const Case cases[] = {
      {R"("#FF000080")", Fill::solid(hex("#FF000080")), R"("#FF000080")"},
      {R"({"top":"#000","bottom":"#fff"})", Fill::linear(black, white),
       R"({"top":"#000000","bottom":"#FFFFFF"})"},
      {R"({"top":"#000","bottom":"#fff","angle":540})", Fill::linear(black, white),
       R"({"top":"#000000","bottom":"#FFFFFF"})"},
      {R"({"top":"#000","bottom":"#fff","angle":-90})", gradient(Shape::linear(270)),
       R"({"top":"#000000","bottom":"#FFFFFF","angle":270})"},
      {R"({"top":"#000","bottom":"#fff","angle":-0.0})", gradient(Shape::linear(0)),
       R"({"top":"#000000","bottom":"#FFFFFF","angle":0})"},
      {R"({"top":"#000","bottom":"#fff","angle":-1e-20})", gradient(Shape::linear(0)),
       R"({"top":"#000000","bottom":"#FFFFFF","angle":0})"},
      {R"({"top":"#000","bottom":"#fff","noise":0.2})",
       gradient(Shape::linear(180), JSONObject{{"noise", 0.2}}),
       R"({"top":"#000000","bottom":"#FFFFFF","angle":180,"noise":0.2})"},
      {R"({"top":"#000","bottom":"#fff","radial":{"x":2,"y":-1,"w":0},"angle":45})",
       gradient(Shape::radial(1, 0, 0.1, 1)),
       R"({"top":"#000000","bottom":"#FFFFFF","radial":{"x":1,"y":0,"w":0.1,"h":1}})"},
      {R"({"top":"#000","bottom":"#fff","radial":{"h":"big"}})",
       gradient(Shape::radial(0.5, 0.5, 1, 1)),
       R"({"top":"#000000","bottom":"#FFFFFF","radial":{"x":0.5,"y":0.5,"w":1,"h":"big"}})"},
      {R"({"top":"#000","bottom":"#fff","radial":"yes"})", Fill::linear(black, white),
       R"({"top":"#000000","bottom":"#FFFFFF","radial":"yes"})"},
      {R"({"top":"#000","bottom":"#fff","angle":"steep"})", Fill::linear(black, white),
       R"({"top":"#000000","bottom":"#FFFFFF","angle":"steep"})"},
      {R"({"top":"#000","bottom":"#fff","angle":"steep","noise":1})",
       gradient(Shape::linear(180), JSONObject{{"noise", 1}}),
       R"({"top":"#000000","bottom":"#FFFFFF","angle":"steep","noise":1})"},
      {"5", Theme::defaults().plate.fill, "5"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.fill);
    const auto theme = ThemeCodec::decode(R"({"name":"T","plate":{"fill":)" + c.fill + "}}");
    ASSERT_TRUE(theme.has_value());
    EXPECT_EQ(theme->plate.fill, c.read);
    EXPECT_EQ(written(*theme, "plate.fill"), json(c.written));
    // A second trip changes nothing.
    const std::string once = ThemeCodec::encode(*theme);
    const auto again = ThemeCodec::decode(once);
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(ThemeCodec::encode(*again), once);
  }
}

TEST(ThemeCodecTest, OverridesKeepWhatTheyDoNotRead) {
  const std::string overrides =
      R"({"keyA":{"cap":"#f00","legend":"#fff","shine":1},"digit1":{"cap":null},)"
      R"("keyB":{"cap":5},"notAKey":{"cap":"#f00"},"keyC":"red"})";
  const auto theme = ThemeCodec::decode(R"({"name":"T","overrides":)" + overrides + "}");
  ASSERT_TRUE(theme.has_value());
  ASSERT_EQ(theme->overrides.size(), 3u);
  const KeyOverride& a = theme->overrides.at(KeyID::keyA);
  EXPECT_EQ(a.cap, Fill::solid(hex("#f00")));
  EXPECT_EQ(a.legend, hex("#fff"));
  EXPECT_EQ(a.extras, (JSONObject{{"shine", 1}}));
  EXPECT_EQ(theme->overrides.at(KeyID::digit1), KeyOverride{});
  EXPECT_EQ(theme->overrides.at(KeyID::keyB), KeyOverride{});
  EXPECT_EQ(theme->unknownOverrides.size(), 2u);
  EXPECT_EQ(written(*theme, "overrides"),
            json(R"({"keyA":{"cap":"#FF0000","legend":"#FFFFFF","shine":1},)"
                 R"("digit1":{"cap":null,"legend":null},"keyB":{"cap":5,"legend":null},)"
                 R"("notAKey":{"cap":"#f00"},"keyC":"red"})"));

  const auto notAnObject = ThemeCodec::decode(R"({"name":"T","overrides":[1]})");
  ASSERT_TRUE(notAnObject.has_value());
  EXPECT_TRUE(notAnObject->overrides.empty());
  EXPECT_EQ(written(*notAnObject, "overrides"), json("[1]"));
}

TEST(ThemeCodecTest, OverridesPastTheLimitAreKeptUnread) {
  // 511 unknown names sort before "keyA", making it the 512th member and
  // "keyB" the 513th.
  JSONObject overrides;
  for (int i = 0; i < 511; ++i) overrides.set("a" + std::to_string(1000 + i), JSONObject{});
  overrides.set("keyA", JSONObject{{"legend", "#000000"}});
  overrides.set("keyB", JSONObject{{"legend", "#000000"}});
  const JSONValue document(JSONObject{{"name", "T"}, {"overrides", overrides}});
  const auto theme = ThemeCodec::decode(document.encoded().value_or(""));
  ASSERT_TRUE(theme.has_value());
  ASSERT_EQ(theme->overrides.size(), 1u);
  EXPECT_TRUE(theme->overrides.contains(KeyID::keyA));
  EXPECT_TRUE(theme->unknownOverrides.contains("keyB"));
  const auto out = written(*theme, "overrides");
  ASSERT_TRUE(out && out->asObject());
  EXPECT_EQ(out->asObject()->size(), 513u);
}

TEST(ThemeCodecTest, NumbersJSONCannotHoldAreWrittenAsNull) {
  Theme theme = BuiltInThemes::all().front();
  theme.caps.gap = std::numeric_limits<double>::quiet_NaN();
  theme.extras.set("odd", JSONArray{std::numeric_limits<double>::infinity()});
  EXPECT_EQ(written(theme, "caps.gap"), JSONValue());
  EXPECT_EQ(written(theme, "odd"), json("[null]"));
}

// Replaces one member somewhere inside `value` with `replacement`.
void replaceSomewhere(JSONValue& value, const JSONValue& replacement, std::mt19937& random) {
  JSONObject* object = value.asObject();
  if (object == nullptr || object->empty() || random() % 4 == 0) {
    value = replacement;
    return;
  }
  auto member = object->begin() + static_cast<std::ptrdiff_t>(random() % object->size());
  replaceSomewhere((*object)[member->first], replacement, random);
}

// Truncated, corrupted and hostile documents never crash the codec, and
// whatever reads writes back stably.
TEST(ThemeCodecTest, SurvivesDamagedDocuments) {
  std::mt19937 random(20261121);
  const JSONValue strange[] = {
      "x",
      "#fff",
      -1e9,
      1e300,
      0.5,
      true,
      nullptr,
      JSONArray{},
      JSONArray{1, 2, 3, 4},
      JSONObject{},
      json(R"({"top":"#000","bottom":"#fff","angle":"?","radial":{"w":"?"}})"),
      json(R"({"keyA":{"cap":{"top":"#000","bottom":"#fff"}},"zz":1})")};
  std::vector<std::string> inputs = {
      std::string(100000, '{'),
      std::string(2000, '[') + std::string(2000, ']'),
      R"({"name":"T","plate":{"fill":{"top":"#000","bottom":"#fff","radial":{"x":1e308}}}})",
      R"({"name":"T","caps":{"gap":1e400}})",
      R"({"name":"\uD800"})",
      "{\"name\":\"\xFF\"}"};
  for (const Theme& theme : BuiltInThemes::all()) {
    const std::string text = ThemeCodec::encode(theme);
    const JSONValue document = json(text);
    for (int i = 0; i < 8; ++i) {
      inputs.push_back(text.substr(0, random() % text.size()));
      std::string flipped = text;
      flipped[random() % flipped.size()] = static_cast<char>(random() % 256);
      inputs.push_back(flipped);
      JSONValue changed = document;
      for (int edits = 0; edits < 3; ++edits) {
        replaceSomewhere(changed, strange[random() % std::size(strange)], random);
      }
      inputs.push_back(changed.encoded().value_or(""));
    }
  }
  int read = 0;
  for (const auto& input : inputs) {
    const auto theme = ThemeCodec::decode(input);
    if (!theme) continue;
    ++read;
    const std::string once = ThemeCodec::encode(*theme);
    const auto again = ThemeCodec::decode(once);
    ASSERT_TRUE(again.has_value()) << input;
    EXPECT_EQ(ThemeCodec::encode(*again), once) << input;
  }
  EXPECT_GT(read, 50);
}

}  // namespace
}  // namespace corvel
