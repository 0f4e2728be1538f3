// Theme: how the on-screen keyboard and the keystroke pill look — the plate
// the keys sit on, the caps, their legends, what a pressed key does, the
// cheatsheet labels, the lock light, the backlight, the key-click sound and
// the mouse-click colours, plus per-key overrides. A plain value; read and
// written by ThemeCodec, bounded by ThemeLimits.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Theme/JSONValue.h"
#include "CorvelCore/Theme/ThemeColor.h"
#include "CorvelCore/Theme/ThemeParts.h"

namespace corvel {

struct Theme {
  // The format version this build writes.
  static constexpr std::int64_t currentVersion = 1;
  // The key unit, in points, that a theme's lengths are given against.
  static constexpr double referenceUnit = 46;

  std::int64_t version = currentVersion;  // the version the theme was read from
  std::string id;
  std::string name;                    // at most 60 characters
  std::string family;                  // the group it is listed under, at most 40 characters
  std::optional<std::string> basedOn;  // the id of the theme it was derived from
  PlateStyle plate;
  CapStyle caps;
  LegendStyle legends;
  PressStyle press;
  ThemeColor lockLight;  // the Caps Lock light
  PillStyle pill = PillStyle::dark;
  CheatsheetStyle cheatsheet;
  Backlight backlight;
  std::optional<std::string> sound;  // one of SoundPackID::all, or none
  std::optional<MouseStyle> mouse;
  std::map<KeyID, KeyOverride> overrides;  // per-key paint, at most 512
  // Override entries kept as they were read: those under a name this version
  // does not know, those whose value is not an object, and those beyond the
  // 512 read.
  JSONObject unknownOverrides;
  JSONObject extras;                          // unknown top-level members
  std::map<std::string, UnreadValue> unread;  // wrong-typed values, by dotted path

  // What every missing field of a file falls back to: id "untitled", name
  // "Untitled", family "Custom", the app's plain dark look, no sound, no
  // mouse colours, no overrides.
  [[nodiscard]] static const Theme& defaults();

  // The theme's document: the extras, every field ("overrides" being the
  // unknown overrides with each override set under its key identifier), and
  // then each unread value put back where its field still holds what it was
  // read as.
  [[nodiscard]] JSONValue json() const;

  friend bool operator==(const Theme&, const Theme&) = default;
};

}  // namespace corvel
