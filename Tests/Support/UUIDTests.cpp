#include "CorvelCore/Support/UUID.h"

#include <gtest/gtest.h>

namespace corvel {
namespace {

TEST(UUIDTest, ReadsEitherCaseWritesUpperCase) {
  const auto lower = UUID::parse("0f8fad5b-d9cb-469f-a165-70867728950e");
  const auto upper = UUID::parse("0F8FAD5B-D9CB-469F-A165-70867728950E");
  ASSERT_TRUE(lower && upper);
  EXPECT_EQ(*lower, *upper);
  EXPECT_EQ(lower->text(), "0F8FAD5B-D9CB-469F-A165-70867728950E");
}

TEST(UUIDTest, RefusesOtherShapes) {
  const char* cases[] = {"",
                         "0f8fad5b-d9cb-469f-a165-70867728950",
                         "0f8fad5bd9cb469fa16570867728950e0000",
                         "0f8fad5b-d9cb-469f-a165-70867728950g",
                         "{0f8fad5b-d9cb-469f-a165-70867728950e}",
                         "0f8fad5b_d9cb-469f-a165-70867728950e"};
  for (const char* text : cases) {
    SCOPED_TRACE(text);
    EXPECT_FALSE(UUID::parse(text).has_value());
  }
}

}  // namespace
}  // namespace corvel
