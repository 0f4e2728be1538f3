// AutomationParameters: the checked parameters of one command, taken from the
// (name, value) pairs a link, a notification, the tool or a Shortcuts action
// delivers, and the readers that turn each parameter into its value. Every
// reader gives nothing when its parameter is absent and `badValue` with the
// parameter's canonical name when it is present but does not fit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "CorvelCore/Automation/AutomationCommand.h"
#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Automation/ClosedRange.h"
#include "CorvelCore/Automation/ShowOptions.h"
#include "CorvelCore/Faces/LayerTrigger.h"
#include "CorvelCore/Layers/FillMode.h"

namespace corvel {

// One (name, value) pair as delivered.
using AutomationPair = std::pair<std::string, std::string>;
// One (name, value) pair seen where its texts are.
using AutomationPairView = std::pair<std::string_view, std::string_view>;

class AutomationParameters {
 public:
  // A reader's result: the value, nothing when absent, or the error.
  template <class T>
  using Read = std::expected<std::optional<T>, AutomationError>;
  // (name, value) entries, each name once; keys sorted by name, as they are
  // read in that order. Commands carry few parameters, so an array serves as
  // the map. The values are the pairs' own texts: the pairs must outlive the
  // parameters.
  using Entry = std::pair<std::string_view, std::string_view>;
  using KeyEntries = std::vector<std::pair<std::string, std::string_view>>;

  // The most parameters a verb knows; their entries are kept inline.
  static constexpr std::size_t maxKnown = 10;

  // The names of the parameters a verb knows, with their lengths as bits
  // (below 64): a name of another length, a key's nearly always, is passed
  // over without a comparison. Made once for each verb, as a constant, from
  // an array that outlives it.
  struct KnownNames {
    template <std::size_t count>
    constexpr KnownNames(const std::array<std::string_view, count>& all) : names(all) {
      static_assert(count <= maxKnown, "a verb knows more parameters than the entries kept");
      for (std::string_view name : names) lengths |= lengthBit(name);
    }
    std::span<const std::string_view> names;
    std::uint64_t lengths = 0;
  };
  // A name's length as a bit; none for 64 bytes or more.
  [[nodiscard]] static constexpr std::uint64_t lengthBit(std::string_view name) {
    return name.size() < 64 ? std::uint64_t{1} << name.size() : 0;
  }

  // Keeps the pairs named in `known` (compared ignoring case, stored under
  // the spelling in `known`, whose texts must outlive the parameters too)
  // and, when `takesKeys`, those named by a key (stored under its canonical
  // name). A parameter or key given twice is `badValue`; more than
  // `AutomationCommand::maxKeys` keys is `tooLarge`. Of several such faults
  // the one met first with the pairs sorted by name (code-point order,
  // stable) is the error, whatever order they came in. Other pairs are
  // ignored.
  [[nodiscard]] static std::expected<AutomationParameters, AutomationError> make(
      std::span<const AutomationPairView> pairs, const KnownNames& known, bool takesKeys);

  // The value of a parameter as given, or nothing.
  [[nodiscard]] std::optional<std::string_view> raw(std::string_view parameter) const;

  // The text cleaned, every line break and tab made one blank, and trimmed of
  // blanks at both ends.
  [[nodiscard]] static std::string oneLine(std::string_view text);

  // `oneLine` of the value; empty is bad.
  [[nodiscard]] Read<std::string> name(std::string_view parameter) const;
  // Trimmed and lowercased: "1", "true", "yes", "on" and the empty value are
  // true; "0", "false", "no", "off" are false.
  [[nodiscard]] Read<bool> boolean(std::string_view parameter) const;
  // A decimal integer with an optional sign; below `range.lower` is bad,
  // above `range.upper` reads as the upper bound.
  [[nodiscard]] Read<std::int64_t> integer(std::string_view parameter,
                                           ClosedRange<std::int64_t> range) const;
  // A finite decimal number; below `range.lower` is bad, above
  // `range.upper` reads as the upper bound.
  [[nodiscard]] Read<double> number(std::string_view parameter, ClosedRange<double> range) const;
  // The value as given; it must start with "/" and hold no control character.
  [[nodiscard]] Read<std::string> file(std::string_view parameter) const;
  // The trimmed value; it must be a bundle identifier.
  [[nodiscard]] Read<std::string> bundleID(std::string_view parameter) const;
  // "fill" as visible, dimmed (or dim) or blank; without it, blank when
  // "blank" reads true.
  [[nodiscard]] Read<FillMode> fill() const;
  // "position" as a named position (ignoring case, blanks, "-" and "_";
  // "centre" is center) or a point "x:y".
  [[nodiscard]] Read<PositionRequest> position() const;
  // "screen" as a display number (all ASCII digits, 32 bits) or a name.
  [[nodiscard]] Read<ScreenRequest> screen() const;
  // A trigger read by the trigger grammar.
  [[nodiscard]] Read<LayerTrigger> trigger(std::string_view parameter) const;
  // "modifiers", "app" and "name" (cut to a layer name's length); without a
  // trigger or a name the selector is `missing` "modifiers".
  [[nodiscard]] std::expected<LayerSelector, AutomationError> selector() const;
  // Every key's value read as an assignment, in key-name order.
  [[nodiscard]] std::expected<KeyAssignments, AutomationError> assignments() const;
  // Every key's value trimmed: "-" removes the key's assignment, anything
  // else must read as an assignment.
  [[nodiscard]] std::expected<KeyChanges, AutomationError> changes() const;

  // A point written "x:y": exactly two finite numbers.
  [[nodiscard]] static std::optional<PositionRequest> point(std::string_view text);

 private:
  // Keeps the pair if `make` would and says so; otherwise leaves the fault
  // in `fault` when it is given.
  [[nodiscard]] bool take(const AutomationPairView& pair, const KnownNames& known, bool takesKeys,
                          std::optional<AutomationError>* fault);
  // Known parameters by canonical name, with their values as given.
  [[nodiscard]] std::span<const Entry> values() const {
    return std::span(values_).first(valueCount_);
  }

  std::array<Entry, maxKnown> values_;
  std::size_t valueCount_ = 0;
  // The lengths of the names in `values_`, one bit each (below 64).
  std::uint64_t valueLengths_ = 0;
  KeyEntries keys_;
};

}  // namespace corvel
