#include "CorvelCore/Automation/AutomationParameters.h"

#include <locale.h>
#include <stdlib.h>
#if defined(__APPLE__)
#include <xlocale.h>
#endif

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

#include "CorvelCore/Automation/KeyName.h"
#include "CorvelCore/Automation/ParameterText.h"
#include "CorvelCore/Automation/TriggerText.h"
#include "CorvelCore/Layers/LayerNames.h"
#include "CorvelCore/Layers/LayerText.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {

namespace {

template <class T>
using Read = AutomationParameters::Read<T>;

std::unexpected<AutomationError> bad(std::string_view parameter) {
  return std::unexpected(AutomationError::badValue(std::string(parameter)));
}

// The syntax of a decimal number, over the whole text: an optional "-",
// digits with at most one point (at least one digit), then optionally "e" or
// "E", an optional sign and digits. Tells whether a digit of the significand
// is not 0; nothing when the text is not such a number.
std::optional<bool> decimalSyntax(std::string_view text) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  std::size_t at = text.starts_with('-') ? 1 : 0;
  bool digits = false;
  bool nonZero = false;
  bool point = false;
  for (; at < text.size(); ++at) {
    if (isDigit(text[at])) {
      digits = true;
      nonZero = nonZero || text[at] != '0';
    } else if (text[at] == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  if (!digits) return std::nullopt;
  if (at == text.size()) return nonZero;
  if (text[at] != 'e' && text[at] != 'E') return std::nullopt;
  ++at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  if (at == text.size()) return std::nullopt;
  for (; at < text.size(); ++at) {
    if (!isDigit(text[at])) return std::nullopt;
  }
  return nonZero;
}

// A decimal floating-point number: an optional sign, digits with an optional
// point, an optional exponent, rounded to the nearest double. Infinite,
// not-a-number and out-of-range values are nothing; a value too small for a
// double is out of range unless it is written as zero.
std::optional<double> finiteNumber(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  const std::optional<bool> nonZero = decimalSyntax(text);
  if (!nonZero) return std::nullopt;
  // A whole number of up to 15 digits (widths, offsets, most points) is
  // exact in a double: read directly, it needs no rounding and no copy.
  const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
  if (!digits.empty() && digits.size() <= 15 &&
      std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    std::int64_t whole = 0;
    for (char c : digits) whole = whole * 10 + (c - '0');
    return text.starts_with('-') ? -static_cast<double>(whole) : static_cast<double>(whole);
  }
  // strtod rounds exactly as std::from_chars does, which libc++ before 20
  // (what Xcode ships) lacks for double; the "C" locale keeps its decimal
  // point a ".", whatever the process's locale says.
  static const locale_t cLocale = ::newlocale(LC_NUMERIC_MASK, "C", nullptr);
  if (cLocale == nullptr) return std::nullopt;
  const std::string terminated(text);
  char* end = nullptr;
  const double value = ::strtod_l(terminated.c_str(), &end, cLocale);
  if (end != terminated.c_str() + terminated.size()) return std::nullopt;
  if (!std::isfinite(value) || (value == 0 && *nonZero)) return std::nullopt;
  return value;
}

// General category Cc: C0 controls, delete and the C1 controls.
bool isControl(char32_t scalar) { return scalar < 0x20 || (scalar >= 0x7F && scalar <= 0x9F); }

// Names are a few bytes long: compared by hand, they cost less than the
// calls to memcmp the standard comparisons make. Byte order, as theirs.
bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t index = 0; index < a.size(); ++index) {
    if (a[index] != b[index]) return false;
  }
  return true;
}

bool nameBefore(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t index = 0; index < common; ++index) {
    if (a[index] != b[index]) {
      return static_cast<unsigned char>(a[index]) < static_cast<unsigned char>(b[index]);
    }
  }
  return a.size() < b.size();
}

// Whether a set of lengths, as bits, may hold the name's: names of 64
// bytes or more have no bit and are always compared.
bool mayHoldLength(std::uint64_t lengths, std::string_view name) {
  return name.size() >= 64 || (lengths & AutomationParameters::lengthBit(name)) != 0;
}

// The spelling in `known` of the name, compared without regard to case.
std::optional<std::string_view> knownName(std::string_view name,
                                          const AutomationParameters::KnownNames& known) {
  const auto lookUp = [&](std::string_view compared) -> std::optional<std::string_view> {
    if (!mayHoldLength(known.lengths, compared)) return std::nullopt;
    for (std::string_view candidate : known.names) {
      if (ParameterText::equalsIgnoringASCIICase(compared, candidate)) return candidate;
    }
    return std::nullopt;
  };
  // The known names are ASCII, so only an ASCII name matches one as it is;
  // any other may still lowercase to one (the Kelvin sign is a "k").
  if (auto found = lookUp(name)) return found;
  if (std::all_of(name.begin(), name.end(),
                  [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
    return std::nullopt;
  }
  const std::string lowered = ParameterText::lowercased(name);
  return lookUp(lowered);
}

std::string_view trimmedValue(std::string_view value) {
  return ParameterText::trimBlanksAndLineBreaks(value);
}

}  // namespace

bool AutomationParameters::take(const AutomationPairView& pair, const KnownNames& known,
                                bool takesKeys, std::optional<AutomationError>* fault) {
  const auto refuse = [fault](AutomationError error) {
    if (fault != nullptr) *fault = std::move(error);
    return false;
  };
  if (auto canonical = knownName(pair.first, known)) {
    if (raw(*canonical)) return refuse(AutomationError::badValue(std::string(*canonical)));
    // Each known name is kept at most once, so they all have room.
    values_[valueCount_++] = Entry(*canonical, pair.second);
    valueLengths_ |= lengthBit(*canonical);
    return true;
  }
  if (!takesKeys) return true;
  std::optional<std::string> key = KeyName::canonical(pair.first);
  if (!key) return true;
  const auto place = std::lower_bound(
      keys_.begin(), keys_.end(), *key,
      [](const auto& entry, std::string_view sought) { return nameBefore(entry.first, sought); });
  if (place != keys_.end() && sameName(place->first, *key)) {
    return refuse(AutomationError::badValue(std::move(*key)));
  }
  if (keys_.size() >= AutomationCommand::maxKeys) return refuse(AutomationError::tooLarge());
  keys_.emplace(place, std::move(*key), pair.second);
  return true;
}

std::expected<AutomationParameters, AutomationError> AutomationParameters::make(
    std::span<const AutomationPairView> pairs, const KnownNames& known, bool takesKeys) {
  AutomationParameters parameters;
  if (takesKeys) parameters.keys_.reserve(std::min(pairs.size(), AutomationCommand::maxKeys));
  // Whether the pairs hold a fault does not depend on their order, so they
  // are taken as given; only which fault is the error does, and for that
  // they are taken again in name order.
  const bool clean = std::all_of(pairs.begin(), pairs.end(), [&](const AutomationPairView& pair) {
    return parameters.take(pair, known, takesKeys, nullptr);
  });
  if (clean) return parameters;

  // UTF-8 byte order is code-point order; equal names keep their order.
  std::vector<const AutomationPairView*> sorted(pairs.size());
  for (std::size_t index = 0; index < pairs.size(); ++index) sorted[index] = &pairs[index];
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const AutomationPairView* a, const AutomationPairView* b) {
                     return nameBefore(a->first, b->first);
                   });
  parameters.valueCount_ = 0;
  parameters.valueLengths_ = 0;
  parameters.keys_.clear();
  std::optional<AutomationError> fault;
  for (const AutomationPairView* pair : sorted) {
    if (!parameters.take(*pair, known, takesKeys, &fault) && fault) {
      return std::unexpected(std::move(*fault));
    }
  }
  return parameters;
}

std::optional<std::string_view> AutomationParameters::raw(std::string_view parameter) const {
  // Most parameters a reader asks for were not given.
  if (!mayHoldLength(valueLengths_, parameter)) return std::nullopt;
  for (const auto& [name, value] : values()) {
    if (sameName(name, parameter)) return value;
  }
  return std::nullopt;
}

std::string AutomationParameters::oneLine(std::string_view text) {
  // Printable ASCII has nothing to clean or flatten.
  if (std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; })) {
    return std::string(ParameterText::trimBlanks(text));
  }
  std::string cleaned = LayerText::clean(text).text;
  std::string flat;
  flat.reserve(cleaned.size());
  std::size_t offset = 0;
  while (offset < cleaned.size()) {
    std::size_t start = offset;
    char32_t scalar = UTF8::next(cleaned, offset);
    if (scalar == U'\t' || ParameterText::isLineBreak(scalar)) {
      flat.push_back(' ');
    } else {
      flat.append(cleaned, start, offset - start);
    }
  }
  return std::string(ParameterText::trimBlanks(flat));
}

Read<std::string> AutomationParameters::name(std::string_view parameter) const {
  const std::optional<std::string_view> value = raw(parameter);
  if (!value) return std::nullopt;
  std::string text = oneLine(*value);
  if (text.empty()) return bad(parameter);
  return text;
}

Read<bool> AutomationParameters::boolean(std::string_view parameter) const {
  struct Word {
    std::string_view word;
    bool value;
  };
  static constexpr std::array<Word, 9> words{{
      {"1", true},
      {"true", true},
      {"yes", true},
      {"on", true},
      {"", true},
      {"0", false},
      {"false", false},
      {"no", false},
      {"off", false},
  }};
  const std::optional<std::string_view> value = raw(parameter);
  if (!value) return std::nullopt;
  std::string lowered = ParameterText::lowercased(trimmedValue(*value));
  for (const auto& word : words) {
    if (word.word == lowered) return word.value;
  }
  return bad(parameter);
}

Read<std::int64_t> AutomationParameters::integer(std::string_view parameter,
                                                 ClosedRange<std::int64_t> range) const {
  const std::optional<std::string_view> value = raw(parameter);
  if (!value) return std::nullopt;
  std::string_view text = trimmedValue(*value);
  bool negative = false;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  if (text.empty()) return bad(parameter);
  // Digits beyond what 64 bits hold still make a number: it lies past every
  // bound, so it reads as the upper bound or is refused as below the lower.
  std::int64_t magnitude = 0;
  bool overflow = false;
  for (char c : text) {
    if (c < '0' || c > '9') return bad(parameter);
    int digit = c - '0';
    if (magnitude > (std::numeric_limits<std::int64_t>::max() - digit) / 10) overflow = true;
    if (!overflow) magnitude = magnitude * 10 + digit;
  }
  if (overflow) {
    if (negative) return bad(parameter);
    return range.upper;
  }
  std::int64_t number = negative ? -magnitude : magnitude;
  if (number < range.lower) return bad(parameter);
  return std::min(number, range.upper);
}

Read<double> AutomationParameters::number(std::string_view parameter,
                                          ClosedRange<double> range) const {
  const std::optional<std::string_view> value = raw(parameter);
  if (!value) return std::nullopt;
  std::optional<double> number = finiteNumber(trimmedValue(*value));
  if (!number || *number < range.lower) return bad(parameter);
  return std::min(*number, range.upper);
}

Read<std::string> AutomationParameters::file(std::string_view parameter) const {
  const std::optional<std::string_view> value = raw(parameter);
  if (!value) return std::nullopt;
  if (!value->starts_with('/')) return bad(parameter);
  std::size_t offset = 0;
  while (offset < value->size()) {
    if (isControl(UTF8::next(*value, offset))) return bad(parameter);
  }
  return std::string(*value);
}

Read<std::string> AutomationParameters::bundleID(std::string_view parameter) const {
  const std::optional<std::string_view> value = raw(parameter);
  if (!value) return std::nullopt;
  std::string_view text = trimmedValue(*value);
  if (!LayerNames::isBundleID(text)) return bad(parameter);
  return std::string(text);
}

Read<FillMode> AutomationParameters::fill() const {
  struct Word {
    std::string_view word;
    FillMode mode;
  };
  static constexpr std::array<Word, 4> words{{
      {"visible", FillMode::visible},
      {"dimmed", FillMode::dimmed},
      {"dim", FillMode::dimmed},
      {"blank", FillMode::blank},
  }};
  if (const std::optional<std::string_view> value = raw("fill")) {
    std::string lowered = ParameterText::lowercased(trimmedValue(*value));
    for (const auto& word : words) {
      if (word.word == lowered) return word.mode;
    }
    return bad("fill");
  }
  auto blank = boolean("blank");
  if (!blank) return std::unexpected(blank.error());
  if (*blank && **blank) return FillMode::blank;
  return std::nullopt;
}

Read<PositionRequest> AutomationParameters::position() const {
  const std::optional<std::string_view> value = raw("position");
  if (!value) return std::nullopt;
  std::string_view text = trimmedValue(*value);
  // Names compare lowercased with blanks, "-" and "_" left out, so that
  // "top-left", "Top Left" and "topleft" all name the same place. ASCII,
  // whose only blanks are the tab and the space, is squeezed in place.
  if (UTF8::isASCII(text)) {
    // Only the first `length` bytes of it are filled and read.
    std::array<char, 16> squeezed;
    std::size_t length = 0;
    for (char c : text) {
      if (c == '-' || c == '_' || c == ' ' || c == '\t') continue;
      if (length == squeezed.size()) break;
      squeezed[length++] = ParameterText::lowerASCII(c);
    }
    const std::string_view name(squeezed.data(), length);
    if (name == "centre") return PositionRequest::named(NamedPosition::center);
    for (const auto& named : namedPositionNames) {
      if (ParameterText::equalsIgnoringASCIICase(name, named.raw)) {
        return PositionRequest::named(named.value);
      }
    }
    if (auto point = AutomationParameters::point(text)) return *point;
    return bad("position");
  }
  std::string lowered = ParameterText::lowercased(text);
  std::string squeezed;
  std::size_t offset = 0;
  while (offset < lowered.size()) {
    std::size_t start = offset;
    char32_t scalar = UTF8::next(lowered, offset);
    if (scalar == U'-' || scalar == U'_' || ParameterText::isBlank(scalar)) continue;
    squeezed.append(lowered, start, offset - start);
  }
  if (squeezed == "centre") return PositionRequest::named(NamedPosition::center);
  for (const auto& name : namedPositionNames) {
    if (ParameterText::equalsIgnoringASCIICase(squeezed, name.raw))
      return PositionRequest::named(name.value);
  }
  if (auto point = AutomationParameters::point(text)) return *point;
  return bad("position");
}

Read<ScreenRequest> AutomationParameters::screen() const {
  const std::optional<std::string_view> value = raw("screen");
  if (!value) return std::nullopt;
  // Digits are looked for in the cleaned text: a name that cleans to digits
  // ("0" and an invisible character) would be written into a link as those
  // digits and read back as a display number, so it is one from the start.
  std::string name = oneLine(trimmedValue(*value));
  if (name.empty()) return bad("screen");
  if (std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    std::uint32_t number = 0;
    auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (error != std::errc() || end != name.data() + name.size()) return bad("screen");
    return ScreenRequest::id(number);
  }
  return ScreenRequest::name(std::move(name));
}

Read<LayerTrigger> AutomationParameters::trigger(std::string_view parameter) const {
  const std::optional<std::string_view> value = raw(parameter);
  if (!value) return std::nullopt;
  std::optional<LayerTrigger> trigger = TriggerText::parse(*value);
  if (!trigger) return bad(parameter);
  return *trigger;
}

std::expected<LayerSelector, AutomationError> AutomationParameters::selector() const {
  LayerSelector selector;
  auto trigger = this->trigger("modifiers");
  if (!trigger) return std::unexpected(trigger.error());
  selector.trigger = std::move(*trigger);
  auto app = bundleID("app");
  if (!app) return std::unexpected(app.error());
  selector.appScope = std::move(*app);
  auto name = this->name("name");
  if (!name) return std::unexpected(name.error());
  if (*name) {
    selector.name =
        std::string(ParameterText::trimBlanks(TextLimits::cut(**name, TextLimits::layerName)));
  }
  if (!selector.trigger && !selector.name) {
    return std::unexpected(AutomationError::missing("modifiers"));
  }
  return selector;
}

std::expected<KeyAssignments, AutomationError> AutomationParameters::assignments() const {
  KeyAssignments assignments;
  assignments.reserve(keys_.size());
  for (const auto& [key, value] : keys_) {
    std::optional<KeyAssignment> assignment = KeyAssignment::parse(value);
    if (!assignment) return bad(key);
    assignments.add(key, std::move(*assignment));
  }
  return assignments;
}

std::expected<KeyChanges, AutomationError> AutomationParameters::changes() const {
  KeyChanges changes;
  changes.reserve(keys_.size());
  for (const auto& [key, value] : keys_) {
    std::string_view text = ParameterText::trimBlanks(value);
    if (text == "-") {
      changes.add(key, std::nullopt);
      continue;
    }
    std::optional<KeyAssignment> assignment = KeyAssignment::parse(text);
    if (!assignment) return bad(key);
    changes.add(key, std::move(*assignment));
  }
  return changes;
}

std::optional<PositionRequest> AutomationParameters::point(std::string_view text) {
  std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  std::string_view xText = text.substr(0, colon);
  std::string_view yText = text.substr(colon + 1);
  if (yText.find(':') != std::string_view::npos) return std::nullopt;
  auto x = finiteNumber(xText);
  auto y = finiteNumber(yText);
  if (!x || !y) return std::nullopt;
  return PositionRequest::point(*x, *y);
}

}  // namespace corvel
