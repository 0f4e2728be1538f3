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

// Reads the elements of "layers" into layers, in file order: the first
// layer of each id goes to the sink, the rest of the elements to `unparsed`.
struct ElementReader {
  const LayerCodec::LayerSink& sink;
  JSONArray& unparsed;
  std::unordered_set<UUID> ids{};
  std::int64_t unreadable = 0;

  // A text that repeats "layers" means its last one.
  void restart() {
    unparsed.clear();
    ids.clear();
    unreadable = 0;
    if (sink.restart) sink.restart();
  }

  void read(JSONValue element) {
    auto layer = Layer::fromJSON(element);
    if (!layer) {
      ++unreadable;
      unparsed.push_back(std::move(element));
    } else if (!ids.insert(layer->id).second) {
      // A repeated id is never loaded twice; the first layer keeps it.
      unparsed.push_back(std::move(element));
    } else if (sink.layer) {
      sink.layer(std::move(*layer));
    }
  }
};

}  // namespace

std::expected<LayerFile, LayerError> LayerCodec::decodeFile(std::string_view data) {
  if (data.size() > maxFileBytes) return std::unexpected(LayerError::tooLarge());
  // One copy, with the room the parser needs to read it in place.
  std::string text;
  text.reserve(data.size() + JSONValue::readPadding);
  text.assign(data);
  std::vector<Layer> layers;
  auto file = decodeFile(
      text, {[&] { layers.clear(); }, [&](Layer layer) { layers.push_back(std::move(layer)); }});
  if (file) file->layers = std::move(layers);
  return file;
}

std::expected<LayerFile, LayerError> LayerCodec::decodeFile(const std::string& data,
                                                            const LayerSink& sink) {
  if (data.size() > maxFileBytes) return std::unexpected(LayerError::tooLarge());

  // Each element of "layers" is read into a layer as soon as the parser has
  // it and then let go, so that a large file is never held both as JSON
  // and as layers. Whether the file is well formed, and its version, are
  // known only at the end.
  LayerFile file;
  ElementReader elements{sink, file.unparsed};
  const JSONValue::StreamedArray layers{
      layersKey, [&] { elements.restart(); },
      [&](JSONValue element) { elements.read(std::move(element)); }};
  auto parsed = JSONValue::decode(data, layers);
  if (!parsed || !parsed->isObject()) return std::unexpected(LayerError::notJSON());
  JSONObject& root = *parsed->asObject();

  JSONObjectReader reader("", *parsed);
  file.version = reader.integer(versionKey, currentVersion);
  if (file.version < 1) return std::unexpected(LayerError::unsupportedVersion(file.version));

  // An array under "layers" was streamed above and stands here empty.
  const JSONValue* layersJSON = root.find(layersKey);
  if (layersJSON == nullptr || layersJSON->asArray() == nullptr) {
    return std::unexpected(LayerError::notLayers());
  }
  if (file.version != currentVersion) file.unparsedFromNewer = elements.unreadable;

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
