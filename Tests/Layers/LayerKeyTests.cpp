#include "CorvelCore/Layers/LayerKey.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

JSONValue parse(std::string_view text) {
  auto value = JSONValue::decode(text);
  EXPECT_TRUE(value.has_value()) << text;
  return value.value_or(JSONValue());
}

std::expected<LayerKey, LayerError> readKey(std::string_view text) {
  std::int64_t removed = 0;
  return LayerKey::fromJSON(parse(text), removed);
}

TEST(LayerKeyTest, InvalidEntriesAreRefusedWithTheirError) {
  const struct {
    std::string_view key;
    LayerError error;
  } cases[] = {
      {R"("keyA")", LayerError::badKey()},
      {R"({})", LayerError::badAction()},
      {R"({"action":null})", LayerError::badAction()},
      {R"({"action":{"text":"a"}})", LayerError::badAction()},
      {R"({"action":{"type":"launch"}})", LayerError::badAction()},
      {R"({"action":{"type":"typeText","text":5}})", LayerError::badAction()},
      {R"({"action":{"type":"typeText","text":"\u200b\u0007"}})", LayerError::badAction()},
      {R"({"action":{"type":"openApp","bundleID":".com.x"}})", LayerError::badAction()},
      {R"({"action":{"type":"openApp","name":"Mail"}})", LayerError::badAction()},
      {R"({"action":{"type":"sendShortcut","key":"k"}})", LayerError::badAction()},
      {R"({"action":{"type":"sendShortcut","key":"keyK","modifiers":["hyper"]}})",
       LayerError::badAction()},
      {R"({"action":{"type":"sendShortcut","key":"keyK","modifiers":"command"}})",
       LayerError::badAction()},
      {R"({"action":{"type":"showSymbol","name":"Star"}})", LayerError::badAction()},
      {R"({"action":{"type":"showSymbol","name":"star","caption":"a"},"display":5})",
       LayerError::badKey()},
      {R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"emoji"}})",
       LayerError::badKey()},
      {R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"symbol","symbol":"Star"}})",
       LayerError::badKey()},
      {R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"symbolCaption","symbol":"star"}})",
       LayerError::badKey()},
      {R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"appIcon","bundleID":"a b"}})",
       LayerError::badKey()},
      {R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"label","text":1}})",
       LayerError::badKey()},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.key));
    EXPECT_EQ(readKey(test.key).error(), test.error);
  }
}

// Each entry is read and written again; the written form shows the defaults,
// cleaning, limits and kept members.
TEST(LayerKeyTest, EntriesAreReadAndWrittenInTheirCanonicalForm) {
  const std::string longText(2500, 't');
  const std::string longLabel(130, 'l');
  const std::string longID = "com.example." + std::string(188, 'x');
  const struct {
    std::string read;
    std::string written;
    std::int64_t removed;
  } cases[] = {
      {R"({"action":{"type":"openApp","bundleID":"com.apple.mail"}})",
       R"({"action":{"type":"openApp","bundleID":"com.apple.mail","name":"com.apple.mail"}})", 0},
      // An app without a name goes by its whole bundle identifier, even one
      // longer than a name may be, and a name that is that identifier is
      // not cut either; any other name is.
      {R"({"action":{"type":"openApp","bundleID":")" + longID + R"(","name":7,"icon":1}})",
       R"({"action":{"type":"openApp","bundleID":")" + longID + R"(","name":")" + longID +
           R"(","icon":1}})",
       0},
      {R"({"action":{"type":"openApp","bundleID":")" + longID + R"("}})",
       R"({"action":{"type":"openApp","bundleID":")" + longID + R"(","name":")" + longID + R"("}})",
       0},
      {R"({"action":{"type":"openApp","bundleID":")" + longID + R"(","name":")" + longID + R"("}})",
       R"({"action":{"type":"openApp","bundleID":")" + longID + R"(","name":")" + longID + R"("}})",
       0},
      {R"({"action":{"type":"openApp","bundleID":")" + longID + R"(","name":")" + longID +
           R"(s"}})",
       R"({"action":{"type":"openApp","bundleID":")" + longID + R"(","name":")" +
           longID.substr(0, 120) + R"("}})",
       0},
      {R"({"action":{"type":"openApp","bundleID":"com.apple.mail","name":"\u200b"}})",
       R"({"action":{"type":"openApp","bundleID":"com.apple.mail","name":"com.apple.mail"}})", 1},
      {R"({"action":{"type":"typeText","text":")" + longText + R"("}})",
       R"({"action":{"type":"typeText","text":")" + std::string(2000, 't') + R"("}})", 0},
      {R"({"action":{"type":"typeText","text":"a\r\nb","later":[1]},"colour":"red"})",
       R"({"action":{"type":"typeText","text":"a\nb","later":[1]},"colour":"red"})", 0},
      {R"({"action":{"type":"sendShortcut","key":"keyK","modifiers":["command","fn","shift","control","option"]}})",
       R"({"action":{"type":"sendShortcut","key":"keyK","modifiers":["fn","control","option","shift","command"]}})",
       0},
      {R"({"action":{"type":"sendShortcut","key":"f5","modifiers":null}})",
       R"({"action":{"type":"sendShortcut","key":"f5","modifiers":[]}})", 0},
      {R"({"action":{"type":"showSymbol","name":"star.fill","caption":3}})",
       R"({"action":{"type":"showSymbol","name":"star.fill","caption":3}})", 0},
      {R"({"action":{"type":"showSymbol","name":"star.fill"},"caption":"Hi\u2028there","display":null})",
       R"({"action":{"type":"showSymbol","name":"star.fill"},"caption":"Hi\nthere"})", 0},
      {R"({"action":{"type":"showSymbol","name":"star"},"caption":false})",
       R"({"action":{"type":"showSymbol","name":"star"},"caption":false})", 0},
      {R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"label","text":")" +
           longLabel + R"("}})",
       R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"label","text":")" +
           std::string(120, 'l') + R"("}})",
       0},
      {R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"text","text":"\u2066abcdefghijklmnopqrstuvwxyz"}})",
       R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"text","text":"abcdefghijklmnopqrstuvwx"}})",
       1},
      {R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"symbolCaption","symbol":"star","caption":"Go","tint":1}})",
       R"({"action":{"type":"showSymbol","name":"star"},"display":{"type":"symbolCaption","symbol":"star","caption":"Go","tint":1}})",
       0},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.read);
    std::int64_t removed = 0;
    auto key = LayerKey::fromJSON(parse(test.read), removed);
    ASSERT_TRUE(key.has_value());
    EXPECT_EQ(key->json(), parse(test.written));
    EXPECT_EQ(removed, test.removed);
  }
}

TEST(LayerKeyTest, LimitedCutsTheFaceTexts) {
  LayerKey key{LayerAction::showSymbol("star"),
               CapFace::text("\u200b" + std::string(30, 'x')),
               std::string(200, 'c'),
               {}};
  EXPECT_EQ(key.limited(false).display, CapFace::text("\u200b" + std::string(23, 'x')));
  EXPECT_EQ(key.limited(true).display, CapFace::text(std::string(24, 'x')));
  EXPECT_EQ(key.limited(true).caption, key.caption);
  key.display = CapFace::symbolCaption("star", std::string(130, 'c'));
  EXPECT_EQ(key.limited(true).display, CapFace::symbolCaption("star", std::string(120, 'c')));
}

TEST(LayerKeyTest, TheBoardShowsFacesAndCaptionsOfInstalledApps) {
  const LayerKey::Legends legends = [](KeyID key) {
    return key == KeyID::keyK ? std::string("K") : std::string();
  };
  const LayerKey::IsInstalled isInstalled = [](std::string_view id) { return id == "com.a"; };
  const LayerKey::AppName appName = [](std::string_view) { return std::string("App A"); };
  const std::string missing(LayerKey::missingAppSymbol);
  const struct {
    LayerKey key;
    CapFace face;
    std::optional<std::string> caption;
  } cases[] = {
      {{LayerAction::openApp("com.a", "Stored A"), {}, {}, {}}, CapFace::appIcon("com.a"), "App A"},
      {{LayerAction::openApp("com.b", "Stored B"), {}, {}, {}},
       CapFace::symbol(missing),
       "Stored B"},
      {{LayerAction::openApp("com.a", "A"), {}, "Mine", {}}, CapFace::appIcon("com.a"), "Mine"},
      {{LayerAction::typeText(std::string(30, 'w')), {}, {}, {}},
       CapFace::text(std::string(24, 'w')),
       std::nullopt},
      {{LayerAction::sendShortcut({{KeyModifier::command, KeyModifier::shift}, KeyID::keyK}),
        {},
        {},
        {}},
       CapFace::label("\u21E7\u2318K"),
       std::nullopt},
      {{LayerAction::sendShortcut({{KeyModifier::fn}, KeyID::f5}), {}, {}, {}},
       CapFace::label("fnf5"),
       std::nullopt},
      {{LayerAction::showSymbol("star", "Stars"), {}, {}, {}},
       CapFace::symbolCaption("star", "Stars"),
       std::nullopt},
      {{LayerAction::typeText("t"), CapFace::appIcon("com.b"), {}, {}},
       CapFace::symbol(missing),
       std::nullopt},
      {{LayerAction::typeText("t"), CapFace::appIcon("com.a"), {}, {}},
       CapFace::appIcon("com.a"),
       "App A"},
      {{LayerAction::typeText("t"), CapFace::label("L"), "", {}},
       CapFace::label("L"),
       std::nullopt},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.key.json().compactText());
    EXPECT_EQ(test.key.face(legends, isInstalled), test.face);
    EXPECT_EQ(test.key.shownCaption(appName, isInstalled), test.caption);
  }
}

}  // namespace
}  // namespace corvel
