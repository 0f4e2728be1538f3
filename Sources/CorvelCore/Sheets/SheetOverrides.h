// SheetOverrides: one app's changes to its shortcut cheatsheet: shortcuts
// shown under another label, shortcuts hidden, and shortcuts the user added.
// SheetCodec reads and writes them as the sheet file, which the tool exports
// and imports and whose changes the listing of sheets counts.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Sheets/AddedShortcut.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct SheetOverrides {
  // The version this code writes; files of a higher version are read as far as they go.
  static constexpr std::int64_t currentVersion = 1;
  static constexpr std::string_view fileExtension = "quillonsheet";
  static constexpr std::string_view documentTypeName = "Quillon Cheatsheet";
  static constexpr std::string_view typeIdentifier = "app.quillon.Quillon.sheet";
  // Files saved under the app's earlier name, still opened.
  static constexpr std::string_view legacyFileExtension = "corvelsheet";
  static constexpr std::string_view legacyDocumentTypeName = "Corvel Cheatsheet";
  // Every extension a sheet file is opened from, the current one first.
  static constexpr std::array<std::string_view, 2> readableExtensions{fileExtension,
                                                                      legacyFileExtension};
  // Longest app name and label, in characters.
  static constexpr std::int64_t maxTextLength = TextLimits::name;

  // The version the file was read with.
  std::int64_t version = currentVersion;
  // The app's bundle identifier.
  std::string bundleID;
  // The app's display name, at most 120 characters.
  std::string appName;
  // Shortcut (canonical shortcut text) to the label shown instead.
  std::map<std::string, std::string> renamed;
  // Shortcuts (canonical shortcut text) not shown.
  std::set<std::string> hidden;
  // Shortcuts the user added, in file order.
  std::vector<AddedShortcut> added;
  // Entries of "rename", "hide" and "add" that could not be understood, each
  // a one-member object: { "rename": { key: value } }, { "hide": [element] }
  // or { "add": [element] }.
  JSONArray unparsed;
  // Unknown members of the root, sections of the wrong type under their own
  // names, and under "app" an object of the unknown members of the app object.
  JSONObject extras;

  // True when nothing is renamed, hidden, added, unparsed or kept; the
  // version and the app do not count.
  [[nodiscard]] bool isEmpty() const;

  friend bool operator==(const SheetOverrides&, const SheetOverrides&) = default;
};

}  // namespace corvel
