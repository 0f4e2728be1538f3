#include "CorvelCore/Layers/Layer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace corvel {
namespace {

JSONValue parse(std::string_view text) {
  auto value = JSONValue::decode(text);
  EXPECT_TRUE(value.has_value()) << text;
  return value.value_or(JSONValue());
}

constexpr std::string_view kID = "0f8fad5b-d9cb-469f-a165-70867728950e";

// A layer object with a valid id and trigger plus `members` (JSON text without braces).
JSONValue layerJSON(std::string_view members) {
  std::string text = "{\"id\":\"" + std::string(kID) +
                     "\",\"trigger\":{\"parts\":[{\"modifier\":\"command\",\"side\":\"right\"}]}";
  if (!members.empty()) text += "," + std::string(members);
  return parse(text + "}");
}

Layer readLayer(std::string_view members) {
  auto layer = Layer::fromJSON(layerJSON(members));
  EXPECT_TRUE(layer.has_value()) << members;
  return layer.value_or(Layer());
}

const JSONValue* member(const JSONValue& object, std::string_view key) {
  return object.asObject() == nullptr ? nullptr : object.asObject()->find(key);
}

TEST(LayerTest, HoldDelayTakesTheKindsDefaultAndStaysWithinFiveSeconds) {
  const struct {
    std::string_view members;
    double delay;
  } cases[] = {
      {R"("holdDelay":-1)", 0.2},
      {R"("holdDelay":9)", 5.0},
      {R"("kind":"apps")", 0.0},
      {R"("kind":"apps","holdDelay":-2)", 0.0},
      {R"("holdDelay":1.5)", 1.5},
      {R"("holdDelay":null)", 0.2},
      {R"("holdDelay":"fast")", 0.2},
      {"", 0.2},
      {R"("kind":"robot","holdDelay":0)", 0.0},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.members));
    EXPECT_EQ(readLayer(test.members).holdDelay, test.delay);
  }
  EXPECT_EQ(Layer::cleanDelay(std::numeric_limits<double>::infinity(), LayerKind::custom), 0.2);
  EXPECT_EQ(Layer::cleanDelay(std::nan(""), LayerKind::apps), 0.0);
  const Layer built(UUID(), "L", true, LayerKind::apps, LayerTrigger::hyper(), std::nullopt, {}, {},
                    {}, {}, false, -4, -1);
  EXPECT_EQ(built.holdDelay, 0.0);
  EXPECT_EQ(built.removedCharacters, 0);
  EXPECT_EQ(built.leftOutKeys, 0);
}

TEST(LayerTest, NamesAreCleanedCutAndNeverBlank) {
  const struct {
    std::string members;
    std::string name;
    std::int64_t removed;
  } cases[] = {
      {R"("name":"   ")", "Layer", 0},
      {R"("name":" \n\t\u3000")", "Layer", 0},
      {"", "Layer", 0},
      {R"("name":42)", "Layer", 0},
      {R"("name":"\u200bTeam\u202e")", "Team", 2},
      {R"("name":"Team","removedCharacters":3)", "Team", 3},
      {R"("name":"\u0007","removedCharacters":3)", "Layer", 4},
      {R"("name":")" + std::string(70, 'n') + "\"", std::string(64, 'n'), 0},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.members);
    const Layer layer = readLayer(test.members);
    EXPECT_EQ(layer.name, test.name);
    EXPECT_EQ(layer.removedCharacters, test.removed);
  }
}

TEST(LayerTest, FlagsAndCountsAreReadLeniently) {
  const struct {
    std::string_view members;
    bool enabled;
    bool needsReview;
    std::int64_t removed;
    std::int64_t leftOut;
  } cases[] = {
      {R"("enabled":true)", true, false, 0, 0},
      {R"("enabled":true,"needsReview":true)", false, true, 0, 0},
      {R"("enabled":true,"needsReview":"yes")", false, true, 0, 0},
      {R"("enabled":true,"needsReview":null)", true, false, 0, 0},
      {R"("enabled":"on")", false, false, 0, 0},
      {R"("removedCharacters":5e9,"leftOutKeys":1e9)", false, false, 2000000, 100000},
      {R"("removedCharacters":12.7,"leftOutKeys":-3)", false, false, 12, 0},
      {R"("removedCharacters":"9","leftOutKeys":0.5)", false, false, 0, 0},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.members));
    const Layer layer = readLayer(test.members);
    EXPECT_EQ(layer.enabled, test.enabled);
    EXPECT_EQ(layer.needsReview, test.needsReview);
    EXPECT_EQ(layer.removedCharacters, test.removed);
    EXPECT_EQ(layer.leftOutKeys, test.leftOut);
  }
}

TEST(LayerTest, ScopeAndFillAndKind) {
  EXPECT_EQ(readLayer(R"("appScope":"")").appScope, std::nullopt);
  EXPECT_EQ(readLayer(R"("appScope":null)").appScope, std::nullopt);
  EXPECT_EQ(readLayer(R"("appScope":"com.apple.Safari")").appScope, "com.apple.Safari");
  EXPECT_EQ(readLayer(R"("fill":"dimmed")").fill, FillMode::dimmed);
  EXPECT_EQ(readLayer(R"("fill":"sparkly")").fill, std::nullopt);
  EXPECT_EQ(readLayer(R"("kind":"apps")").kind, LayerKind::apps);
  EXPECT_EQ(readLayer(R"("kind":"robot")").kind, LayerKind::custom);
}

TEST(LayerTest, UnusableLayersAreRefused) {
  const std::string_view cases[] = {
      R"([])",
      R"({"trigger":{"parts":[{"modifier":"fn"}]}})",
      R"({"id":7,"trigger":{"parts":[{"modifier":"fn"}]}})",
      R"({"id":"0f8fad5b-d9cb-469f-a165-70867728950","trigger":{"parts":[{"modifier":"fn"}]}})",
      R"({"id":"0f8fad5b-d9cb-469f-a165-70867728950e"})",
      R"({"id":"0f8fad5b-d9cb-469f-a165-70867728950e","trigger":null})",
      R"({"id":"0f8fad5b-d9cb-469f-a165-70867728950e","trigger":{"parts":[]}})",
      R"({"id":"0f8fad5b-d9cb-469f-a165-70867728950e","trigger":{"parts":[{"modifier":"hyper"}]}})",
      R"({"id":"0f8fad5b-d9cb-469f-a165-70867728950e","trigger":{"parts":[{"modifier":"fn"}]},"appScope":".com.x"})",
      R"({"id":"0f8fad5b-d9cb-469f-a165-70867728950e","trigger":{"parts":[{"modifier":"fn"}]},"appScope":"com..x"})",
  };
  for (std::string_view text : cases) {
    SCOPED_TRACE(std::string(text));
    EXPECT_EQ(Layer::fromJSON(parse(text)).error(), LayerError::badLayer());
  }
}

// Members of the wrong type are kept in `extras` under their own names.
// Writing puts a kept value back in place of the default the layer uses
// meanwhile, except where the layer always writes its own value: its name
// and its scope. A "needsReview" that is not a Boolean is not kept: it
// means the layer needs review.
TEST(LayerTest, WrongTypedMembersAreKeptAndWrittenAsTheLayerSays) {
  const struct {
    std::string_view members;
    std::string_view key;
    std::optional<std::string_view> kept;
    std::string_view written;
  } cases[] = {
      {R"("keys":[1])", "keys", "[1]", "[1]"},
      {R"("enabled":"on")", "enabled", R"("on")", R"("on")"},
      {R"("name":42)", "name", "42", R"("Layer")"},
      {R"("name":["Work"],"kind":"robot")", "name", R"(["Work"])", R"("Layer")"},
      {R"("appScope":12)", "appScope", "12", "null"},
      {R"("appScope":{"id":"com.a"})", "appScope", R"({"id":"com.a"})", "null"},
      {R"("needsReview":"yes")", "needsReview", std::nullopt, "true"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.members));
    const Layer layer = readLayer(test.members);
    const JSONValue* kept = layer.extras.find(test.key);
    EXPECT_EQ(kept == nullptr ? std::nullopt : std::optional(*kept),
              test.kept ? std::optional(parse(*test.kept)) : std::nullopt);
    const JSONValue written = layer.json();
    const JSONValue* value = member(written, test.key);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(*value, parse(test.written));
    auto again = Layer::fromJSON(written);
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(again->json(), written);
  }
}

TEST(LayerTest, WritingFollowsTheLayersOwnState) {
  Layer layer =
      readLayer(R"("needsReview":true,"removedCharacters":3,"fill":"blank","appScope":"com.a")");
  JSONValue written = layer.json();
  EXPECT_EQ(*member(written, "needsReview"), JSONValue(true));
  EXPECT_EQ(*member(written, "removedCharacters"), JSONValue(3));
  EXPECT_EQ(member(written, "leftOutKeys"), nullptr);
  EXPECT_EQ(*member(written, "fill"), JSONValue("blank"));
  EXPECT_EQ(*member(written, "appScope"), JSONValue("com.a"));
  EXPECT_EQ(*member(written, "keys"), JSONValue(JSONObject()));

  layer.needsReview = false;
  layer.fill.reset();
  layer.appScope.reset();
  layer.trigger = LayerTrigger({TriggerPart(TriggerModifier::fn)});
  written = layer.json();
  EXPECT_EQ(member(written, "needsReview"), nullptr);
  EXPECT_EQ(member(written, "removedCharacters"), nullptr);
  EXPECT_EQ(member(written, "fill"), nullptr);
  EXPECT_EQ(*member(written, "appScope"), JSONValue());
  EXPECT_EQ(*member(written, "trigger"), parse(R"({"parts":[{"modifier":"fn","side":"either"}]})"));
}

TEST(LayerTest, UnreadableKeysAreKeptBesideTheKeysRead) {
  Layer layer = readLayer(R"("keys":{
      "keyA":{"action":{"type":"typeText","text":"a"}},
      "keyAA":{"action":{"type":"typeText","text":"x"}},
      "keyB":{"action":{"type":"typeText","text":"\u200b"}},
      "capsLock":{"action":{"type":"typeText","text":"c"}},
      "controlLeft":{"action":{"type":"typeText","text":"d"}}})");
  EXPECT_EQ(layer.keys.size(), 3u);
  const JSONValue* kept = layer.extras.find("keys");
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(kept->asObject()->size(), 2u);

  // A key the layer holds wins over a kept entry of the same name.
  layer.keys.emplace(KeyID::keyB, LayerKey{LayerAction::typeText("b"), {}, {}, {}});
  const JSONValue written = layer.json();
  const JSONValue* keys = member(written, "keys");
  ASSERT_NE(keys, nullptr);
  EXPECT_EQ(keys->asObject()->size(), 5u);
  EXPECT_EQ(*member(*member(*keys, "keyB"), "action"), parse(R"({"type":"typeText","text":"b"})"));
  EXPECT_NE(member(*keys, "keyAA"), nullptr);

  layer.keys.erase(KeyID::keyB);
  layer.dropUnknownParts();
  EXPECT_EQ(layer.leftOutKeys, 2);
  EXPECT_TRUE(layer.extras.empty());
  ASSERT_EQ(layer.keys.size(), 1u);
  EXPECT_TRUE(layer.keys.contains(KeyID::keyA));
}

TEST(LayerTest, LayersTakeOnlyKeysWithACodeThatAreNotModifiersOrInert) {
  const std::pair<KeyID, bool> cases[] = {
      {KeyID::keyA, true},        {KeyID::f5, true},        {KeyID::arrowUp, true},
      {KeyID::keypadEnter, true}, {KeyID::escape, true},    {KeyID::controlLeft, false},
      {KeyID::function, false},   {KeyID::capsLock, false}, {static_cast<KeyID>(200), false},
  };
  for (const auto& [key, takes] : cases) {
    SCOPED_TRACE(static_cast<int>(key));
    EXPECT_EQ(Layer::canTake(key), takes);
  }
}

TEST(LayerTest, ArmingCarriesIdTriggerAndDelay) {
  const Layer layer = readLayer(R"("holdDelay":0.5)");
  EXPECT_EQ(layer.arming(), (LayerArming{layer.id, layer.trigger, 0.5}));
  EXPECT_EQ(layer.id.text(), "0F8FAD5B-D9CB-469F-A165-70867728950E");
}

}  // namespace
}  // namespace corvel
