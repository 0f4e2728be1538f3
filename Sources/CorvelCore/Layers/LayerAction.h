// LayerAction: what pressing a key does while its layer shows: open an app,
// type a text, send a shortcut, or just show a symbol.
//
// JSON form: an object whose "type" names the case:
//   { "type": "openApp", "bundleID": "com.apple.mail", "name": "Mail" }
//   { "type": "typeText", "text": "Kind regards" }
//   { "type": "sendShortcut", "modifiers": ["shift", "command"], "key": "keyK" }
//   { "type": "showSymbol", "name": "star.fill", "caption": "Stars" }
// Members this version does not know, and a symbol's "caption" of the wrong
// type, are kept in `extras` and written back.
#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <variant>

#include "CorvelCore/Layers/LayerError.h"
#include "CorvelCore/Shortcuts/KeyCombo.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct LayerAction {
  struct OpenApp {
    std::string bundleID;
    std::string name;
    friend bool operator==(const OpenApp&, const OpenApp&) = default;
  };
  struct TypeText {
    std::string text;
    friend bool operator==(const TypeText&, const TypeText&) = default;
  };
  struct SendShortcut {
    KeyCombo combo;
    friend bool operator==(const SendShortcut&, const SendShortcut&) = default;
  };
  struct ShowSymbol {
    std::string name;
    std::optional<std::string> caption;
    friend bool operator==(const ShowSymbol&, const ShowSymbol&) = default;
  };
  using Value = std::variant<OpenApp, TypeText, SendShortcut, ShowSymbol>;

  // Longest text a key types, in characters.
  static constexpr std::int64_t maxTextLength = 2000;
  // Longest app name, in characters.
  static constexpr std::int64_t maxNameLength = TextLimits::name;
  // Longest caption of a symbol, in characters.
  static constexpr std::int64_t maxCaptionLength = TextLimits::name;

  Value value = TypeText{};
  // Members of the action's JSON object that this version does not use.
  JSONObject extras;

  // The helpers take their values as given; `fromJSON` is the checked way in.
  [[nodiscard]] static LayerAction openApp(std::string bundleID, std::string name);
  [[nodiscard]] static LayerAction typeText(std::string text);
  [[nodiscard]] static LayerAction sendShortcut(KeyCombo combo);
  [[nodiscard]] static LayerAction showSymbol(std::string name,
                                              std::optional<std::string> caption = std::nullopt);

  // The JSON form above: `extras`, then "type" and the case's members. The
  // modifiers of a shortcut are written in the order fn, control, option,
  // shift, command; an app's "name" always; a symbol's "caption" only when
  // set.
  [[nodiscard]] JSONValue json() const;

  // Reads the JSON form; texts are cleaned and cut, and the scalars cleaning
  // removed are added to `removed`. Fails with badAction for a value that is
  // not an object, a missing or unknown "type", an "openApp" whose
  // "bundleID" fails LayerNames::isBundleID, a "typeText" whose "text" is
  // not a text or is empty once cleaned and cut to 2000 characters, a
  // "sendShortcut" whose "key" is no key identifier or whose "modifiers" is
  // not an array of modifier names, and a "showSymbol" whose "name" fails
  // LayerNames::isSymbolName. An app's missing, wrong-typed or empty "name"
  // is its whole bundle identifier (the wrong-typed value is not kept: the
  // name is always written in its place), and so is a "name" that is
  // exactly the bundle identifier; other names, and captions, are cut to
  // 120 characters.
  [[nodiscard]] static std::expected<LayerAction, LayerError> fromJSON(const JSONValue& json,
                                                                       std::int64_t& removed);

  friend bool operator==(const LayerAction&, const LayerAction&) = default;
};

}  // namespace corvel
