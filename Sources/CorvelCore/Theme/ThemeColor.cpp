#include "CorvelCore/Theme/ThemeColor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvel {

namespace {

std::optional<unsigned> hexDigit(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
  if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A' + 10);
  return std::nullopt;
}

// A channel as the byte it is written as. NaN would make the rounding
// meaningless, so it counts as the lowest value.
std::uint32_t channelByte(double channel) {
  if (std::isnan(channel)) return 0;
  const double clamped = std::clamp(channel, 0.0, 1.0);
  return static_cast<std::uint32_t>(std::lround(clamped * 255.0));
}

// The sRGB transfer function undone, for luminance.
double linearised(double channel) {
  const double c = std::isnan(channel) ? 0.0 : std::clamp(channel, 0.0, 1.0);
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

}  // namespace

std::optional<ThemeColor> ThemeColor::parse(std::string_view text) {
  if (text.empty() || text.front() != '#') return std::nullopt;
  const std::string_view digits = text.substr(1);
  if (digits.size() != 3 && digits.size() != 6 && digits.size() != 8) return std::nullopt;
  std::array<unsigned, 8> values{};
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const auto digit = hexDigit(digits[i]);
    if (!digit) return std::nullopt;
    values[i] = *digit;
  }
  if (digits.size() == 3) {
    return ThemeColor{values[0] * 17 / 255.0, values[1] * 17 / 255.0, values[2] * 17 / 255.0, 1};
  }
  const auto byte = [&](std::size_t index) {
    return (values[2 * index] * 16 + values[2 * index + 1]) / 255.0;
  };
  return ThemeColor{byte(0), byte(1), byte(2), digits.size() == 8 ? byte(3) : 1.0};
}

std::string ThemeColor::hex() const {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string text = "#";
  const auto append = [&](std::uint32_t byte) {
    text += digits[byte >> 4];
    text += digits[byte & 0xF];
  };
  append(channelByte(r));
  append(channelByte(g));
  append(channelByte(b));
  if (const std::uint32_t alpha = channelByte(a); alpha != 255) append(alpha);
  return text;
}

std::uint32_t ThemeColor::rgb() const {
  return channelByte(r) << 16 | channelByte(g) << 8 | channelByte(b);
}

std::uint32_t ThemeColor::rgba() const { return rgb() << 8 | channelByte(a); }

double ThemeColor::relativeLuminance() const {
  return 0.2126 * linearised(r) + 0.7152 * linearised(g) + 0.0722 * linearised(b);
}

double ThemeColor::contrast(const ThemeColor& first, const ThemeColor& second) {
  const double one = first.relativeLuminance();
  const double two = second.relativeLuminance();
  return (std::max(one, two) + 0.05) / (std::min(one, two) + 0.05);
}

ThemeColor ThemeColor::composited(const ThemeColor& background) const {
  const auto unit = [](double channel) {
    return std::isnan(channel) ? 0.0 : std::clamp(channel, 0.0, 1.0);
  };
  const double alpha = unit(a);
  const auto blend = [&](double top, double bottom) {
    return unit(top) * alpha + unit(bottom) * (1 - alpha);
  };
  return {blend(r, background.r), blend(g, background.g), blend(b, background.b), 1};
}

}  // namespace corvel
