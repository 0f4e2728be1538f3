#include "CorvelCore/Theme/JSONObjectReader.h"

#include <gtest/gtest.h>

#include <limits>

namespace corvel {
namespace {

enum class Profile { flat, oem, sa };
constexpr EnumName<Profile> kProfiles[] = {
    {Profile::flat, "flat"}, {Profile::oem, "oem"}, {Profile::sa, "sa"}};

const JSONValue kDocument = JSONValue(JSONObject{
    {"text", "hello"},
    {"numberText", "12"},
    {"nothing", nullptr},
    {"three", 3.9},
    {"minusThree", -3.9},
    {"huge", 1e300},
    {"flag", true},
    {"profile", "sa"},
    {"future", "xda"},
    {"section", JSONObject{{"gap", "wide"}, {"radius", 99}, {"kept", 1}}},
    {"list", JSONArray{1, 2}},
    {"stranger", "never read"},
});

TEST(JSONObjectReaderTest, NumbersFallBackClampAndTruncate) {
  JSONObjectReader reader("plate", kDocument);
  EXPECT_EQ(reader.number("numberText", 4), 4);
  EXPECT_EQ(reader.number("absent", 4), 4);
  EXPECT_EQ(reader.number("three", 0, 0, 2), 2);
  EXPECT_EQ(reader.number("absent2", 9, 0, 2), 2);  // the default is clamped too
  EXPECT_EQ(reader.integer("three", 0), 3);
  EXPECT_EQ(reader.integer("minusThree", 0), -3);
  EXPECT_EQ(reader.integer("huge", 0), JSONObjectReader::maxExactInteger);
  EXPECT_EQ(reader.integer("three", 0, 5, 10), 5);
  EXPECT_EQ(reader.integer("flag", 7), 7);
  EXPECT_EQ(reader.unread().size(), 2u);
  EXPECT_EQ(reader.unread().at("plate.numberText"), (UnreadValue{"12", 4}));
  EXPECT_EQ(reader.unread().at("plate.flag"), (UnreadValue{true, 7}));
}

TEST(JSONObjectReaderTest, NonFiniteNumbersGiveTheDefaultUnmarked) {
  const JSONValue odd(JSONObject{{"inf", std::numeric_limits<double>::infinity()}});
  JSONObjectReader reader("", odd);
  EXPECT_EQ(reader.number("inf", 2), 2);
  EXPECT_EQ(reader.integer("inf", 3), 3);
  EXPECT_TRUE(reader.unread().empty());
  reader.markUnread("inf", JSONArray{std::numeric_limits<double>::quiet_NaN()}, 1);
  EXPECT_TRUE(reader.unread().empty());
}

TEST(JSONObjectReaderTest, StringsAndNulls) {
  JSONObjectReader reader("", kDocument);
  EXPECT_EQ(reader.string("text", "x"), "hello");
  EXPECT_EQ(reader.string("nothing", "x"), "x");
  EXPECT_EQ(reader.optionalString("nothing", "x"), std::nullopt);
  EXPECT_EQ(reader.optionalString("three", std::nullopt), std::nullopt);
  EXPECT_EQ(reader.optionalString("flag", "d"), "d");
  EXPECT_EQ(reader.optionalString("absent", "d"), "d");
  EXPECT_EQ(reader.unread().size(), 3u);
  EXPECT_EQ(reader.unread().at("nothing"), (UnreadValue{nullptr, "x"}));
  EXPECT_EQ(reader.unread().at("three"), (UnreadValue{3.9, nullptr}));
  EXPECT_EQ(reader.unread().at("flag"), (UnreadValue{true, "d"}));
}

TEST(JSONObjectReaderTest, ChoiceKeepsUnknownCasesForWritingBack) {
  JSONObjectReader reader("caps", kDocument);
  EXPECT_EQ(reader.choice("profile", Profile::flat, kProfiles), Profile::sa);
  EXPECT_EQ(reader.choice("future", Profile::oem, kProfiles), Profile::oem);
  EXPECT_EQ(reader.unread().at("caps.future"), (UnreadValue{"xda", "oem"}));
}

TEST(JSONObjectReaderTest, KnownKeysExtrasAndParts) {
  JSONObjectReader reader("", kDocument);
  reader.number("three", 0);
  reader.number("three", 0);
  reader.value("absentButAsked");
  struct Section {
    double radius;
  };
  auto section = reader.part<Section>(
      "section",
      [](JSONObjectReader& child) {
        child.number("gap", 2);
        return Section{child.number("radius", 1, 0, 24)};
      },
      [](const Section& s) {
        return JSONValue(JSONObject{{"radius", s.radius}});
      },
      Section{5});
  ASSERT_TRUE(section.has_value());
  EXPECT_EQ(section->radius, 24);
  EXPECT_EQ(reader.unread().at("section.gap"), (UnreadValue{"wide", 2}));
  auto wrong = reader.part<Section>(
      "list", [](JSONObjectReader&) { return Section{0}; },
      [](const Section& s) {
        return JSONValue(JSONObject{{"radius", s.radius}});
      },
      Section{5});
  EXPECT_EQ(wrong->radius, 5);
  EXPECT_EQ(reader.unread().at("list"), (UnreadValue{JSONArray{1, 2}, JSONObject{{"radius", 5}}}));
  EXPECT_EQ(std::count(reader.known().begin(), reader.known().end(), "three"), 1);
  const JSONObject extras = reader.extras();
  EXPECT_TRUE(extras.contains("stranger"));
  EXPECT_FALSE(extras.contains("three"));
  EXPECT_FALSE(extras.contains("section"));
  EXPECT_EQ(extras.size(), 9u);
}

TEST(JSONObjectReaderTest, ObjectAndAbsorb) {
  JSONObjectReader reader("root", kDocument);
  EXPECT_TRUE(reader.object("section", [] { return JSONValue(); }).has_value());
  EXPECT_FALSE(reader.object("nothing", [] { return JSONValue("fallback"); }).has_value());
  EXPECT_EQ(reader.unread().at("root.nothing"), (UnreadValue{nullptr, "fallback"}));
  JSONObjectReader child("root.nothing", JSONValue(1));
  EXPECT_TRUE(child.members().empty());
  child.markUnread("x", "child", 1);
  reader.markUnread("nothing.x", "parent", 1);
  reader.absorb(child);
  EXPECT_EQ(reader.unread().at("root.nothing.x"), (UnreadValue{"child", 1}));
}

TEST(JSONObjectReaderTest, WrongTypeWrittenBackInPlaceWhileUnchanged) {
  const auto file = JSONValue::decode(R"({"gap":"12","name":"x","extra":{"a":1}})");
  ASSERT_TRUE(file.has_value());
  JSONObjectReader reader("", *file);
  const double gap = reader.number("gap", 4);
  const std::string name = reader.string("name", "");
  JSONObject out = reader.extras();
  out.set("gap", gap);
  out.set("name", name);
  EXPECT_EQ(JSONValue(out).restoring(reader.unread()), *file);
  out.set("gap", 6);  // changed by the user since: stays changed
  EXPECT_EQ(JSONValue(out).restoring(reader.unread()).asObject()->find("gap")->asNumber(), 6);
}

}  // namespace
}  // namespace corvel
