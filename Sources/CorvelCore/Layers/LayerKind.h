// LayerKind: whether a layer was made by the user or is the generated layer
// that puts the user's apps on the letter keys.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "CorvelCore/Support/EnumName.h"

namespace corvel {

enum class LayerKind { custom, apps };

// The kinds with their written names, in declaration order.
inline constexpr std::array<EnumName<LayerKind>, 2> layerKindNames{{
    {LayerKind::custom, "custom"},
    {LayerKind::apps, "apps"},
}};

// The written name of a kind.
[[nodiscard]] constexpr std::string_view rawValue(LayerKind kind) {
  return rawValue(layerKindNames, kind);
}

// The kind written exactly as `raw`, or nothing.
[[nodiscard]] constexpr std::optional<LayerKind> layerKind(std::string_view raw) {
  return caseNamed<LayerKind>(layerKindNames, raw);
}

}  // namespace corvel
