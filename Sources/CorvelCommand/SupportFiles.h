// SupportFiles: what the app keeps in its support folder, read through the
// world: its layers file, the user's own themes, the changed cheatsheets, and
// from its preferences the theme in use. It only ever reads.
#pragma once

#include <expected>
#include <optional>
#include <string>
#include <vector>

#include "CorvelCommand/ToolWorld.h"
#include "CorvelCore/Layers/Layer.h"
#include "CorvelCore/Sheets/SheetOverrides.h"
#include "CorvelCore/Theme/Theme.h"

namespace corvel {

struct SupportFiles {
  // The app's layers file, "Layers.json": its bytes, `missing` when there is
  // none (no layers yet), or `unreadable`.
  [[nodiscard]] static std::expected<std::string, ToolWorld::ReadProblem> layersFile(
      const ToolWorld& world);
  // The app's layers: none without a file; nothing when the file cannot be
  // read or decoded.
  [[nodiscard]] static std::optional<std::vector<Layer>> layers(const ToolWorld& world);
  // The user's own themes, newest first (equal times keep the folder's
  // order; a file without a time comes last); files that cannot be read or
  // do not decode as themes are passed over.
  [[nodiscard]] static std::vector<Theme> ownThemes(const ToolWorld& world);
  // The changed cheatsheets, one per app, ordered by the app's name. Where
  // two files hold one app's sheet, one under the current extension wins
  // over one under the earlier, then the first by file name.
  [[nodiscard]] static std::vector<SheetOverrides> sheets(const ToolWorld& world);
  // The id of the theme the app uses now, from its overlay settings (stored
  // as an object, or as the text of one); nothing when not set or unreadable.
  [[nodiscard]] static std::optional<std::string> themeInUse(const ToolWorld& world);
};

}  // namespace corvel
