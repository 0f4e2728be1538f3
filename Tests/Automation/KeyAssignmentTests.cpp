#include "CorvelCore/Automation/KeyAssignment.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

using A = KeyAssignment;

std::string repeated(std::string_view piece, int count) {
  std::string text;
  for (int index = 0; index < count; ++index) text += piece;
  return text;
}

TEST(KeyAssignmentTest, ReadsEveryKind) {
  const std::pair<std::string, std::optional<KeyAssignment>> cases[] = {
      {"s:star.fill", A::symbol("star.fill")},
      {"symbol:star", A::symbol("star")},
      {"s:Star.Fill", std::nullopt},
      {"s:.star", std::nullopt},
      {"s:star.", std::nullopt},
      {"s:", std::nullopt},
      {"s:star.fill|Go", A::symbolText("star.fill", "Go")},
      {"s:star|a|b", A::symbolText("star", "a|b")},
      {"symtext:star| Hi\n", A::symbolText("star", "Hi")},
      {"symtext:star", std::nullopt},
      {"s:star|", std::nullopt},
      {"s:star| \t", std::nullopt},
      {"s:|Go", std::nullopt},
      {"a:com.apple.Safari", A::app("com.apple.Safari")},
      {"app:com.apple.Safari", A::app("com.apple.Safari")},
      {"a:not a bundle", std::nullopt},
      {"a:", std::nullopt},
      {"a:.com.apple", std::nullopt},
      {"10:30", A::text("10:30")},
      {"S:star", A::text("S:star")},
      {":", A::text(":")},
      {"Hello", A::text("Hello")},
      {"  Hi\tthere\r\n ", A::text("Hi there")},
      {"two\u2028lines", A::text("two lines")},
      {"A\u200Bb\u202E", A::text("Ab")},
      {"text:s:star", A::text("s:star")},
      {"text:-", A::text("-")},
      {"text:", std::nullopt},
      {"", std::nullopt},
      {"\u00A0 \u3000", std::nullopt},
      {"\u200B\u0001", std::nullopt},
      {repeated("x", 120), A::text(repeated("x", 120))},
      {repeated("x", 121), std::nullopt},
      {" " + repeated("👍🏽", 120) + " ", A::text(repeated("👍🏽", 120))},
      {repeated("👍🏽", 121), std::nullopt},
      {"e" + repeated("\u0301", 40), A::text("e" + repeated("\u0301", 40))},
      {"\xff", A::text("\xef\xbf\xbd")},
  };
  for (const auto& [value, expected] : cases) {
    SCOPED_TRACE(value);
    EXPECT_EQ(A::parse(value), expected);
  }
}

TEST(KeyAssignmentTest, WritesWhatReadsBack) {
  const std::pair<KeyAssignment, std::string_view> cases[] = {
      {A::text("Hello"), "Hello"},
      {A::text("10:30"), "10:30"},
      {A::text("x|y"), "x|y"},
      {A::text("-"), "text:-"},
      {A::text("--"), "--"},
      {A::text("s:star"), "text:s:star"},
      {A::text("a:com.apple.Safari"), "text:a:com.apple.Safari"},
      {A::text("symtext:a|b"), "text:symtext:a|b"},
      {A::text("text:x"), "text:text:x"},
      {A::symbol("star.fill"), "s:star.fill"},
      {A::app("com.apple.Safari"), "a:com.apple.Safari"},
      {A::symbolText("star", "Go|on"), "s:star|Go|on"},
  };
  for (const auto& [assignment, written] : cases) {
    SCOPED_TRACE(std::string(written));
    EXPECT_EQ(assignment.written(), written);
    EXPECT_EQ(A::parse(assignment.written()), assignment);
  }
}

}  // namespace
}  // namespace corvel
