#include "CorvelCore/Automation/ShowOptions.h"

#include "CorvelCore/Automation/AutomationParameters.h"
#include "CorvelCore/Automation/ParameterText.h"

namespace corvel {

bool ShowOptions::isEmpty() const {
  return !position && !width && !screen && !theme && !fill && !hideAfterMS && !fadeOutMS;
}

std::expected<ShowOptions, AutomationError> ShowOptions::read(
    const AutomationParameters& parameters) {
  ShowOptions options;
  auto position = parameters.position();
  if (!position) return std::unexpected(position.error());
  options.position = *position;
  // A point given as "x:y" takes the place of any "position".
  if (const std::optional<std::string_view> point = parameters.raw("x:y")) {
    auto read = AutomationParameters::point(ParameterText::trimBlanksAndLineBreaks(*point));
    if (!read) return std::unexpected(AutomationError::badValue("x:y"));
    options.position = *read;
  }
  auto width = parameters.number("width", widthRange);
  if (!width) return std::unexpected(width.error());
  options.width = *width;
  auto screen = parameters.screen();
  if (!screen) return std::unexpected(screen.error());
  options.screen = std::move(*screen);
  auto theme = parameters.name("theme");
  if (!theme) return std::unexpected(theme.error());
  options.theme = std::move(*theme);
  auto fill = parameters.fill();
  if (!fill) return std::unexpected(fill.error());
  options.fill = *fill;
  auto hideAfter = parameters.integer("hideAfterMS", hideAfterRange);
  if (!hideAfter) return std::unexpected(hideAfter.error());
  options.hideAfterMS = *hideAfter;
  auto fadeOut = parameters.integer("fadeOutMS", fadeOutRange);
  if (!fadeOut) return std::unexpected(fadeOut.error());
  options.fadeOutMS = *fadeOut;
  return options;
}

}  // namespace corvel
