#include "CorvelCore/Theme/JSONString.h"
#include "CorvelCore/Theme/JSONValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace corvel {
namespace {

JSONValue decoded(std::string_view text) {
  auto value = JSONValue::decode(text);
  EXPECT_TRUE(value.has_value()) << text;
  return value.value_or(JSONValue());
}

TEST(JSONValueTest, DecodesEveryCase) {
  struct Case {
    std::string_view text;
    JSONValue expected;
  };
  const Case cases[] = {
      {R"("a\/b\u00e9")", JSONValue("a/b\xC3\xA9")},
      {"-12.5e1", JSONValue(-125.0)},
      {"true", JSONValue(true)},
      {"false", JSONValue(false)},
      {"null", JSONValue()},
      {R"({"b":1,"a":[true,null,"x"]})",
       JSONValue(JSONObject{{"a", JSONArray{true, nullptr, "x"}}, {"b", 1}})},
      {"[]", JSONValue(JSONArray{})},
      {" {} ", JSONValue(JSONObject{})},
      // Integers beyond 64 bits still read, as doubles.
      {"123456789012345678901234567890", JSONValue(1.2345678901234568e29)},
      // A repeated key means its last value.
      {R"({"a":1,"a":2})", JSONValue(JSONObject{{"a", 2}})},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(decoded(c.text), c.expected);
  }
}

TEST(JSONValueTest, RefusesMalformedText) {
  const std::string_view cases[] = {
      "",      "   ",   "{",          "[1,]",        R"({"a":1,})", "\"\xED\xA0\x80\"",
      "[1] x", "[1]]",  "{} {}",      "nul",         "tru",         "01",
      "1.",    "'a'",   R"("\x")",    "\"a\nb\"",    "[\"\xFF\"]",  "\xEF\xBB\xBF{}",
      "NaN",   "[1 2]", R"({"a" 1})", "\"\xC0\xAF\""};
  for (std::string_view text : cases) {
    SCOPED_TRACE(testing::PrintToString(std::string(text)));
    auto value = JSONValue::decode(text);
    ASSERT_FALSE(value.has_value());
    EXPECT_EQ(value.error(), JSONError::notJSONValue);
    EXPECT_EQ(message(value.error()), "Not a JSON value");
  }
}

TEST(JSONValueTest, NestingIsBounded) {
  const std::string deepest =
      std::string(JSONValue::maxDepth, '[') + std::string(JSONValue::maxDepth, ']');
  EXPECT_TRUE(JSONValue::decode(deepest).has_value());
  const std::string deeper = "[" + deepest + "]";
  EXPECT_FALSE(JSONValue::decode(deeper).has_value());
  EXPECT_FALSE(JSONValue::decode(std::string(100000, '[')).has_value());
}

TEST(JSONValueTest, WritesPrettySortedAndUnescapedSlashes) {
  const JSONValue value(JSONObject{
      {"zeta", JSONArray{1, 2.5, -0.0, 1e300, 0.1}},
      {"alpha", JSONObject{{"path", "a/b"}, {"quote", "say \"hi\"\n\t\x01"}}},
      {"empty", JSONObject{}},
      {"list", JSONArray{}},
      {"\xC3\xA9", true},
      {"Z", nullptr},
  });
  EXPECT_EQ(value.encoded().value_or(""),
            "{\n"
            "  \"Z\" : null,\n"
            "  \"alpha\" : {\n"
            "    \"path\" : \"a/b\",\n"
            "    \"quote\" : \"say \\\"hi\\\"\\n\\t\\u0001\"\n"
            "  },\n"
            "  \"empty\" : {},\n"
            "  \"list\" : [],\n"
            "  \"zeta\" : [\n"
            "    1,\n"
            "    2.5,\n"
            "    -0,\n"
            "    1e+300,\n"
            "    0.1\n"
            "  ],\n"
            "  \"\xC3\xA9\" : true\n"
            "}");
}

TEST(JSONValueTest, CompactTextShowsWhatEncodingRefuses) {
  const JSONValue value(JSONArray{1, JSONObject{{"x", std::numeric_limits<double>::infinity()}}});
  EXPECT_FALSE(value.isEncodable());
  ASSERT_FALSE(value.encoded().has_value());
  EXPECT_EQ(value.encoded().error(), JSONError::notEncodable);
  EXPECT_EQ(value.compactText(), "[1,{\"x\":inf}]");
  EXPECT_EQ(JSONValue(std::nan("")).compactText(), "nan");
  // Compact text is for messages: a string bare, keys sorted, slashes as they are.
  EXPECT_EQ(JSONValue("plain text").compactText(), "plain text");
  EXPECT_EQ(JSONValue(JSONObject{{"b", "x/y"}, {"a", JSONArray{false}}}).compactText(),
            "{\"a\":[false],\"b\":\"x/y\"}");
}

TEST(JSONValueTest, TextsKeepTheirBytesOnEitherSideOfTheInlineLimit) {
  const std::size_t limit = JSONString::inlineCapacity;
  const std::string texts[] = {"", std::string(limit, 'a'), std::string(limit + 1, 'b'),
                               std::string(limit - 1, 'c') + '\0',
                               std::string(limit, 'd') + "\xC3\xA9"};
  for (const std::string& text : texts) {
    SCOPED_TRACE(text.size());
    JSONValue value(text);
    ASSERT_NE(value.asString(), nullptr);
    EXPECT_EQ(value.asString()->view(), text);
    const JSONValue copy = value;
    const JSONValue moved = std::move(value);
    EXPECT_EQ(copy, moved);
    EXPECT_EQ(copy.hash(), JSONValue(std::string_view(text)).hash());
    EXPECT_EQ(decoded(moved.encoded().value_or("")), copy);
    JSONValue assigned("something else, long enough to be kept on the heap");
    assigned = copy;
    EXPECT_EQ(*assigned.asString(), text);
  }
}

TEST(JSONValueTest, EqualityAndHashAgree) {
  EXPECT_EQ(JSONValue(0.0), JSONValue(-0.0));
  EXPECT_EQ(JSONValue(0.0).hash(), JSONValue(-0.0).hash());
  EXPECT_NE(JSONValue(1), JSONValue(true));
  EXPECT_NE(JSONValue("1"), JSONValue(1));
  EXPECT_NE(JSONValue(JSONArray{}), JSONValue(JSONObject{}));
  EXPECT_NE(JSONValue(JSONArray{}).hash(), JSONValue(JSONObject{}).hash());
  EXPECT_TRUE(JSONValue(JSONObject{}).isObject());
  EXPECT_FALSE(JSONValue(JSONArray{}).isObject());
}

TEST(JSONValueTest, RestoringPutsUnreadValuesBackOnlyWhereUnchanged) {
  const JSONValue written(JSONObject{
      {"gap", 4},
      {"plate", JSONObject{{"radius", 8}, {"fill", "#FFFFFF"}}},
      {"name", "Changed"},
      {"frame", "not an object"},
  });
  const std::map<std::string, UnreadValue> unread{
      {"gap", {"12", 4}},                             // restored
      {"plate.radius", {"big", 8}},                   // restored, nested
      {"name", {JSONArray{}, "Original"}},            // field changed since: kept
      {"frame.width", {"w", 1}},                      // parent no longer an object
      {"missing.child", {"x", 1}},                    // parent missing
      {"newKey", {"raw", nullptr}},                   // absent reads as null: added
      {"..plate...fill", {JSONArray{1}, "#FFFFFF"}},  // empty pieces dropped
  };
  const JSONValue restored = written.restoring(unread);
  EXPECT_EQ(restored, JSONValue(JSONObject{
                          {"gap", "12"},
                          {"plate", JSONObject{{"radius", "big"}, {"fill", JSONArray{1}}}},
                          {"name", "Changed"},
                          {"frame", "not an object"},
                          {"newKey", "raw"},
                      }));
}

}  // namespace
}  // namespace corvel
