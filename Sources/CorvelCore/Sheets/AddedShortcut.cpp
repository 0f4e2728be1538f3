#include "CorvelCore/Sheets/AddedShortcut.h"

#include <utility>

#include "CorvelCore/Layers/DocumentRules.h"
#include "CorvelCore/Shortcuts/KeySpec.h"
#include "CorvelCore/Theme/JSONObjectReader.h"

namespace corvel {

JSONValue AddedShortcut::json() const {
  JSONObject object = extras;
  object.set("keys", KeySpec::format(keys));
  object.set("name", name);
  object.set("group", group);
  return object;
}

std::optional<AddedShortcut> AddedShortcut::fromJSON(const JSONValue& json) {
  if (!json.isObject()) return std::nullopt;
  JSONObjectReader reader("", json);
  const JSONValue* keysJSON = reader.lookUp("keys");
  const JSONString* keysText = keysJSON == nullptr ? nullptr : keysJSON->asString();
  auto keys = keysText == nullptr ? std::nullopt : KeySpec::parse(*keysText);
  if (!keys) return std::nullopt;
  const JSONValue* nameJSON = reader.lookUp("name");
  const JSONString* name = nameJSON == nullptr ? nullptr : nameJSON->asString();
  if (name == nullptr || DocumentRules::isBlank(*name)) return std::nullopt;

  AddedShortcut shortcut;
  shortcut.keys = std::move(*keys);
  shortcut.name = TextLimits::cut(*name, maxTextLength);
  // A group that is not a text is not kept: the shortcut's own group is
  // always written in its place.
  if (const JSONValue* group = reader.lookUp("group")) {
    if (const JSONString* text = group->asString()) {
      std::string cut = TextLimits::cut(*text, maxTextLength);
      if (!DocumentRules::isBlank(cut)) shortcut.group = std::move(cut);
    }
  }
  shortcut.extras = reader.extras();
  return shortcut;
}

}  // namespace corvel
