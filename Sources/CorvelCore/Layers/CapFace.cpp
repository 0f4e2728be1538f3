#include "CorvelCore/Layers/CapFace.h"

#include <array>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "CorvelCore/Layers/DocumentRules.h"
#include "CorvelCore/Layers/LayerNames.h"
#include "CorvelCore/Layers/LayerText.h"
#include "CorvelCore/Support/Overloaded.h"

namespace corvel {
namespace {

std::string limitedText(const std::string& text, std::int64_t limit, bool clean) {
  return TextLimits::cut(clean ? LayerText::clean(text).text : text, limit);
}

using Read = std::expected<CapFace::Value, LayerError>;

// Every member a face reads, whatever its type; the found values are
// indexed by this enumeration.
enum Field : std::size_t { typeField, textField, symbolField, captionField, bundleIDField };
constexpr std::array<std::string_view, 5> fieldNames{"type", "text", "symbol", "caption",
                                                     "bundleID"};
using Fields = std::array<const JSONValue*, fieldNames.size()>;

// A field that must be a text; nullptr when missing or of another type.
const JSONString* textOf(const Fields& fields, Field field) {
  return fields[field] == nullptr ? nullptr : fields[field]->asString();
}

// A symbol name that passes LayerNames::isSymbolName, or nullptr.
const JSONString* symbolOf(const Fields& fields) {
  const JSONString* name = textOf(fields, symbolField);
  return name != nullptr && LayerNames::isSymbolName(*name) ? name : nullptr;
}

Read readLabel(const Fields& fields, std::int64_t& removed) {
  const JSONString* shown = textOf(fields, textField);
  if (shown == nullptr) return std::unexpected(LayerError::badKey());
  return CapFace::Label{DocumentRules::cleanedAndCut(*shown, CapFace::maxLabelLength, removed)};
}

Read readText(const Fields& fields, std::int64_t& removed) {
  const JSONString* shown = textOf(fields, textField);
  if (shown == nullptr) return std::unexpected(LayerError::badKey());
  return CapFace::Text{DocumentRules::cleanedAndCut(*shown, CapFace::maxTextLength, removed)};
}

Read readSymbol(const Fields& fields, std::int64_t&) {
  const JSONString* name = symbolOf(fields);
  if (name == nullptr) return std::unexpected(LayerError::badKey());
  return CapFace::Symbol{std::string(*name)};
}

Read readSymbolCaption(const Fields& fields, std::int64_t& removed) {
  const JSONString* name = symbolOf(fields);
  const JSONString* caption = textOf(fields, captionField);
  if (name == nullptr || caption == nullptr) return std::unexpected(LayerError::badKey());
  return CapFace::SymbolCaption{
      std::string(*name),
      DocumentRules::cleanedAndCut(*caption, CapFace::maxCaptionLength, removed)};
}

Read readAppIcon(const Fields& fields, std::int64_t&) {
  const JSONString* bundleID = textOf(fields, bundleIDField);
  if (bundleID == nullptr || !LayerNames::isBundleID(*bundleID)) {
    return std::unexpected(LayerError::badKey());
  }
  return CapFace::AppIcon{std::string(*bundleID)};
}

// The members each case reads.
constexpr std::array<Field, 2> textFields{typeField, textField};
constexpr std::array<Field, 2> symbolFields{typeField, symbolField};
constexpr std::array<Field, 3> symbolCaptionFields{typeField, symbolField, captionField};
constexpr std::array<Field, 2> appIconFields{typeField, bundleIDField};

struct FaceType {
  std::string_view name;
  Read (*read)(const Fields&, std::int64_t&);
  std::span<const Field> fields;
};

// The written "type" of each case, its reader and the members it reads, in
// the order of CapFace::Value.
constexpr std::array<FaceType, std::variant_size_v<CapFace::Value>> faceTypes{{
    {"label", readLabel, textFields},
    {"text", readText, textFields},
    {"symbol", readSymbol, symbolFields},
    {"symbolCaption", readSymbolCaption, symbolCaptionFields},
    {"appIcon", readAppIcon, appIconFields},
}};

}  // namespace

CapFace CapFace::label(std::string text) { return {Label{std::move(text)}, {}}; }
CapFace CapFace::text(std::string shown) { return {Text{std::move(shown)}, {}}; }
CapFace CapFace::symbol(std::string name) { return {Symbol{std::move(name)}, {}}; }
CapFace CapFace::symbolCaption(std::string symbol, std::string caption) {
  return {SymbolCaption{std::move(symbol), std::move(caption)}, {}};
}
CapFace CapFace::appIcon(std::string bundleID) { return {AppIcon{std::move(bundleID)}, {}}; }

CapFace CapFace::limited(bool clean) const {
  CapFace result = *this;
  std::visit(Overloaded{
                 [&](Label& face) { face.text = limitedText(face.text, maxLabelLength, clean); },
                 [&](Text& face) { face.text = limitedText(face.text, maxTextLength, clean); },
                 [&](SymbolCaption& face) {
                   face.caption = limitedText(face.caption, maxCaptionLength, clean);
                 },
                 [](Symbol&) {},
                 [](AppIcon&) {},
             },
             result.value);
  return result;
}

JSONValue CapFace::json() const {
  // Members in ascending key order, "type" last.
  std::vector<JSONObject::Member> own;
  std::visit(Overloaded{
                 [&](const Label& face) { own.emplace_back("text", face.text); },
                 [&](const Text& face) { own.emplace_back("text", face.text); },
                 [&](const Symbol& face) { own.emplace_back("symbol", face.symbol); },
                 [&](const SymbolCaption& face) {
                   own.emplace_back("caption", face.caption);
                   own.emplace_back("symbol", face.symbol);
                 },
                 [&](const AppIcon& face) { own.emplace_back("bundleID", face.bundleID); },
             },
             value);
  own.emplace_back("type", JSONValue(faceTypes[value.index()].name));
  return DocumentRules::recordObject(extras, std::move(own));
}

std::expected<CapFace, LayerError> CapFace::fromJSON(const JSONValue& json, std::int64_t& removed) {
  const JSONObject* object = json.asObject();
  if (object == nullptr) return std::unexpected(LayerError::badKey());
  Fields fields;
  DocumentRules::findMembers(*object, fieldNames, fields);
  const JSONString* type = textOf(fields, typeField);
  if (type == nullptr) return std::unexpected(LayerError::badKey());
  for (const FaceType& faceType : faceTypes) {
    if (faceType.name != *type) continue;
    Read value = faceType.read(fields, removed);
    if (!value) return std::unexpected(value.error());
    return CapFace{std::move(*value),
                   DocumentRules::unknownMembers(*object, fields, faceType.fields, fieldNames)};
  }
  return std::unexpected(LayerError::badKey());
}

}  // namespace corvel
