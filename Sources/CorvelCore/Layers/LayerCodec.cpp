#include "CorvelCore/Layers/LayerCodec.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

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

  // Moves `element` away only when it is kept in `unparsed`.
  void read(JSONValue& element) {
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

// Hands the elements of a large file to an ElementReader on a second
// thread, so that layers are made from one part of the file while the
// parser reads the next. Elements go over in batches, in file order, and at
// most a few batches wait at a time, so the file is still never held whole.
// Read batches come back to be freed here: memory is best given back by
// the thread that took it, as the allocator then never has to share its
// pools between threads. Without a second thread (none can be started) the
// elements are read here.
class ElementPipe {
 public:
  explicit ElementPipe(ElementReader& reader) : reader_(reader) {
    try {
      worker_ = std::thread([this] { work(); });
    } catch (const std::system_error&) {
      // Read on this thread instead.
    }
  }
  ElementPipe(const ElementPipe&) = delete;
  ElementPipe& operator=(const ElementPipe&) = delete;
  ~ElementPipe() { finish(); }

  void restart() {
    send();
    filling_.restart = true;
  }

  void read(JSONValue element) {
    filling_.elements.push_back(std::move(element));
    if (filling_.elements.size() == batchSize) send();
  }

  // Every element handed over has been read once this returns.
  void finish() {
    send();
    if (!worker_.joinable()) return;
    {
      const std::lock_guard lock(mutex_);
      finished_ = true;
    }
    changed_.notify_all();
    worker_.join();
    spent_.clear();
  }

 private:
  struct Batch {
    // The file starts its "layers" over before these elements.
    bool restart = false;
    std::vector<JSONValue> elements;
  };
  static constexpr std::size_t batchSize = 32;
  static constexpr std::size_t mostWaiting = 8;

  void send() {
    if (!filling_.restart && filling_.elements.empty()) return;
    Batch batch = std::exchange(filling_, Batch());
    filling_.elements.reserve(batchSize);
    if (!worker_.joinable()) {
      take(batch);
      return;
    }
    std::deque<Batch> spent;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return waiting_.size() < mostWaiting; });
      waiting_.push_back(std::move(batch));
      spent.swap(spent_);
    }
    changed_.notify_all();
  }

  void work() {
    while (true) {
      Batch batch;
      {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return finished_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        batch = std::move(waiting_.front());
        waiting_.pop_front();
      }
      changed_.notify_all();
      take(batch);
      const std::lock_guard lock(mutex_);
      spent_.push_back(std::move(batch));
    }
  }

  void take(Batch& batch) {
    if (batch.restart) reader_.restart();
    for (JSONValue& element : batch.elements) reader_.read(element);
  }

  ElementReader& reader_;
  Batch filling_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Batch> waiting_;
  // Read, to be freed by the thread that made them.
  std::deque<Batch> spent_;
  bool finished_ = false;
  std::thread worker_;
};

// Below this size a file is read faster than a second thread starts.
constexpr std::size_t pipedFileBytes = 1'048'576;

}  // namespace

std::expected<LayerFile, LayerError> LayerCodec::decodeFile(std::string_view data) {
  if (data.size() > maxFileBytes) return std::unexpected(LayerError::tooLarge());
  // One copy, with the room the parser needs to read it in place.
  std::string text;
  text.reserve(data.size() + JSONValue::readPadding);
  text.assign(data);
  text.append(JSONValue::readPadding, '\0');
  text.resize(data.size());
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
  std::expected<JSONValue, JSONError> parsed;
  if (data.size() < pipedFileBytes) {
    parsed = JSONValue::decode(data, {layersKey, [&] { elements.restart(); },
                                      [&](JSONValue element) { elements.read(element); }});
  } else {
    ElementPipe pipe(elements);
    parsed = JSONValue::decode(data, {layersKey, [&] { pipe.restart(); },
                                      [&](JSONValue element) { pipe.read(std::move(element)); }});
    pipe.finish();
  }
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
