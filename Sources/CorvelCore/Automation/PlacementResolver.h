// PlacementResolver: turns the placement a command asks for (position, width
// and display) into a one-time override for the overlay: which display, where
// on it as fractions of its usable area, and which key unit size. Displays are
// plain values here so that the rule is the same wherever it runs.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "CorvelCore/Automation/ShowOptions.h"

namespace corvel {

// A rectangle in screen coordinates (y grows upwards).
struct PlacementRect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  [[nodiscard]] double minX() const { return x; }
  [[nodiscard]] double minY() const { return y; }
  [[nodiscard]] double maxX() const { return x + width; }
  [[nodiscard]] double maxY() const { return y + height; }
  [[nodiscard]] double midX() const { return x + width / 2; }
  [[nodiscard]] double midY() const { return y + height / 2; }
  friend bool operator==(const PlacementRect&, const PlacementRect&) = default;
};

// A size in points.
struct PlacementSize {
  double width = 0;
  double height = 0;
  friend bool operator==(const PlacementSize&, const PlacementSize&) = default;
};

// One display: its key and its usable frame, the part of the screen that the
// menu bar and the Dock leave free.
struct PlacementDisplay {
  std::string key;
  PlacementRect usableFrame;
  friend bool operator==(const PlacementDisplay&, const PlacementDisplay&) = default;
};

// A position as fractions of a display's usable area: x of the board's
// middle from the left edge, y of its bottom edge from the bottom.
struct PlacementFraction {
  double x = 0;
  double y = 0;
  friend bool operator==(const PlacementFraction&, const PlacementFraction&) = default;
};

// The one-time placement handed to the overlay; each part is optional.
struct PlacementOverride {
  std::optional<PlacementDisplay> display;
  std::optional<PlacementFraction> position;
  std::optional<double> unit;
  friend bool operator==(const PlacementOverride&, const PlacementOverride&) = default;
};

struct PlacementResolver {
  // The room kept between the board and the edges for the named positions.
  static constexpr double margin = 12;
  // The key unit a width may give, in points.
  static constexpr ClosedRange<double> unitRange{26, 64};

  // The override for the options: a unit only when a usable width is given,
  // a display only when a position or screen is asked for, and a position
  // only when one is asked for and a display was found. `boardSize` and
  // `unitNow` are the board's present size and key unit; `names` and `ids`
  // map display keys to their names and numbers; `current` is the key of the
  // display the board is on.
  [[nodiscard]] static PlacementOverride override(const ShowOptions& options,
                                                  PlacementSize boardSize, double unitNow,
                                                  const std::vector<PlacementDisplay>& displays,
                                                  const std::map<std::string, std::string>& names,
                                                  const std::map<std::string, std::uint32_t>& ids,
                                                  const std::string& current);

  // The first display with the requested number, or whose name contains the
  // requested text ignoring case and diacritics; with no request or no match
  // the current display; nothing when that is not in the list either.
  [[nodiscard]] static std::optional<PlacementDisplay> display(
      const std::optional<ScreenRequest>& screen, const std::vector<PlacementDisplay>& displays,
      const std::map<std::string, std::string>& names,
      const std::map<std::string, std::uint32_t>& ids, const std::string& current);

  // Where a board of `size` lands for the request, kept inside the usable
  // frame; nothing for a point with a coordinate that is not finite.
  [[nodiscard]] static std::optional<PlacementFraction> place(const PositionRequest& position,
                                                              PlacementSize size,
                                                              const PlacementDisplay& display);

  // The rectangle moved into the frame: inside when it fits, against the
  // frame's left or bottom edge on an axis where it is larger.
  [[nodiscard]] static PlacementRect clamp(PlacementRect rect, const PlacementRect& frame);
};

}  // namespace corvel
