#include "CorvelCore/Layers/LayerCodec.h"
#include "CorvelCore/Theme/JSONObjectReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace corvel {
namespace {

JSONValue parse(std::string_view text) {
  auto value = JSONValue::decode(text);
  EXPECT_TRUE(value.has_value()) << text;
  return value.value_or(JSONValue());
}

// A hand-written file of a newer version holding something this version
// cannot use at every level.
constexpr std::string_view kNewerFile = R"({
  "version": 2,
  "note": "kept / as is",
  "layers": [
    {
      "id": "0f8fad5b-d9cb-469f-a165-70867728950e",
      "name": "Writing",
      "enabled": "sometimes",
      "kind": "robot",
      "holdDelay": "slow",
      "fill": {"pattern": 3},
      "appScope": 12,
      "colour": [1, 2, 3],
      "trigger": {"parts": [{"modifier": "option", "side": "left", "pressure": 2}], "taps": 2},
      "keys": {
        "keyA": {"action": {"type": "typeText", "text": "Kind regards", "delay": 1}, "glow": true},
        "keyS": {"action": {"type": "openApp", "bundleID": "com.apple.mail", "name": false},
                 "display": {"type": "appIcon", "bundleID": "com.apple.mail", "badge": 1},
                 "caption": 42},
        "keyD": {"action": {"type": "teleport"}},
        "keyQQ": {"action": {"type": "typeText", "text": "q"}}
      }
    },
    {"id": "0F8FAD5B-D9CB-469F-A165-70867728950E", "trigger": {"parts": [{"modifier": "fn"}]}},
    {"id": "not an id", "trigger": {"parts": [{"modifier": "fn"}]}},
    "a layer from the future",
    {"id": "7c9e6679-7425-40de-944b-e07fc1f90ae7",
     "trigger": {"parts": [{"modifier": "shift", "side": "right"}, {"modifier": "command", "side": "right"}]}}
  ]
})";

TEST(LayerCodecTest, ANewerFileSurvivesRoundTripsUnchanged) {
  auto file = LayerCodec::decodeFile(kNewerFile);
  ASSERT_TRUE(file.has_value());
  EXPECT_EQ(file->version, 2);
  ASSERT_EQ(file->layers.size(), 2u);
  EXPECT_EQ(file->unparsed.size(), 3u);
  EXPECT_EQ(file->unparsedFromNewer, 2);  // the duplicate is not unreadable
  EXPECT_EQ(file->extras.size(), 1u);
  const Layer& writing = file->layers[0];
  EXPECT_EQ(writing.keys.size(), 2u);
  EXPECT_FALSE(writing.enabled);
  EXPECT_EQ(writing.kind, LayerKind::custom);
  EXPECT_EQ(writing.holdDelay, Layer::customHoldDelay);

  const std::string first = LayerCodec::encode(*file);
  const JSONValue written = parse(first);
  const JSONValue original = parse(kNewerFile);
  // Everything but the unloaded layers is where it was; they follow the loaded ones.
  const JSONArray& originalLayers = *original.asObject()->find("layers")->asArray();
  const JSONArray& writtenLayers = *written.asObject()->find("layers")->asArray();
  ASSERT_EQ(writtenLayers.size(), 5u);
  EXPECT_EQ(writtenLayers[2], originalLayers[1]);
  EXPECT_EQ(writtenLayers[3], originalLayers[2]);
  EXPECT_EQ(writtenLayers[4], originalLayers[3]);
  EXPECT_EQ(*written.asObject()->find("note"), JSONValue("kept / as is"));
  EXPECT_NE(first.find("kept / as is"), std::string::npos);
  // The first layer comes back member for member, but for its id's letter
  // case and what the layer always writes from its own state: its scope
  // (none, as 12 is no scope), its trigger in normal form and the name of
  // the app it opens.
  JSONObject expected = *originalLayers[0].asObject();
  expected.set("id", "0F8FAD5B-D9CB-469F-A165-70867728950E");
  expected.set("appScope", nullptr);
  expected.set("trigger", parse(R"({"parts":[{"modifier":"option","side":"left"}]})"));
  JSONValue& app = *expected.find("keys")->asObject()->find("keyS")->asObject()->find("action");
  app.asObject()->set("name", "com.apple.mail");
  EXPECT_EQ(writtenLayers[0], JSONValue(expected));

  // Read again, the file is the same, but for the scope kept from the first
  // reading, which writing replaced; written again, it is the same text.
  auto again = LayerCodec::decodeFile(first);
  ASSERT_TRUE(again.has_value());
  LayerFile keptAside = *file;
  keptAside.layers[0].extras.erase("appScope");
  EXPECT_EQ(*again, keptAside);
  EXPECT_EQ(LayerCodec::encode(*again), first);
}

TEST(LayerCodecTest, FilesThatCannotBeReadAreRefused) {
  const struct {
    std::string_view file;
    LayerError error;
  } cases[] = {
      {"", LayerError::notJSON()},
      {R"([{"version":1}])", LayerError::notJSON()},
      {R"({"version":1,"layers":[])", LayerError::notJSON()},
      {"\"layers\"", LayerError::notJSON()},
      {R"({"version":1})", LayerError::notLayers()},
      {R"({"version":1,"layers":{}})", LayerError::notLayers()},
      {R"({"layers":null})", LayerError::notLayers()},
      {R"({"version":0,"layers":[]})", LayerError::unsupportedVersion(0)},
      {R"({"version":-3,"layers":[]})", LayerError::unsupportedVersion(-3)},
      {R"({"version":-1e300,"layers":[]})",
       LayerError::unsupportedVersion(-JSONObjectReader::maxExactInteger)},
      {R"({"version":0.5,"layers":[]})", LayerError::unsupportedVersion(0)},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.file));
    EXPECT_EQ(LayerCodec::decodeFile(test.file).error(), test.error);
  }
  const auto versionOf = [](std::string_view text) {
    auto file = LayerCodec::decodeFile(text);
    return file ? file->version : -99;
  };
  EXPECT_EQ(versionOf(R"({"version":"2","layers":[]})"), 1);
  EXPECT_EQ(versionOf(R"({"layers":[]})"), 1);
  EXPECT_EQ(versionOf(R"({"version":1.9,"layers":[]})"), 1);
  EXPECT_EQ(versionOf(R"({"version":1e300,"layers":[]})"), JSONObjectReader::maxExactInteger);
}

TEST(LayerCodecTest, TheSizeLimitHoldsAtTheByte) {
  const std::string minimal = R"({"version":1,"layers":[]})";
  std::string file = minimal + std::string(LayerCodec::maxFileBytes - minimal.size(), ' ');
  ASSERT_EQ(file.size(), 16777216u);
  EXPECT_TRUE(LayerCodec::decodeFile(file).has_value());
  file.push_back(' ');
  EXPECT_EQ(LayerCodec::decodeFile(file).error(), LayerError::tooLarge());
}

TEST(LayerCodecTest, DecodeCountsWhatItSkipsAndFreshFilesHoldOnlyLayers) {
  auto decoded = LayerCodec::decode(kNewerFile);
  ASSERT_TRUE(decoded.has_value());
  EXPECT_EQ(decoded->layers.size(), 2u);
  EXPECT_EQ(decoded->skipped, 3u);

  const std::string fresh = LayerCodec::encode(decoded->layers);
  const JSONValue written = parse(fresh);
  EXPECT_EQ(written.asObject()->size(), 2u);
  EXPECT_EQ(*written.asObject()->find("version"), JSONValue(1));
  EXPECT_EQ(written.asObject()->find("layers")->asArray()->size(), 2u);
  EXPECT_EQ(parse(LayerCodec::encode(std::span<const Layer>())),
            parse(R"({"layers":[],"version":1})"));
  // They read back as the layers, but for the scope of the wrong type kept
  // from the first reading, which writing replaced.
  auto back = LayerCodec::decodeFile(fresh);
  ASSERT_TRUE(back.has_value());
  decoded->layers[0].extras.erase("appScope");
  EXPECT_EQ(back->layers, decoded->layers);
}

TEST(LayerCodecTest, NumbersJSONCannotHoldAreWrittenAsNull) {
  LayerFile file;
  file.extras.set("odd", std::nan(""));
  const JSONValue written = parse(LayerCodec::encode(file));
  EXPECT_EQ(*written.asObject()->find("odd"), JSONValue());
}

// Every cut of a file, and every byte of it damaged, reads as a file or as
// an error: nothing in between crashes.
std::vector<std::string> namesOf(const LayerFile& file) {
  std::vector<std::string> names;
  for (const Layer& layer : file.layers) names.push_back(layer.name);
  return names;
}

// Cut short or with a byte changed, a layers file either fails to read or
// is written back as a file that reads with the same layers' names.
TEST(LayerCodecTest, DamagedFilesReadBackWithTheirLayers) {
  const std::string text(kNewerFile);
  const auto readsBack = [&](std::string_view data) {
    const auto file = LayerCodec::decodeFile(data);
    if (!file) return;
    const auto again = LayerCodec::decodeFile(LayerCodec::encode(*file));
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(namesOf(*again), namesOf(*file));
  };
  for (std::size_t length = 0; length < text.size(); ++length) {
    SCOPED_TRACE(length);
    readsBack(std::string_view(text).substr(0, length));
  }
  for (std::size_t index = 0; index < text.size(); ++index) {
    for (char byte : {'\0', '"', '{', ']', '\xff', '9'}) {
      SCOPED_TRACE(testing::Message() << index << " " << static_cast<int>(byte));
      std::string damaged = text;
      damaged[index] = byte;
      readsBack(damaged);
    }
  }
  const std::string deep = R"({"layers":[)" + std::string(600, '[') + std::string(600, ']') + "]}";
  EXPECT_EQ(LayerCodec::decodeFile(deep).error(), LayerError::notJSON());
}

// The elements of a "layers" array: layer N is named "N"; every 97th element cannot be read and
// every 89th repeats the id of the one before it.
struct LargeLayers {
  std::string elements;
  std::vector<std::string> keptNames;
  std::size_t unparsed = 0;
};

LargeLayers largeLayers(int count) {
  LargeLayers large;
  char id[40];
  for (int n = 0; n < count; ++n) {
    if (n > 0) large.elements += ",\n";
    if (n % 97 == 96) {
      large.elements += R"({"id": "not an id"})";
      ++large.unparsed;
      continue;
    }
    const bool repeated = n % 89 == 88 && (n - 1) % 97 != 96;
    std::snprintf(id, sizeof id, "00000000-0000-4000-8000-%012d", repeated ? n - 1 : n);
    large.elements += R"({"id": ")" + std::string(id) + R"(", "name": ")" + std::to_string(n) +
                      R"(", "trigger": {"parts": [{"modifier": "option", "side": "left"}]},
      "keys": {"keyA": {"action": {"type": "typeText", "text": "Kind regards"}}}})";
    if (repeated) {
      ++large.unparsed;
    } else {
      large.keptNames.push_back(std::to_string(n));
    }
  }
  return large;
}

// Among many layers, each unreadable one is counted, a repeated id is
// counted once more, only the last "layers" member counts, and a fault after
// the last layer spoils the whole file.
TEST(LayerCodecTest, ManyLayersAreKeptOrCountedOneByOne) {
  const LargeLayers large = largeLayers(600);
  const std::string small = R"({"id": "00000000-0000-4000-8000-000000000001", "name": "small",
      "trigger": {"parts": [{"modifier": "fn", "side": "either"}]}})";
  const std::string file = R"({"version": 1, "layers": [)" + large.elements + "]}";

  auto read = LayerCodec::decodeFile(file);
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(namesOf(*read), large.keptNames);
  EXPECT_EQ(read->unparsed.size(), large.unparsed);

  // Only the last of repeated "layers" counts, large or small.
  read = LayerCodec::decodeFile(R"({"layers": [)" + large.elements + R"(], "layers": [)" + small +
                                "]}");
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(namesOf(*read), std::vector<std::string>{"small"});
  EXPECT_TRUE(read->unparsed.empty());
  read = LayerCodec::decodeFile(R"({"layers": [)" + small + R"(], "layers": [)" + large.elements +
                                "]}");
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(namesOf(*read), large.keptNames);

  // A fault after the last layer spoils the whole file.
  EXPECT_EQ(LayerCodec::decodeFile(file.substr(0, file.size() - 1)).error(), LayerError::notJSON());
  EXPECT_EQ(LayerCodec::decodeFile(file.substr(0, file.size() - 1) + "]").error(),
            LayerError::notJSON());
}

}  // namespace
}  // namespace corvel
