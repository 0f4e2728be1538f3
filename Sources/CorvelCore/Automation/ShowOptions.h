// ShowOptions: what a show, toggle or layer-show command asks of the board:
// where it is shown, how wide, on which display, with which theme and fill,
// and for how long. Every field is optional; an absent one leaves the app's
// own setting in place.
#pragma once

#include <array>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Automation/ClosedRange.h"
#include "CorvelCore/Layers/FillMode.h"
#include "CorvelCore/Support/EnumName.h"

namespace corvel {

class AutomationParameters;

// The nine places on a display that a position can name.
enum class NamedPosition {
  top,
  bottom,
  left,
  right,
  center,
  topLeft,
  topRight,
  bottomLeft,
  bottomRight
};

// The cases with their written names, in declaration order.
inline constexpr std::array<EnumName<NamedPosition>, 9> namedPositionNames{{
    {NamedPosition::top, "top"},
    {NamedPosition::bottom, "bottom"},
    {NamedPosition::left, "left"},
    {NamedPosition::right, "right"},
    {NamedPosition::center, "center"},
    {NamedPosition::topLeft, "topLeft"},
    {NamedPosition::topRight, "topRight"},
    {NamedPosition::bottomLeft, "bottomLeft"},
    {NamedPosition::bottomRight, "bottomRight"},
}};

// The written name of a named position.
[[nodiscard]] constexpr std::string_view rawValue(NamedPosition position) {
  return rawValue(namedPositionNames, position);
}

// Where the board should go: a named place, or a point in points from the
// top left of the display's usable area.
class PositionRequest {
 public:
  struct Named {
    NamedPosition position;
    friend bool operator==(const Named&, const Named&) = default;
  };
  struct Point {
    double x;
    double y;
    friend bool operator==(const Point&, const Point&) = default;
  };
  using Case = std::variant<Named, Point>;

  [[nodiscard]] static PositionRequest named(NamedPosition position) {
    return PositionRequest(Named{position});
  }
  [[nodiscard]] static PositionRequest point(double x, double y) {
    return PositionRequest(Point{x, y});
  }

  [[nodiscard]] const Case& value() const { return value_; }
  template <class T>
  [[nodiscard]] const T* as() const {
    return std::get_if<T>(&value_);
  }

  friend bool operator==(const PositionRequest&, const PositionRequest&) = default;

 private:
  explicit PositionRequest(Case value) : value_(value) {}
  Case value_;
};

// Which display: by its number, or by part of its name.
class ScreenRequest {
 public:
  struct ID {
    std::uint32_t id;
    friend bool operator==(const ID&, const ID&) = default;
  };
  struct Name {
    std::string name;
    friend bool operator==(const Name&, const Name&) = default;
  };
  using Case = std::variant<ID, Name>;

  [[nodiscard]] static ScreenRequest id(std::uint32_t number) { return ScreenRequest(ID{number}); }
  [[nodiscard]] static ScreenRequest name(std::string text) {
    return ScreenRequest(Name{std::move(text)});
  }

  [[nodiscard]] const Case& value() const { return value_; }
  template <class T>
  [[nodiscard]] const T* as() const {
    return std::get_if<T>(&value_);
  }

  friend bool operator==(const ScreenRequest&, const ScreenRequest&) = default;

 private:
  explicit ScreenRequest(Case value) : value_(std::move(value)) {}
  Case value_;
};

struct ShowOptions {
  // Board width in points: below refused, above clamped.
  static constexpr ClosedRange<double> widthRange{300, 4000};
  // Milliseconds after which the board hides again.
  static constexpr ClosedRange<std::int64_t> hideAfterRange{0, 3600000};
  // Milliseconds of the fade when hiding.
  static constexpr ClosedRange<std::int64_t> fadeOutRange{0, 10000};
  // The fade used when a command gives none.
  static constexpr std::int64_t defaultFadeOutMS = 250;
  // The parameters `read` looks at.
  static constexpr std::array<std::string_view, 9> parameterNames{
      "position", "x:y", "width", "screen", "theme", "fill", "blank", "hideAfterMS", "fadeOutMS"};

  std::optional<PositionRequest> position{};
  std::optional<double> width{};
  std::optional<ScreenRequest> screen{};
  std::optional<std::string> theme{};
  std::optional<FillMode> fill{};
  std::optional<std::int64_t> hideAfterMS{};
  std::optional<std::int64_t> fadeOutMS{};

  // True when no field is set.
  [[nodiscard]] bool isEmpty() const;

  // Reads the options from a command's parameters: "position", then "x:y"
  // (which replaces the position), "width" in 300...4000, "screen", "theme"
  // (not empty), "fill" or "blank", "hideAfterMS" in 0...3600000 and
  // "fadeOutMS" in 0...10000; the first bad value ends the reading.
  [[nodiscard]] static std::expected<ShowOptions, AutomationError> read(
      const AutomationParameters& parameters);

  friend bool operator==(const ShowOptions&, const ShowOptions&) = default;
};

}  // namespace corvel
