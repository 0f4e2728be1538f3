// Decimal numbers in parameters, read through the point reader ("x:0"): the
// accepted syntax, rounding at the edges of double, and independence from the
// process's locale.
#include <gtest/gtest.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <random>
#include <string>

#include "CorvelCore/Automation/AutomationParameters.h"

namespace corvel {
namespace {

std::optional<double> readX(const std::string& text) {
  const std::optional<PositionRequest> point = AutomationParameters::point(text + ":0");
  if (!point) return std::nullopt;
  return std::get<PositionRequest::Point>(point->value()).x;
}

// Equal values with equal signs (so -0 differs from 0), or both absent.
bool sameNumber(std::optional<double> a, std::optional<double> b) {
  if (!a || !b) return a.has_value() == b.has_value();
  return std::memcmp(&*a, &*b, sizeof(double)) == 0;
}

TEST(AutomationNumberTest, ReadsDecimalNumbersOnly) {
  constexpr double largest = std::numeric_limits<double>::max();
  constexpr double smallest = std::numeric_limits<double>::denorm_min();
  const std::pair<std::string, std::optional<double>> cases[] = {
      {"12.5", 12.5},
      {"+1e3", 1000},
      {".5", 0.5},
      {"1.", 1},
      {"-0", -0.0},
      {"1E-2", 0.01},
      {"0.1", 0.1},
      {"3e-324", smallest},
      {"2.4703282292062328e-324", smallest},
      {"1e-310", 1e-310},
      {"0e999999", 0},
      {"1.7976931348623158e308", largest},
      // Too large or too small for a double.
      {"1.7976931348623159e308", std::nullopt},
      {"1e400", std::nullopt},
      {"2e-324", std::nullopt},
      {"0.0000000000000000000001e-310", std::nullopt},
      // Not a decimal number.
      {"", std::nullopt},
      {".", std::nullopt},
      {"-.e1", std::nullopt},
      {"1e", std::nullopt},
      {"1e+", std::nullopt},
      {"1.2.3", std::nullopt},
      {"1,5", std::nullopt},
      {" 1", std::nullopt},
      {"++1", std::nullopt},
      {"+-1", std::nullopt},
      {"-+1", std::nullopt},
      {"0x10", std::nullopt},
      {"0x1p3", std::nullopt},
      {"inf", std::nullopt},
      {"-Infinity", std::nullopt},
      {"nan", std::nullopt},
  };
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(text);
    EXPECT_TRUE(sameNumber(readX(text), expected)) << readX(text).value_or(-1);
  }
}

TEST(AutomationNumberTest, ReadsAPointWhateverTheLocale) {
  const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr) {
    GTEST_SKIP() << "no de_DE.UTF-8 locale, whose decimal point is a comma";
  }
  const std::optional<double> point = readX("1.5");
  const std::optional<double> comma = readX("1,5");
  std::setlocale(LC_NUMERIC, previous.c_str());
  EXPECT_TRUE(sameNumber(point, 1.5));
  EXPECT_EQ(comma, std::nullopt);
}

#if defined(__cpp_lib_to_chars)
// Where the standard library reads doubles itself, the reader must agree
// with it on every input: near the limits of double, with long significands,
// and on texts that are almost numbers.
TEST(AutomationNumberTest, AgreesWithFromChars) {
  std::mt19937_64 random(15);
  const auto pick = [&random](std::size_t count) { return random() % count; };
  const std::string_view pieces = "0123456789000.eE+-";
  const int exponents[] = {-345, -324, -310, -308, 0, 300, 308, 309};
  for (int round = 0; round < 200'000; ++round) {
    std::string text = pick(4) == 0 ? "-" : "";
    if (round % 3 == 0) {
      for (std::size_t length = 1 + pick(10); length > 0; --length)
        text += pieces[pick(pieces.size())];
    } else if (round % 3 == 1) {
      // Whole numbers on both sides of the most digits a double holds exactly.
      for (std::size_t digits = 1 + pick(20); digits > 0; --digits)
        text += static_cast<char>('0' + pick(10));
    } else {
      for (std::size_t digits = 1 + pick(25); digits > 0; --digits) {
        text += static_cast<char>('0' + pick(10));
        if (pick(8) == 0) text += '.';
      }
      text += "e" + std::to_string(exponents[pick(8)] + static_cast<int>(pick(30)) - 15);
    }
    // A "+" may lead, but not before a "-".
    std::string_view body = text;
    if (body.starts_with('+') && !body.starts_with("+-")) body.remove_prefix(1);
    std::optional<double> expected;
    double value = 0;
    const auto [end, error] = std::from_chars(body.data(), body.data() + body.size(), value);
    if (error == std::errc() && end == body.data() + body.size() && std::isfinite(value)) {
      expected = value;
    }
    ASSERT_TRUE(sameNumber(readX(text), expected)) << text;
  }
}
#endif

}  // namespace
}  // namespace corvel
