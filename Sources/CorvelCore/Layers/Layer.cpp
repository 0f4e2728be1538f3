#include "CorvelCore/Layers/Layer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "CorvelCore/Layers/DocumentRules.h"
#include "CorvelCore/Layers/LayerNames.h"

namespace corvel {
namespace {

// A count kept in the file: a finite number above 0, at most `limit`,
// truncated; anything else is 0.
std::int64_t countFrom(const JSONValue* value, std::int64_t limit) {
  const std::optional<double> number = value == nullptr ? std::nullopt : value->asNumber();
  if (!number || !std::isfinite(*number) || *number <= 0) return 0;
  return static_cast<std::int64_t>(std::trunc(std::min(*number, static_cast<double>(limit))));
}

// The members a layer object reads, in the order of Field.
enum Field : std::size_t {
  idField,
  triggerField,
  kindField,
  nameField,
  holdDelayField,
  fillField,
  appScopeField,
  enabledField,
  needsReviewField,
  removedCharactersField,
  leftOutKeysField,
  keysField
};
constexpr std::array<std::string_view, 12> layerMembers{
    "id",          "trigger",  "kind",    "name",        "holdDelay",
    "fill",        "appScope", "enabled", "needsReview", "removedCharacters",
    "leftOutKeys", "keys"};

bool isPresent(const JSONValue* value) { return value != nullptr && !value->isNull(); }

}  // namespace

Layer::Layer(UUID layerID, std::string layerName, bool isEnabled, LayerKind layerKind,
             LayerTrigger layerTrigger, std::optional<double> delay,
             std::optional<std::string> scope, std::optional<FillMode> layerFill,
             std::map<KeyID, LayerKey> layerKeys, JSONObject unknownMembers, bool toReview,
             std::int64_t removed, std::int64_t leftOut)
    : id(layerID),
      name(std::move(layerName)),
      enabled(isEnabled),
      kind(layerKind),
      trigger(std::move(layerTrigger)),
      holdDelay(cleanDelay(delay.value_or(defaultHoldDelay(layerKind)), layerKind)),
      appScope(std::move(scope)),
      fill(layerFill),
      keys(std::move(layerKeys)),
      extras(std::move(unknownMembers)),
      needsReview(toReview),
      removedCharacters(std::max<std::int64_t>(0, removed)),
      leftOutKeys(std::max<std::int64_t>(0, leftOut)) {}

double Layer::defaultHoldDelay(LayerKind kind) {
  return kind == LayerKind::apps ? appsHoldDelay : customHoldDelay;
}

double Layer::cleanDelay(double delay, LayerKind kind) {
  if (!std::isfinite(delay) || delay < 0) return defaultHoldDelay(kind);
  return std::min(delay, maxHoldDelay);
}

bool Layer::canTake(KeyID key) {
  const KeyInfo& info = keyInfo(key);
  return info.macCode.has_value() && info.group != KeyGroup::modifier &&
         info.group != KeyGroup::inert;
}

void Layer::dropUnknownParts() {
  if (const JSONValue* kept = extras.find("keys")) {
    if (const JSONObject* entries = kept->asObject()) {
      leftOutKeys += static_cast<std::int64_t>(entries->size());
    }
  }
  extras = JSONObject();
  std::erase_if(keys, [](const auto& entry) { return !canTake(entry.first); });
}

LayerArming Layer::arming() const { return LayerArming{id, trigger, holdDelay}; }

JSONValue Layer::json() const {
  JSONObject object = extras;
  object.set("id", id.text());
  object.set("name", name);
  // A value this version could not read is written back in place of the
  // default the layer uses meanwhile.
  if (!extras.contains("enabled")) object.set("enabled", enabled);
  if (!extras.contains("kind")) object.set("kind", JSONValue(rawValue(kind)));
  object.set("trigger", trigger.json());
  if (!extras.contains("holdDelay")) object.set("holdDelay", cleanDelay(holdDelay, kind));
  object.set("appScope", appScope ? JSONValue(*appScope) : JSONValue());
  if (needsReview) {
    object.set("needsReview", true);
    if (removedCharacters >= 1) {
      object.set("removedCharacters", removedCharacters);
    } else {
      object.erase("removedCharacters");
    }
    if (leftOutKeys >= 1) {
      object.set("leftOutKeys", leftOutKeys);
    } else {
      object.erase("leftOutKeys");
    }
  } else {
    object.erase("needsReview");
    object.erase("removedCharacters");
    object.erase("leftOutKeys");
  }
  if (fill) object.set("fill", JSONValue(rawValue(*fill)));

  const JSONValue* keptKeys = extras.find("keys");
  const JSONObject* keptEntries = keptKeys == nullptr ? nullptr : keptKeys->asObject();
  // A "keys" of the wrong type stays as it was while the layer holds no keys.
  if (!keys.empty() || keptKeys == nullptr || keptEntries != nullptr) {
    // Keys in the order of their identifiers, so that the object is built
    // without sorting its members.
    std::vector<std::pair<std::string_view, const LayerKey*>> held;
    held.reserve(keys.size());
    for (const auto& [key, entry] : keys) held.emplace_back(keyInfo(key).identifier, &entry);
    std::sort(held.begin(), held.end());
    std::vector<JSONObject::Member> members;
    members.reserve(keys.size());
    for (const auto& [identifier, entry] : held) {
      members.emplace_back(std::string(identifier), entry->json());
    }
    JSONObject written(std::move(members));
    if (keptEntries != nullptr) {
      for (const auto& [keyName, entry] : *keptEntries) {
        if (!written.contains(keyName)) written.set(keyName, entry);
      }
    }
    object.set("keys", std::move(written));
  }
  return object;
}

std::expected<Layer, LayerError> Layer::fromJSON(const JSONValue& json) {
  std::int64_t removed = 0;
  return fromJSON(json, removed);
}

std::expected<Layer, LayerError> Layer::fromJSON(const JSONValue& json, std::int64_t& removed) {
  const JSONObject* object = json.asObject();
  if (object == nullptr) return std::unexpected(LayerError::badLayer());
  std::array<const JSONValue*, layerMembers.size()> found;
  const std::size_t unknown = DocumentRules::findMembers(*object, layerMembers, found);
  // Members present but of the wrong type: not used, written back.
  std::vector<JSONObject::Member> kept;
  const auto keep = [&kept](std::string_view key, const JSONValue& value) {
    kept.emplace_back(std::string(key), value);
  };
  Layer layer;
  std::int64_t cleaned = 0;

  const JSONValue* idJSON = found[idField];
  const JSONString* idText = idJSON == nullptr ? nullptr : idJSON->asString();
  const std::optional<UUID> id = idText == nullptr ? std::nullopt : UUID::parse(*idText);
  if (!id) return std::unexpected(LayerError::badLayer());
  layer.id = *id;

  const JSONValue* triggerJSON = found[triggerField];
  std::optional<LayerTrigger> trigger =
      isPresent(triggerJSON) ? LayerTrigger::fromJSON(*triggerJSON) : std::nullopt;
  if (!trigger || trigger->empty()) return std::unexpected(LayerError::badLayer());
  layer.trigger = std::move(*trigger);

  if (const JSONValue* kind = found[kindField]; isPresent(kind)) {
    const JSONString* text = kind->asString();
    const std::optional<LayerKind> named = text == nullptr ? std::nullopt : layerKind(*text);
    if (named) {
      layer.kind = *named;
    } else {
      keep("kind", *kind);
    }
  }

  layer.name.clear();
  if (const JSONValue* name = found[nameField]; isPresent(name)) {
    if (const JSONString* text = name->asString()) {
      layer.name = DocumentRules::cleanedAndCut(*text, maxNameLength, cleaned);
    } else {
      keep("name", *name);
    }
  }
  if (DocumentRules::isBlank(layer.name)) layer.name = defaultName;

  double holdDelay = defaultHoldDelay(layer.kind);
  if (const JSONValue* delay = found[holdDelayField]; isPresent(delay)) {
    if (const std::optional<double> seconds = delay->asNumber()) {
      holdDelay = *seconds;
    } else {
      keep("holdDelay", *delay);
    }
  }
  layer.holdDelay = cleanDelay(holdDelay, layer.kind);

  if (const JSONValue* fill = found[fillField]; isPresent(fill)) {
    const JSONString* text = fill->asString();
    layer.fill = text == nullptr ? std::nullopt : fillMode(*text);
    if (!layer.fill) keep("fill", *fill);
  }

  if (const JSONValue* scope = found[appScopeField]; isPresent(scope)) {
    if (const JSONString* text = scope->asString()) {
      if (!text->empty()) {
        if (!LayerNames::isBundleID(*text)) return std::unexpected(LayerError::badLayer());
        layer.appScope = *text;
      }
    } else {
      keep("appScope", *scope);
    }
  }

  if (const JSONValue* enabled = found[enabledField]; isPresent(enabled)) {
    if (const std::optional<bool> flag = enabled->asBool()) {
      layer.enabled = *flag;
    } else {
      keep("enabled", *enabled);
    }
  }

  if (const JSONValue* review = found[needsReviewField]; isPresent(review)) {
    layer.needsReview = review->asBool().value_or(true);
  }
  // A layer the user still has to look at never comes back switched on.
  if (layer.needsReview) layer.enabled = false;

  layer.removedCharacters = countFrom(found[removedCharactersField], maxRemovedCharacters);
  layer.leftOutKeys = countFrom(found[leftOutKeysField], maxLeftOutKeys);

  if (const JSONValue* keys = found[keysField]; isPresent(keys)) {
    if (const JSONObject* entries = keys->asObject()) {
      std::vector<JSONObject::Member> unreadEntries;
      for (const auto& [keyName, entry] : *entries) {
        if (const std::optional<KeyID> key = DocumentRules::keyNamed(keyName)) {
          std::int64_t keyCleaned = 0;
          if (auto read = LayerKey::fromJSON(entry, keyCleaned)) {
            layer.keys.emplace(*key, std::move(*read));
            cleaned += keyCleaned;
            continue;
          }
        }
        unreadEntries.emplace_back(keyName, entry);
      }
      if (!unreadEntries.empty()) keep("keys", JSONObject(std::move(unreadEntries)));
    } else {
      keep("keys", *keys);
    }
  }

  if (unknown > 0) layer.extras = DocumentRules::unknownMembers(*object, layerMembers);
  for (auto& [key, value] : kept) layer.extras.set(std::move(key), std::move(value));
  layer.removedCharacters += cleaned;
  removed += cleaned;
  return layer;
}

}  // namespace corvel
