// LayerKey: what a layer gives one key: the action pressing it runs, and
// optionally what its cap shows and a short caption under the cap.
//
// JSON form: { "action": {...}, "display": {...}, "caption": "..." }, with
// the action and face in their own JSON forms (LayerAction, CapFace);
// "display" and "caption" are optional, and other members are kept in
// `extras` and written back.
#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Layers/CapFace.h"
#include "CorvelCore/Layers/LayerAction.h"
#include "CorvelCore/Layers/LayerError.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct LayerKey {
  // The symbol a key shows when the app it opens or shows is not installed.
  static constexpr std::string_view missingAppSymbol = "questionmark.app.dashed";

  // What the board shows on a key without a layer ("A", "⌫"), by key.
  using Legends = std::function<std::string(KeyID)>;
  // Whether the app with this bundle identifier is installed.
  using IsInstalled = std::function<bool(std::string_view bundleID)>;
  // The installed app's own name for a bundle identifier, when known.
  using AppName = std::function<std::optional<std::string>(std::string_view bundleID)>;

  LayerAction action;
  // What the cap shows; none means a face derived from the action.
  std::optional<CapFace> display;
  // A short caption under the cap.
  std::optional<std::string> caption;
  // Members of the key's JSON object that this version does not know.
  JSONObject extras;

  // The key with its face's texts cut to the face's limits (label 120, text
  // 24, caption beside a symbol 120 characters), cleaned first when `clean`.
  [[nodiscard]] LayerKey limited(bool clean) const;

  // The face the board draws: `display` when set, otherwise one derived from
  // the action: an app's icon, the typed text cut to 24 characters, the
  // shortcut as modifier symbols and the key's legend (for example "⇧⌘K"),
  // the symbol with its caption. An app icon whose app is not installed
  // becomes the symbol `missingAppSymbol`.
  [[nodiscard]] CapFace face(const Legends& legends, const IsInstalled& isInstalled) const;

  // The caption the board draws under the cap: `caption` when set and not
  // empty; for a key that opens an app, the installed app's own name, or the
  // stored name when the app is not installed or its name is unknown; for a
  // face that shows an installed app's icon, that app's name; otherwise none.
  [[nodiscard]] std::optional<std::string> shownCaption(const AppName& name,
                                                        const IsInstalled& isInstalled) const;

  // The JSON form: `extras`, then "action", "display" (when set) and
  // "caption" (when set).
  [[nodiscard]] JSONValue json() const;

  // Reads the JSON form; texts are cleaned (the face's texts also cut) and
  // the scalars cleaning removed are added to `removed`. Fails with badKey
  // when the value is not an object or the face is invalid, and with the
  // action's error when the action is missing or invalid. A null "display"
  // or "caption" counts as missing; a "caption" of another type is kept in
  // `extras`.
  [[nodiscard]] static std::expected<LayerKey, LayerError> fromJSON(const JSONValue& json,
                                                                    std::int64_t& removed);

  friend bool operator==(const LayerKey&, const LayerKey&) = default;
};

}  // namespace corvel
