#include "CorvelCore/Sheets/SheetCodec.h"

#include <utility>
#include <vector>

#include "CorvelCore/Layers/DocumentRules.h"
#include "CorvelCore/Layers/LayerNames.h"
#include "CorvelCore/Shortcuts/KeySpec.h"
#include "CorvelCore/Theme/JSONObjectReader.h"

namespace corvel {
namespace {

constexpr std::string_view appKey = "app";
constexpr std::string_view renameKey = "rename";
constexpr std::string_view hideKey = "hide";
constexpr std::string_view addKey = "add";

// The canonical text of a shortcut text, or nothing when it is none.
std::optional<std::string> canonicalShortcut(const JSONValue& value) {
  const JSONString* text = value.asString();
  if (text == nullptr) return std::nullopt;
  auto steps = KeySpec::parse(*text);
  if (!steps) return std::nullopt;
  return KeySpec::format(*steps);
}

// An entry that could not be understood, wrapped so that writing can put it
// back into its section.
JSONValue unparsedMember(std::string_view section, const std::string& key, const JSONValue& value) {
  return JSONObject{{std::string(section), JSONObject{{key, value}}}};
}

JSONValue unparsedElement(std::string_view section, const JSONValue& element) {
  return JSONObject{{std::string(section), JSONArray{element}}};
}

void readRename(const JSONObject& members, SheetOverrides& overrides) {
  // Members come in ascending order of their keys, so of two spellings of
  // one shortcut the later key's label is the one kept.
  std::vector<const JSONObject::Member*> unread;
  for (const auto& member : members) {
    const auto& [key, value] = member;
    auto shortcut = canonicalShortcut(JSONValue(key));
    const JSONString* label = value.asString();
    if (shortcut && label != nullptr) {
      overrides.renamed.insert_or_assign(std::move(*shortcut),
                                         TextLimits::cut(*label, SheetOverrides::maxTextLength));
    } else {
      unread.push_back(&member);
    }
  }
  // An unread member spelled exactly as the canonical text of a shortcut
  // that another spelling renames would be written under the same key as
  // that label, and only one of the two can be: the label this version
  // reads wins, and the unread value is let go, so that the sheet reads
  // back as it was read. Unread members under any other spelling are kept.
  for (const JSONObject::Member* member : unread) {
    if (overrides.renamed.contains(member->first)) continue;
    overrides.unparsed.push_back(unparsedMember(renameKey, member->first, member->second));
  }
}

void readHide(const JSONArray& elements, SheetOverrides& overrides) {
  for (const JSONValue& element : elements) {
    if (auto shortcut = canonicalShortcut(element)) {
      overrides.hidden.insert(std::move(*shortcut));
    } else {
      overrides.unparsed.push_back(unparsedElement(hideKey, element));
    }
  }
}

void readAdd(const JSONArray& elements, SheetOverrides& overrides) {
  for (const JSONValue& element : elements) {
    if (auto shortcut = AddedShortcut::fromJSON(element)) {
      overrides.added.push_back(std::move(*shortcut));
    } else {
      overrides.unparsed.push_back(unparsedElement(addKey, element));
    }
  }
}

// A section is written from the record when the record has an entry for it
// (read or unparsed), or when no value of the wrong type is kept in its place.
bool writesSection(const SheetOverrides& overrides, std::string_view section, bool hasEntries) {
  return hasEntries || !overrides.extras.contains(section);
}

}  // namespace

std::expected<SheetOverrides, SheetError> SheetCodec::decode(std::string_view data) {
  auto parsed = JSONValue::decode(data);
  if (!parsed || !parsed->isObject()) return std::unexpected(SheetError::notJSON());
  JSONObjectReader reader("", *parsed);

  SheetOverrides overrides;
  overrides.version = reader.integer("version", SheetOverrides::currentVersion);
  if (overrides.version < 1) {
    return std::unexpected(SheetError::unsupportedVersion(overrides.version));
  }

  const JSONValue* app = reader.lookUp(appKey);
  if (app == nullptr || !app->isObject()) return std::unexpected(SheetError::missingApp());
  JSONObjectReader appReader(std::string(appKey), *app);
  const JSONValue* bundleID = appReader.lookUp("bundleID");
  if (bundleID == nullptr || bundleID->asString() == nullptr ||
      !LayerNames::isBundleID(*bundleID->asString())) {
    return std::unexpected(SheetError::missingApp());
  }
  overrides.bundleID = *bundleID->asString();
  // An app without a usable name goes by its whole bundle identifier. A name
  // that is that identifier is taken whole too, not cut to a name's length:
  // that is how such an app's name is written, and reading it back must
  // give the same name. A bundle identifier is at most 255 bytes.
  std::string name = appReader.string("name", overrides.bundleID);
  if (name != overrides.bundleID) name = TextLimits::cut(name, SheetOverrides::maxTextLength);
  overrides.appName = DocumentRules::isBlank(name) ? overrides.bundleID : std::move(name);
  JSONObject appExtras = appReader.extras();

  const JSONValue* rename = reader.lookUp(renameKey);
  const JSONValue* hide = reader.lookUp(hideKey);
  const JSONValue* add = reader.lookUp(addKey);
  overrides.extras = reader.extras();
  if (!appExtras.empty()) overrides.extras.set(std::string(appKey), std::move(appExtras));

  if (rename != nullptr) {
    if (const JSONObject* members = rename->asObject()) {
      readRename(*members, overrides);
    } else {
      overrides.extras.set(std::string(renameKey), *rename);
    }
  }
  if (hide != nullptr) {
    if (const JSONArray* elements = hide->asArray()) {
      readHide(*elements, overrides);
    } else {
      overrides.extras.set(std::string(hideKey), *hide);
    }
  }
  if (add != nullptr) {
    if (const JSONArray* elements = add->asArray()) {
      readAdd(*elements, overrides);
    } else {
      overrides.extras.set(std::string(addKey), *add);
    }
  }
  return overrides;
}

std::string SheetCodec::encode(const SheetOverrides& overrides) {
  // The unparsed entries, sorted back into their sections.
  JSONObject renameEntries;
  JSONArray hideEntries;
  JSONArray addEntries;
  for (const JSONValue& entry : overrides.unparsed) {
    const JSONObject* wrapper = entry.asObject();
    if (wrapper == nullptr) continue;
    for (const auto& [section, content] : *wrapper) {
      if (section == renameKey && content.isObject()) {
        for (const auto& [key, value] : *content.asObject()) renameEntries.set(key, value);
      } else if (const JSONArray* elements = content.asArray(); elements && section == hideKey) {
        hideEntries.insert(hideEntries.end(), elements->begin(), elements->end());
      } else if (elements && section == addKey) {
        addEntries.insert(addEntries.end(), elements->begin(), elements->end());
      }
    }
  }

  JSONObject root = overrides.extras;
  JSONObject app;
  if (const JSONValue* kept = overrides.extras.find(appKey); kept && kept->isObject()) {
    app = *kept->asObject();
  }
  app.set("bundleID", overrides.bundleID);
  app.set("name", overrides.appName);
  root.set(std::string(appKey), std::move(app));
  root.set("version", overrides.version);

  if (writesSection(overrides, renameKey, !overrides.renamed.empty() || !renameEntries.empty())) {
    std::vector<JSONObject::Member> members(overrides.renamed.begin(), overrides.renamed.end());
    for (const auto& [key, value] : renameEntries) {
      if (!overrides.renamed.contains(key)) members.emplace_back(key, value);
    }
    root.set(std::string(renameKey), JSONObject(std::move(members)));
  }
  if (writesSection(overrides, hideKey, !overrides.hidden.empty() || !hideEntries.empty())) {
    JSONArray elements(overrides.hidden.begin(), overrides.hidden.end());
    elements.insert(elements.end(), hideEntries.begin(), hideEntries.end());
    root.set(std::string(hideKey), std::move(elements));
  }
  if (writesSection(overrides, addKey, !overrides.added.empty() || !addEntries.empty())) {
    JSONArray elements;
    elements.reserve(overrides.added.size() + addEntries.size());
    for (const AddedShortcut& shortcut : overrides.added) elements.push_back(shortcut.json());
    elements.insert(elements.end(), addEntries.begin(), addEntries.end());
    root.set(std::string(addKey), std::move(elements));
  }
  return DocumentRules::printed(root);
}

}  // namespace corvel
