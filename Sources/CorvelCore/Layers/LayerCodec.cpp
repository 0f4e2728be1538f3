#include "CorvelCore/Layers/LayerCodec.h"

#include <unordered_set>
#include <utility>

#include "CorvelCore/Brand/Brand.h"
#include "CorvelCore/Layers/DocumentRules.h"
#include "CorvelCore/Theme/JSONObjectReader.h"

namespace corvel {
namespace {

// The file types are named after the app that owns them.
constexpr bool isTypeOf(std::string_view identifier, std::string_view bundleID) {
  return identifier.size() == bundleID.size() + 6 && identifier.starts_with(bundleID) &&
         identifier.ends_with(".layer");
}
static_assert(isTypeOf(LayerCodec::typeIdentifier, Brand::bundleID));
static_assert(isTypeOf(LayerCodec::legacyTypeIdentifier, Brand::earlierBundleID));

constexpr std::string_view versionKey = "version";
constexpr std::string_view layersKey = "layers";

std::string encoded(std::int64_t version, std::span<const Layer> layers, const JSONArray& unparsed,
                    const JSONObject& extras) {
  JSONArray elements;
  elements.reserve(layers.size() + unparsed.size());
  for (const Layer& layer : layers) elements.push_back(layer.json());
  elements.insert(elements.end(), unparsed.begin(), unparsed.end());
  JSONObject root = extras;
  root.set(std::string(versionKey), version);
  root.set(std::string(layersKey), std::move(elements));
  return DocumentRules::printed(root);
}

}  // namespace

std::expected<LayerFile, LayerError> LayerCodec::decodeFile(std::string_view data) {
  if (data.size() > maxFileBytes) return std::unexpected(LayerError::tooLarge());
  auto parsed = JSONValue::decode(data);
  if (!parsed || !parsed->isObject()) return std::unexpected(LayerError::notJSON());
  // The parsed document is ours: elements and members that are kept as they
  // stand are moved out of it rather than copied.
  JSONObject& root = *parsed->asObject();

  LayerFile file;
  JSONObjectReader reader("", *parsed);
  file.version = reader.integer(versionKey, currentVersion);
  if (file.version < 1) return std::unexpected(LayerError::unsupportedVersion(file.version));

  JSONValue* layersJSON = root.find(layersKey);
  JSONArray* elements = layersJSON == nullptr ? nullptr : layersJSON->asArray();
  if (elements == nullptr) return std::unexpected(LayerError::notLayers());

  file.layers.reserve(elements->size());
  std::unordered_set<UUID> ids;
  ids.reserve(elements->size());
  for (JSONValue& element : *elements) {
    auto layer = Layer::fromJSON(element);
    if (!layer) {
      if (file.version != currentVersion) ++file.unparsedFromNewer;
      file.unparsed.push_back(std::move(element));
    } else if (!ids.insert(layer->id).second) {
      // A repeated id is never loaded twice; the first layer keeps it.
      file.unparsed.push_back(std::move(element));
    } else {
      file.layers.push_back(std::move(*layer));
    }
  }

  std::vector<JSONObject::Member> extras;
  for (const auto& [key, value] : root) {
    if (key != versionKey && key != layersKey) extras.emplace_back(key, JSONValue());
  }
  for (auto& [key, value] : extras) {
    if (JSONValue* found = root.find(key)) value = std::move(*found);
  }
  file.extras = JSONObject(std::move(extras));
  return file;
}

std::expected<LayerCodec::Decoded, LayerError> LayerCodec::decode(std::string_view data) {
  auto file = decodeFile(data);
  if (!file) return std::unexpected(file.error());
  return Decoded{std::move(file->layers), file->unparsed.size()};
}

std::string LayerCodec::encode(std::span<const Layer> layers) {
  return encoded(currentVersion, layers, {}, {});
}

std::string LayerCodec::encode(const LayerFile& file) {
  return encoded(file.version, file.layers, file.unparsed, file.extras);
}

}  // namespace corvel
