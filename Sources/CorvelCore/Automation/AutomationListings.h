// AutomationListings: what `layers list`, `themes list` and `sheets list`
// print: one row per stored thing, as an aligned plain table or as a JSON
// array. Listing only reads; the driver fetches the files and prints.
#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Layers/Layer.h"
#include "CorvelCore/Layers/LayerError.h"
#include "CorvelCore/Sheets/SheetOverrides.h"
#include "CorvelCore/Theme/Theme.h"

namespace corvel {

struct LayerRow {
  std::string name;
  std::string trigger;             // the trigger text, "hyper" for the hyper chord
  std::optional<std::string> app;  // the app scope; absent for every app
  bool enabled = false;
  bool needsReview = false;
  std::int64_t keys = 0;
  friend bool operator==(const LayerRow&, const LayerRow&) = default;
};

struct ThemeRow {
  std::string id;
  std::string name;
  std::optional<std::string> family;  // built-in themes only
  bool inUse = false;
  friend bool operator==(const ThemeRow&, const ThemeRow&) = default;
};

struct SheetRow {
  std::string app;
  std::string name;
  std::int64_t renamed = 0;
  std::int64_t hidden = 0;
  std::int64_t added = 0;
  friend bool operator==(const SheetRow&, const SheetRow&) = default;
};

struct AutomationListings {
  // The rows of a layers file's readable layers, in file order, read from
  // the file's summaries (LayerCodec::summaries) without building the
  // layers; the file's error when it does not decode.
  [[nodiscard]] static std::expected<std::vector<LayerRow>, LayerError> layerRows(
      const std::string& data);
  // The built-in themes first (with their family), then the user's own; the
  // one whose id is `inUseID` is marked in use.
  [[nodiscard]] static std::vector<ThemeRow> themes(std::span<const Theme> builtIns,
                                                    std::span<const Theme> mine,
                                                    const std::optional<std::string>& inUseID);
  // One row per changed cheatsheet, in the given order.
  [[nodiscard]] static std::vector<SheetRow> rows(std::span<const SheetOverrides> sheets);

  // The plain tables (no final line break); no layers or sheets give their
  // one-line "nothing yet" texts.
  [[nodiscard]] static std::string text(std::span<const LayerRow> rows);
  [[nodiscard]] static std::string text(std::span<const ThemeRow> rows);
  [[nodiscard]] static std::string text(std::span<const SheetRow> rows);
  // The rows as one pretty-printed JSON array with sorted keys; absent
  // optional fields are left out.
  [[nodiscard]] static std::string json(std::span<const LayerRow> rows);
  [[nodiscard]] static std::string json(std::span<const ThemeRow> rows);
  [[nodiscard]] static std::string json(std::span<const SheetRow> rows);

  // The layers an export's `--name` names: those whose name matches (ignoring
  // case) or whose trigger equals the text read as modifiers.
  [[nodiscard]] static std::vector<Layer> layers(std::span<const Layer> all,
                                                 std::string_view named);
  // The theme with exactly that id, else the first whose name matches
  // ignoring case; built-in themes are searched before the user's own.
  [[nodiscard]] static std::optional<Theme> match(std::span<const Theme> builtIns,
                                                  std::span<const Theme> mine,
                                                  std::string_view idOrName);

  // Cells in columns: every cell but the last of its row padded to its
  // column's width in characters, cells joined by three spaces.
  [[nodiscard]] static std::string table(const std::vector<std::vector<std::string>>& rows);
};

}  // namespace corvel
