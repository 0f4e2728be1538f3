#include "CorvelCore/Sheets/SheetCodec.h"

#include <gtest/gtest.h>

#include <string>

#include "CorvelCore/Shortcuts/KeySpec.h"

namespace corvel {
namespace {

JSONValue parse(std::string_view text) {
  auto value = JSONValue::decode(text);
  EXPECT_TRUE(value.has_value()) << text;
  return value.value_or(JSONValue());
}

const JSONValue& member(const JSONValue& object, std::string_view key) {
  static const JSONValue missing;
  const JSONValue* found = object.asObject() == nullptr ? nullptr : object.asObject()->find(key);
  return found == nullptr ? missing : *found;
}

// A hand-written sheet of a newer version with entries this version cannot read.
constexpr std::string_view kSheet = R"({
  "version": 3,
  "theme": "dark / light",
  "app": {"bundleID": "com.apple.mail", "name": "Mail", "icon": "mail.png"},
  "rename": {"Cmd+Shift+K": "Clean up", "cmd+q": 5, "warp+9": "Nine", "alt+cmd+p": "Print it"},
  "hide": ["cmd+n", 7, "Cmd+Opt+N", "ctrl+k ctrl+s ctrl+d"],
  "add": [
    {"keys": "ctrl+k ctrl+s", "name": "Save all", "group": "Files", "pinned": true},
    {"keys": "cmd+j", "name": "Jump"},
    {"keys": "cmd+l", "name": "Lock", "group": 4},
    {"keys": "cmd+m", "name": "   "},
    {"keys": "nonsense", "name": "Bad"},
    "just text"
  ]
})";

TEST(SheetCodecTest, EntriesAreReadInTheirCanonicalForm) {
  auto sheet = SheetCodec::decode(kSheet);
  ASSERT_TRUE(sheet.has_value());
  EXPECT_EQ(sheet->version, 3);
  EXPECT_EQ(sheet->bundleID, "com.apple.mail");
  EXPECT_EQ(sheet->appName, "Mail");
  EXPECT_EQ(sheet->renamed, (std::map<std::string, std::string>{{"shift+cmd+k", "Clean up"},
                                                                {"opt+cmd+p", "Print it"}}));
  EXPECT_EQ(sheet->hidden, (std::set<std::string>{"cmd+n", "opt+cmd+n"}));
  ASSERT_EQ(sheet->added.size(), 3u);
  EXPECT_EQ(KeySpec::format(sheet->added[0].keys), "ctrl+k ctrl+s");
  EXPECT_EQ(sheet->added[0].group, "Files");
  EXPECT_EQ(sheet->added[1].group, AddedShortcut::defaultGroup);
  EXPECT_EQ(sheet->added[2].group, AddedShortcut::defaultGroup);
  EXPECT_TRUE(sheet->added[2].extras.empty());
  EXPECT_EQ(sheet->unparsed.size(), 7u);
  EXPECT_EQ(sheet->unparsed[0], parse(R"({"rename":{"cmd+q":5}})"));
  EXPECT_EQ(sheet->unparsed[2], parse(R"({"hide":[7]})"));
  EXPECT_EQ(sheet->unparsed[4], parse(R"({"add":[{"keys":"cmd+m","name":"   "}]})"));
  EXPECT_EQ(sheet->extras,
            (JSONObject{{"theme", "dark / light"}, {"app", JSONObject{{"icon", "mail.png"}}}}));
  EXPECT_FALSE(sheet->isEmpty());
}

TEST(SheetCodecTest, WritingPutsEveryEntryBackAndIsStable) {
  auto sheet = SheetCodec::decode(kSheet);
  ASSERT_TRUE(sheet.has_value());
  const std::string first = SheetCodec::encode(*sheet);
  const JSONValue written = parse(first);
  EXPECT_EQ(member(written, "version"), JSONValue(3));
  EXPECT_EQ(member(written, "theme"), JSONValue("dark / light"));
  EXPECT_NE(first.find("dark / light"), std::string::npos);
  EXPECT_EQ(member(written, "app"),
            parse(R"({"bundleID":"com.apple.mail","name":"Mail","icon":"mail.png"})"));
  EXPECT_EQ(
      member(written, "rename"),
      parse(R"({"shift+cmd+k":"Clean up","opt+cmd+p":"Print it","cmd+q":5,"warp+9":"Nine"})"));
  EXPECT_EQ(member(written, "hide"), parse(R"(["cmd+n","opt+cmd+n",7,"ctrl+k ctrl+s ctrl+d"])"));
  EXPECT_EQ(member(written, "add"), parse(R"([
      {"keys":"ctrl+k ctrl+s","name":"Save all","group":"Files","pinned":true},
      {"keys":"cmd+j","name":"Jump","group":"Added"},
      {"keys":"cmd+l","name":"Lock","group":"Added"},
      {"keys":"cmd+m","name":"   "},
      {"keys":"nonsense","name":"Bad"},
      "just text"])"));

  auto again = SheetCodec::decode(first);
  ASSERT_TRUE(again.has_value());
  EXPECT_EQ(*again, *sheet);
  EXPECT_EQ(SheetCodec::encode(*again), first);
}

TEST(SheetCodecTest, SectionsOfTheWrongTypeAreKeptAsTheyStand) {
  const std::string_view text =
      R"({"app":{"bundleID":"com.a"},"rename":["x"],"hide":{"cmd+n":1},"add":null})";
  auto sheet = SheetCodec::decode(text);
  ASSERT_TRUE(sheet.has_value());
  EXPECT_EQ(sheet->version, 1);
  EXPECT_EQ(sheet->appName, "com.a");
  EXPECT_EQ(sheet->extras.size(), 3u);
  EXPECT_FALSE(sheet->isEmpty());
  const JSONValue written = parse(SheetCodec::encode(*sheet));
  EXPECT_EQ(member(written, "rename"), parse(R"(["x"])"));
  EXPECT_EQ(member(written, "hide"), parse(R"({"cmd+n":1})"));
  EXPECT_EQ(member(written, "add"), JSONValue());
  EXPECT_NE(written.asObject()->find("add"), nullptr);

  // A section the record now has entries for is written from the record.
  sheet->hidden.insert("cmd+w");
  EXPECT_EQ(member(parse(SheetCodec::encode(*sheet)), "hide"), parse(R"(["cmd+w"])"));
}

TEST(SheetCodecTest, AppNamesAndLabelsAreCut) {
  const std::string longName(130, 'm');
  const struct {
    std::string app;
    std::string name;
  } cases[] = {
      {R"({"bundleID":"com.a","name":7})", "com.a"},
      {R"({"bundleID":"com.a","name":")" + longName + R"("})", std::string(120, 'm')},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.app);
    auto sheet = SheetCodec::decode(R"({"app":)" + test.app + "}");
    ASSERT_TRUE(sheet.has_value());
    EXPECT_EQ(sheet->appName, test.name);
    EXPECT_TRUE(sheet->isEmpty());
  }
  auto sheet = SheetCodec::decode(R"({"app":{"bundleID":"com.a"},"rename":{"cmd+k":")" + longName +
                                  R"("}})");
  ASSERT_TRUE(sheet.has_value());
  EXPECT_EQ(sheet->renamed.at("cmd+k"), std::string(120, 'm'));
}

TEST(SheetCodecTest, SheetsThatCannotBeReadAreRefused) {
  const struct {
    std::string_view sheet;
    SheetError error;
  } cases[] = {
      {"", SheetError::notJSON()},
      {R"([{"app":{"bundleID":"com.a"}}])", SheetError::notJSON()},
      {R"({"app":{"bundleID":"com.a"})", SheetError::notJSON()},
      {R"({"version":0,"app":{"bundleID":"com.a"}})", SheetError::unsupportedVersion(0)},
      {R"({"version":-2,"app":{"bundleID":"com.a"}})", SheetError::unsupportedVersion(-2)},
      {R"({"version":1})", SheetError::missingApp()},
      {R"({"app":"com.a"})", SheetError::missingApp()},
      {R"({"app":{"name":"A"}})", SheetError::missingApp()},
      {R"({"app":{"bundleID":5}})", SheetError::missingApp()},
      {R"({"app":{"bundleID":".com.a"}})", SheetError::missingApp()},
      {R"({"app":{"bundleID":""}})", SheetError::missingApp()},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.sheet));
    EXPECT_EQ(SheetCodec::decode(test.sheet).error(), test.error);
  }
}

// Cut short or with a byte changed, a sheet either fails to read or reads as
// overrides that are written and read back unchanged.
TEST(SheetCodecTest, DamagedSheetsReadBackAsWhatTheyGave) {
  const std::string text(kSheet);
  const auto readsBack = [](std::string_view data) {
    const auto sheet = SheetCodec::decode(data);
    if (!sheet) return;
    const auto again = SheetCodec::decode(SheetCodec::encode(*sheet));
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(*again, *sheet);
  };
  for (std::size_t length = 0; length < text.size(); ++length) {
    SCOPED_TRACE(length);
    readsBack(std::string_view(text).substr(0, length));
  }
  for (std::size_t index = 0; index < text.size(); ++index) {
    for (char byte : {'\0', '"', '[', '}', '\xc3', '+'}) {
      SCOPED_TRACE(testing::Message() << index << " " << static_cast<int>(byte));
      std::string damaged = text;
      damaged[index] = byte;
      readsBack(damaged);
    }
  }
}

}  // namespace
}  // namespace corvel
