// Inputs the fuzzers found, kept as cases: a sheet read, written back and
// read again gives the same overrides.
#include "CorvelCore/Sheets/SheetCodec.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

TEST(SheetCodecRegressionTest, ASheetReadWrittenAndReadAgainIsTheSame) {
  // A bundle identifier longer than a name may be.
  const std::string longID = "com." + std::string(130, 'r');
  const struct {
    std::string document;
    std::string appName;
  } cases[] = {
      // An app without a usable name goes by its whole bundle identifier,
      // and a name that is that identifier is not cut either.
      {R"({"app":{"bundleID":")" + longID + R"(","name":""},"hide":["cmd+left"]})", longID},
      {R"({"app":{"bundleID":")" + longID + R"(","name":" \n"}})", longID},
      {R"({"app":{"bundleID":")" + longID + R"("}})", longID},
      {R"({"app":{"bundleID":")" + longID + R"(","name":")" + longID + R"("}})", longID},
      {R"({"app":{"bundleID":")" + longID + R"(","name":")" + longID + R"(s"}})",
       longID.substr(0, 120)},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.document);
    const auto sheet = SheetCodec::decode(test.document);
    ASSERT_TRUE(sheet.has_value());
    EXPECT_EQ(sheet->appName, test.appName);
    const auto again = SheetCodec::decode(SheetCodec::encode(*sheet));
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(*again, *sheet);
  }
}

// Two "rename" members for one shortcut, of which only the label can be
// read: spelled canonically, the unread one would be written under the
// label's key, so the label wins; spelled otherwise, both are kept. Either
// way the sheet reads back as it was read.
TEST(SheetCodecRegressionTest, ALabelWinsOverAnUnreadValueWrittenUnderItsKey) {
  const struct {
    std::string_view document;
    std::string_view written;
  } cases[] = {
      {R"({"app":{"bundleID":"g"},"rename":{"Cmd+Shift+K":"","shift+cmd+k":8}})",
       R"({"shift+cmd+k":""})"},
      {R"({"app":{"bundleID":"g"},"rename":{"shift+cmd+k":"","Cmd+Shift+K":8}})",
       R"({"shift+cmd+k":"","Cmd+Shift+K":8})"},
      {R"({"app":{"bundleID":"g"},"rename":{"cmd+k":[],"Cmd+K":"Go","Alt+Cmd+K":{}}})",
       R"({"cmd+k":"Go","Alt+Cmd+K":{}})"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.document));
    const auto sheet = SheetCodec::decode(test.document);
    ASSERT_TRUE(sheet.has_value());
    const std::string text = SheetCodec::encode(*sheet);
    const auto written = JSONValue::decode(text);
    ASSERT_TRUE(written.has_value());
    const JSONValue* rename = written->asObject()->find("rename");
    ASSERT_NE(rename, nullptr);
    EXPECT_EQ(*rename, JSONValue::decode(test.written).value_or(JSONValue()));
    EXPECT_EQ(SheetCodec::decode(text), sheet);
  }
}

}  // namespace
}  // namespace corvel
