#include "CorvelCore/Automation/PlacementResolver.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "CorvelCore/Automation/ParameterText.h"

namespace corvel {

namespace {

// The text as compared when matching display names: decomposed, without its
// combining marks, case-folded; so "Écran" and "ecran" compare equal.
icu::UnicodeString folded(std::string_view text) {
  auto length = static_cast<std::int32_t>(std::min<std::size_t>(text.size(), INT32_MAX));
  icu::UnicodeString source = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), length));
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
  icu::UnicodeString decomposed;
  if (U_SUCCESS(status)) {
    decomposed = nfd->normalize(source, status);
  }
  if (U_FAILURE(status)) decomposed = source;
  icu::UnicodeString stripped;
  for (std::int32_t i = 0; i < decomposed.length();) {
    UChar32 c = decomposed.char32At(i);
    if (u_charType(c) != U_NON_SPACING_MARK) stripped.append(c);
    i += U16_LENGTH(c);
  }
  return stripped.foldCase();
}

const PlacementDisplay* displayWithKey(const std::vector<PlacementDisplay>& displays,
                                       const std::string& key) {
  for (const auto& display : displays) {
    if (display.key == key) return &display;
  }
  return nullptr;
}

const PlacementDisplay* requestedDisplay(const ScreenRequest& screen,
                                         const std::vector<PlacementDisplay>& displays,
                                         const std::map<std::string, std::string>& names,
                                         const std::map<std::string, std::uint32_t>& ids) {
  if (const auto* id = screen.as<ScreenRequest::ID>()) {
    for (const auto& display : displays) {
      auto found = ids.find(display.key);
      if (found != ids.end() && found->second == id->id) return &display;
    }
    return nullptr;
  }
  const auto* name = screen.as<ScreenRequest::Name>();
  if (name == nullptr) return nullptr;
  icu::UnicodeString wanted = folded(ParameterText::trimBlanks(name->name));
  // An empty request would be contained in every name; it names none.
  if (wanted.isEmpty()) return nullptr;
  for (const auto& display : displays) {
    auto found = names.find(display.key);
    if (found != names.end() && folded(found->second).indexOf(wanted) >= 0) return &display;
  }
  return nullptr;
}

double horizontalOrigin(NamedPosition position, const PlacementRect& frame, double width) {
  switch (position) {
    case NamedPosition::top:
    case NamedPosition::bottom:
    case NamedPosition::center:
      return frame.midX() - width / 2;
    case NamedPosition::left:
    case NamedPosition::topLeft:
    case NamedPosition::bottomLeft:
      return frame.minX() + PlacementResolver::margin;
    case NamedPosition::right:
    case NamedPosition::topRight:
    case NamedPosition::bottomRight:
      return frame.maxX() - PlacementResolver::margin - width;
  }
  return frame.minX();
}

double verticalOrigin(NamedPosition position, const PlacementRect& frame, double height) {
  switch (position) {
    case NamedPosition::left:
    case NamedPosition::right:
    case NamedPosition::center:
      return frame.midY() - height / 2;
    case NamedPosition::top:
    case NamedPosition::topLeft:
    case NamedPosition::topRight:
      return frame.maxY() - PlacementResolver::margin - height;
    case NamedPosition::bottom:
    case NamedPosition::bottomLeft:
    case NamedPosition::bottomRight:
      return frame.minY() + PlacementResolver::margin;
  }
  return frame.minY();
}

// One axis of `clamp`: the origin moved so that [origin, origin + length]
// lies within [lower, upper], or `lower` when the span is too long.
double clampAxis(double origin, double length, double lower, double upper) {
  if (length > upper - lower) return lower;
  return std::clamp(origin, lower, upper - length);
}

}  // namespace

PlacementOverride PlacementResolver::override(const ShowOptions& options, PlacementSize boardSize,
                                              double unitNow,
                                              const std::vector<PlacementDisplay>& displays,
                                              const std::map<std::string, std::string>& names,
                                              const std::map<std::string, std::uint32_t>& ids,
                                              const std::string& current) {
  PlacementOverride result;
  PlacementSize size = boardSize;
  if (options.width && std::isfinite(*options.width) && boardSize.width > 0 &&
      std::isfinite(unitNow) && unitNow > 0) {
    double unit =
        std::clamp(*options.width * unitNow / boardSize.width, unitRange.lower, unitRange.upper);
    double scale = unit / unitNow;
    size = PlacementSize{boardSize.width * scale, boardSize.height * scale};
    result.unit = unit;
  }
  if (options.position || options.screen) {
    result.display = display(options.screen, displays, names, ids, current);
  }
  if (options.position && result.display) {
    result.position = place(*options.position, size, *result.display);
  }
  return result;
}

std::optional<PlacementDisplay> PlacementResolver::display(
    const std::optional<ScreenRequest>& screen, const std::vector<PlacementDisplay>& displays,
    const std::map<std::string, std::string>& names,
    const std::map<std::string, std::uint32_t>& ids, const std::string& current) {
  const PlacementDisplay* chosen = nullptr;
  if (screen) chosen = requestedDisplay(*screen, displays, names, ids);
  if (chosen == nullptr) chosen = displayWithKey(displays, current);
  if (chosen == nullptr) return std::nullopt;
  return *chosen;
}

std::optional<PlacementFraction> PlacementResolver::place(const PositionRequest& position,
                                                          PlacementSize size,
                                                          const PlacementDisplay& display) {
  const PlacementRect& frame = display.usableFrame;
  PlacementRect rect{0, 0, size.width, size.height};
  if (const auto* point = position.as<PositionRequest::Point>()) {
    if (!std::isfinite(point->x) || !std::isfinite(point->y)) return std::nullopt;
    // Points count from the top left of the usable area, downwards.
    rect.x = frame.minX() + point->x;
    rect.y = frame.maxY() - point->y - size.height;
  } else if (const auto* named = position.as<PositionRequest::Named>()) {
    rect.x = horizontalOrigin(named->position, frame, size.width);
    rect.y = verticalOrigin(named->position, frame, size.height);
  }
  PlacementRect placed = clamp(rect, frame);
  PlacementFraction fraction;
  fraction.x = frame.width > 0 ? (placed.midX() - frame.minX()) / frame.width : 0.5;
  fraction.y = frame.height > 0 ? (placed.minY() - frame.minY()) / frame.height : 0;
  return fraction;
}

PlacementRect PlacementResolver::clamp(PlacementRect rect, const PlacementRect& frame) {
  rect.x = clampAxis(rect.x, rect.width, frame.minX(), frame.maxX());
  rect.y = clampAxis(rect.y, rect.height, frame.minY(), frame.maxY());
  return rect;
}

}  // namespace corvel
