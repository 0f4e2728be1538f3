#include "CorvelCore/Layers/LayerAction.h"

#include <array>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Layers/DocumentRules.h"
#include "CorvelCore/Layers/LayerNames.h"
#include "CorvelCore/Support/Overloaded.h"

namespace corvel {
namespace {

// The order in which a shortcut's modifiers are written.
constexpr std::array<KeyModifier, 5> writtenModifierOrder{KeyModifier::fn, KeyModifier::control,
                                                          KeyModifier::option, KeyModifier::shift,
                                                          KeyModifier::command};

using Read = std::expected<LayerAction::Value, LayerError>;

// Every member an action reads, whatever its type; the found values are
// indexed by this enumeration.
enum Field : std::size_t {
  typeField,
  bundleIDField,
  nameField,
  textField,
  keyField,
  modifiersField,
  captionField
};
constexpr std::array<std::string_view, 7> fieldNames{"type", "bundleID",  "name",   "text",
                                                     "key",  "modifiers", "caption"};
using Fields = std::array<const JSONValue*, fieldNames.size()>;

// Reads one case's members; `kept` collects optional members of the wrong
// type, which go to the action's extras.
using CaseReader = Read (*)(const Fields&, JSONObject& kept, std::int64_t& removed);

// A field that must be a text; nullptr when missing or of another type.
const JSONString* textOf(const Fields& fields, Field field) {
  return fields[field] == nullptr ? nullptr : fields[field]->asString();
}

// An optional text: nothing when missing or null; a value of another type
// is kept and reads as nothing.
const JSONString* optionalTextOf(const Fields& fields, Field field, JSONObject& kept) {
  const JSONValue* found = fields[field];
  if (found == nullptr || found->isNull()) return nullptr;
  if (const JSONString* text = found->asString()) return text;
  kept.set(std::string(fieldNames[field]), *found);
  return nullptr;
}

Read readOpenApp(const Fields& fields, JSONObject&, std::int64_t& removed) {
  const JSONString* bundleID = textOf(fields, bundleIDField);
  if (bundleID == nullptr || !LayerNames::isBundleID(*bundleID)) {
    return std::unexpected(LayerError::badAction());
  }
  // An app without a usable name goes by its whole bundle identifier. A
  // name that is that identifier is taken whole as well, not cut to a
  // name's length: that is how such an app's name is written, and reading
  // it back must give the same name. A bundle identifier is clean and at
  // most 255 bytes, so the name stays short.
  std::string name;
  if (const JSONString* given = textOf(fields, nameField)) {
    name = *given == *bundleID
               ? std::string(*given)
               : DocumentRules::cleanedAndCut(*given, LayerAction::maxNameLength, removed);
  }
  if (name.empty()) name = *bundleID;
  return LayerAction::OpenApp{std::string(*bundleID), std::move(name)};
}

Read readTypeText(const Fields& fields, JSONObject&, std::int64_t& removed) {
  const JSONString* text = textOf(fields, textField);
  if (text == nullptr) return std::unexpected(LayerError::badAction());
  std::string typed = DocumentRules::cleanedAndCut(*text, LayerAction::maxTextLength, removed);
  if (typed.empty()) return std::unexpected(LayerError::badAction());
  return LayerAction::TypeText{std::move(typed)};
}

Read readSendShortcut(const Fields& fields, JSONObject&, std::int64_t&) {
  const JSONString* keyName = textOf(fields, keyField);
  const std::optional<KeyID> key =
      keyName == nullptr ? std::nullopt : DocumentRules::keyNamed(*keyName);
  if (!key) return std::unexpected(LayerError::badAction());
  KeyCombo combo{{}, *key};
  if (const JSONValue* modifiers = fields[modifiersField]; modifiers && !modifiers->isNull()) {
    const JSONArray* names = modifiers->asArray();
    if (names == nullptr) return std::unexpected(LayerError::badAction());
    for (const JSONValue& element : *names) {
      const JSONString* name = element.asString();
      const std::optional<KeyModifier> modifier =
          name == nullptr ? std::nullopt : keyModifier(*name);
      if (!modifier) return std::unexpected(LayerError::badAction());
      combo.modifiers.insert(*modifier);
    }
  }
  return LayerAction::SendShortcut{combo};
}

Read readShowSymbol(const Fields& fields, JSONObject& kept, std::int64_t& removed) {
  const JSONString* name = textOf(fields, nameField);
  if (name == nullptr || !LayerNames::isSymbolName(*name)) {
    return std::unexpected(LayerError::badAction());
  }
  std::optional<std::string> caption;
  if (const JSONString* given = optionalTextOf(fields, captionField, kept)) {
    caption = DocumentRules::cleanedAndCut(*given, LayerAction::maxCaptionLength, removed);
  }
  return LayerAction::ShowSymbol{std::string(*name), std::move(caption)};
}

// The members each case reads.
constexpr std::array<Field, 3> openAppFields{typeField, bundleIDField, nameField};
constexpr std::array<Field, 2> typeTextFields{typeField, textField};
constexpr std::array<Field, 3> sendShortcutFields{typeField, modifiersField, keyField};
constexpr std::array<Field, 3> showSymbolFields{typeField, nameField, captionField};

struct ActionType {
  std::string_view name;
  CaseReader read;
  std::span<const Field> fields;
};

// The written "type" of each case, its reader and the members it reads, in
// the order of LayerAction::Value.
constexpr std::array<ActionType, std::variant_size_v<LayerAction::Value>> actionTypes{{
    {"openApp", readOpenApp, openAppFields},
    {"typeText", readTypeText, typeTextFields},
    {"sendShortcut", readSendShortcut, sendShortcutFields},
    {"showSymbol", readShowSymbol, showSymbolFields},
}};

}  // namespace

LayerAction LayerAction::openApp(std::string bundleID, std::string name) {
  return {OpenApp{std::move(bundleID), std::move(name)}, {}};
}
LayerAction LayerAction::typeText(std::string text) { return {TypeText{std::move(text)}, {}}; }
LayerAction LayerAction::sendShortcut(KeyCombo combo) { return {SendShortcut{combo}, {}}; }
LayerAction LayerAction::showSymbol(std::string name, std::optional<std::string> caption) {
  return {ShowSymbol{std::move(name), std::move(caption)}, {}};
}

JSONValue LayerAction::json() const {
  // Members in ascending key order, "type" last.
  std::vector<JSONObject::Member> own;
  std::visit(Overloaded{
                 [&](const OpenApp& action) {
                   own.emplace_back("bundleID", action.bundleID);
                   own.emplace_back("name", action.name);
                 },
                 [&](const TypeText& action) { own.emplace_back("text", action.text); },
                 [&](const SendShortcut& action) {
                   JSONArray names;
                   for (KeyModifier modifier : writtenModifierOrder) {
                     if (action.combo.modifiers.contains(modifier)) {
                       names.emplace_back(rawValue(modifier));
                     }
                   }
                   own.emplace_back("key", JSONValue(keyInfo(action.combo.key).identifier));
                   own.emplace_back("modifiers", std::move(names));
                 },
                 [&](const ShowSymbol& action) {
                   if (action.caption) own.emplace_back("caption", *action.caption);
                   own.emplace_back("name", action.name);
                 },
             },
             value);
  own.emplace_back("type", JSONValue(actionTypes[value.index()].name));
  return DocumentRules::recordObject(extras, std::move(own));
}

std::expected<LayerAction, LayerError> LayerAction::fromJSON(const JSONValue& json,
                                                             std::int64_t& removed) {
  const JSONObject* object = json.asObject();
  if (object == nullptr) return std::unexpected(LayerError::badAction());
  Fields fields;
  DocumentRules::findMembers(*object, fieldNames, fields);
  const JSONString* type = textOf(fields, typeField);
  if (type == nullptr) return std::unexpected(LayerError::badAction());
  for (const ActionType& actionType : actionTypes) {
    if (actionType.name != *type) continue;
    JSONObject kept;
    Read value = actionType.read(fields, kept, removed);
    if (!value) return std::unexpected(value.error());
    JSONObject extras =
        DocumentRules::unknownMembers(*object, fields, actionType.fields, fieldNames);
    for (const auto& [key, member] : kept) extras.set(key, member);
    return LayerAction{std::move(*value), std::move(extras)};
  }
  return std::unexpected(LayerError::badAction());
}

}  // namespace corvel
