// FillMode: how the keys a layer leaves without a label are drawn while the
// layer shows. Shared by layers, commands and the cheatsheet settings.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "CorvelCore/Support/EnumName.h"

namespace corvel {

enum class FillMode { visible, dimmed, blank };

// The cases with their written names, in declaration order.
inline constexpr std::array<EnumName<FillMode>, 3> fillModeNames{{
    {FillMode::visible, "visible"},
    {FillMode::dimmed, "dimmed"},
    {FillMode::blank, "blank"},
}};

// The written name of a fill mode.
[[nodiscard]] constexpr std::string_view rawValue(FillMode mode) {
  return rawValue(fillModeNames, mode);
}

// The fill mode written exactly as `raw`, or nothing.
[[nodiscard]] constexpr std::optional<FillMode> fillMode(std::string_view raw) {
  return caseNamed<FillMode>(fillModeNames, raw);
}

}  // namespace corvel
