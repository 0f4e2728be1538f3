// Inputs the fuzzers found, kept as cases: a sheet read, written back and
// read again gives the same overrides.
#include "CorvelCore/Sheets/SheetCodec.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

TEST(SheetCodecRegressionTests, aSheetReadWrittenAndReadAgainIsTheSame) {
  // A bundle identifier longer than a name may be.
  const std::string longID = "com." + std::string(130, 'r');
  const struct {
    std::string document;
    std::string appName;
  } cases[] = {
      {R"({"app":{"bundleID":")" + longID + R"(","name":""},"hide":["cmd+left"]})",
       longID.substr(0, 120)},
      {R"({"app":{"bundleID":")" + longID + R"(","name":" \n"}})", longID.substr(0, 120)},
      {R"({"app":{"bundleID":")" + longID + R"("}})", longID.substr(0, 120)},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.document);
    const auto sheet = SheetCodec::decode(test.document);
    ASSERT_TRUE(sheet.has_value());
    EXPECT_EQ(sheet->bundleID, longID);
    EXPECT_EQ(sheet->appName, test.appName);
    const auto again = SheetCodec::decode(SheetCodec::encode(*sheet));
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(*again, *sheet);
  }
}

}  // namespace
}  // namespace corvel
