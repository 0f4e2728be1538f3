// AddedShortcut: a shortcut the user added to an app's cheatsheet because
// the app does not announce it: its keys, its label and the section it is
// listed in.
//
// JSON form: { "keys": "ctrl+k ctrl+s", "name": "Save all", "group": "Files" },
// the keys in the shortcut text form (KeySpec); other members are kept in
// `extras` and written back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Shortcuts/KeyCombo.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct AddedShortcut {
  // The section of a shortcut that names none.
  static constexpr std::string_view defaultGroup = "Added";
  // Longest name and group, in characters.
  static constexpr std::int64_t maxTextLength = TextLimits::name;

  // One combination, or two for a two-step shortcut.
  std::vector<KeyCombo> keys;
  std::string name;
  std::string group{defaultGroup};
  // Members this version does not know.
  JSONObject extras;

  // The JSON form: `extras`, then "keys" (the canonical shortcut text),
  // "name" and "group".
  [[nodiscard]] JSONValue json() const;

  // Reads the JSON form, or nothing: the value must be an object whose
  // "keys" is a shortcut text KeySpec::parse accepts and whose "name" is a
  // text that is not blank, cut to 120 characters. "group" defaults to
  // "Added" (also when it is blank or not a text) and is cut to 120.
  [[nodiscard]] static std::optional<AddedShortcut> fromJSON(const JSONValue& json);

  friend bool operator==(const AddedShortcut&, const AddedShortcut&) = default;
};

}  // namespace corvel
