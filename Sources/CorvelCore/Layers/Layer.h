// Layer: a named set of key labels and key actions that the board shows while
// a chord of modifier keys (the layer's trigger) is held. Layers are kept in
// the layers file (LayerCodec), exported and imported, and listed by the tool.
//
// JSON form: an object with "id" (UUID text), "name", "enabled", "kind"
// ("custom" or "apps"), "trigger" (LayerTrigger's form), "holdDelay"
// (seconds), "appScope" (a bundle identifier or null), "fill" (a FillMode
// name, optional), "keys" (an object from key identifiers such as "keyA" to
// LayerKey's form) and, for a layer that needs review, "needsReview",
// "removedCharacters" and "leftOutKeys". Reading is lenient and loses
// nothing: unknown members, values of the wrong type and key entries that
// cannot be read are kept and written back.
#pragma once

#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "CorvelCore/Faces/LayerTrigger.h"
#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Layers/FillMode.h"
#include "CorvelCore/Layers/LayerArming.h"
#include "CorvelCore/Layers/LayerError.h"
#include "CorvelCore/Layers/LayerKey.h"
#include "CorvelCore/Layers/LayerKind.h"
#include "CorvelCore/Support/UUID.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct Layer {
  // Longest hold delay, in seconds.
  static constexpr double maxHoldDelay = 5.0;
  // Hold delay of a custom layer that sets none, in seconds.
  static constexpr double customHoldDelay = 0.2;
  // Hold delay of the apps layer that sets none, in seconds.
  static constexpr double appsHoldDelay = 0.0;
  // Longest name, in characters.
  static constexpr std::int64_t maxNameLength = TextLimits::layerName;
  // The name of a layer whose name is blank.
  static constexpr std::string_view defaultName = "Layer";
  // Largest counts read from a file.
  static constexpr std::int64_t maxRemovedCharacters = 2'000'000;
  static constexpr std::int64_t maxLeftOutKeys = 100'000;

  UUID id;
  std::string name{defaultName};
  // Whether the layer takes part in matching; stored and imported layers start off.
  bool enabled = false;
  LayerKind kind = LayerKind::custom;
  LayerTrigger trigger;
  // Seconds the trigger is held before the layer shows; within 0 ... 5.
  double holdDelay = customHoldDelay;
  // The bundle identifier of the one app the layer applies in; none means every app.
  std::optional<std::string> appScope;
  // How keys without a label are drawn while the layer shows; none sets no fill.
  std::optional<FillMode> fill;
  // Only keys that `canTake` accepts are used.
  std::map<KeyID, LayerKey> keys;
  // Members of the layer's JSON object that were not understood, and under
  // "keys" the key entries that could not be read.
  JSONObject extras;
  // Reading changed or dropped something; the app asks the user to look.
  bool needsReview = false;
  // Characters cleaning removed from the layer's texts; never negative.
  std::int64_t removedCharacters = 0;
  // Key entries that could not be used and were left out; never negative.
  std::int64_t leftOutKeys = 0;

  Layer() = default;
  // A missing hold delay takes the kind's default; the delay then passes
  // `cleanDelay`. Negative counts become 0.
  Layer(UUID id, std::string name, bool enabled, LayerKind kind, LayerTrigger trigger,
        std::optional<double> holdDelay = std::nullopt,
        std::optional<std::string> appScope = std::nullopt,
        std::optional<FillMode> fill = std::nullopt, std::map<KeyID, LayerKey> keys = {},
        JSONObject extras = {}, bool needsReview = false, std::int64_t removedCharacters = 0,
        std::int64_t leftOutKeys = 0);

  // The hold delay a layer of this kind has when it sets none: 0.2 s for
  // custom layers, 0 for the apps layer.
  [[nodiscard]] static double defaultHoldDelay(LayerKind kind);
  // A finite delay of 0 or more, at most `maxHoldDelay`; anything else
  // (negative, infinite, not a number) gives the kind's default.
  [[nodiscard]] static double cleanDelay(double delay, LayerKind kind);
  // Whether a layer may hold the key: it must have a Mac key code and not be
  // a modifier or inert key (those arm layers or lock, they are never taken over).
  [[nodiscard]] static bool canTake(KeyID key);

  // Adds the kept unread key entries to `leftOutKeys`, forgets every kept
  // unknown part of the layer (`extras`), and removes the keys `canTake`
  // refuses.
  void dropUnknownParts();

  // The id, trigger and hold delay, for the code that arms layers.
  [[nodiscard]] LayerArming arming() const;

  // The JSON form. Starts from `extras`; "id", "name", "trigger" (in its
  // normal form) and "appScope" (the scope, or null) always replace a kept
  // value, while a kept "enabled", "kind", "holdDelay" and "fill" (when the
  // layer has none) is written back unchanged. "needsReview",
  // "removedCharacters" and "leftOutKeys" are written only for a layer that
  // needs review, the counts only when at least 1. "keys" holds each key's
  // form under its identifier, merged with the kept unread entries (a kept
  // entry never replaces a key the layer holds).
  [[nodiscard]] JSONValue json() const;

  // Reads a layer object. Fails with badLayer when the value is not an
  // object, "id" is not a UUID text (either letter case), "trigger" is
  // missing, unreadable or has no parts, or "appScope" is a non-empty text
  // that is not a bundle identifier. Everything else is lenient: a null
  // member counts as missing; a "name", "kind", "holdDelay", "fill",
  // "appScope", "enabled" or "keys" of the wrong type is kept in `extras`
  // under its own name while the layer uses its default (a kept "name" or
  // "appScope" is not written back: the layer's own value takes its place);
  // "kind" defaults to custom, "enabled" to false;
  // the name is cleaned, cut to 64 characters and "Layer" when blank; the
  // hold delay passes `cleanDelay`; a layer read with "needsReview" (true or
  // not a Boolean) is off; the counts are clamped to 2,000,000 and 100,000;
  // keys named by an unknown identifier or that cannot be read are kept
  // under "keys" in `extras`. The characters cleaning removed are added to
  // `removedCharacters` (and to `removed`).
  [[nodiscard]] static std::expected<Layer, LayerError> fromJSON(const JSONValue& json);
  [[nodiscard]] static std::expected<Layer, LayerError> fromJSON(const JSONValue& json,
                                                                 std::int64_t& removed);

  friend bool operator==(const Layer&, const Layer&) = default;
};

}  // namespace corvel
