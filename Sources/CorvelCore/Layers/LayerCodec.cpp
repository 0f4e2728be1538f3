#include "CorvelCore/Layers/LayerCodec.h"

#include <unordered_set>
#include <utility>
#include <vector>

#include "CorvelCore/Brand/Brand.h"
#include "CorvelCore/Layers/DocumentRules.h"
#include "CorvelCore/Layers/LayerAction.h"
#include "CorvelCore/Layers/LayerNames.h"
#include "CorvelCore/Shortcuts/KeyCombo.h"
#include "CorvelCore/Theme/JSONObjectReader.h"
#include "CorvelCore/Theme/JSONWalk.h"

namespace corvel {
namespace {

// The file types are named after the app that owns them.
constexpr bool isTypeOf(std::string_view identifier, std::string_view bundleID) {
  return identifier.size() == bundleID.size() + 6 && identifier.starts_with(bundleID) &&
         identifier.ends_with(".layer");
}
static_assert(isTypeOf(LayerCodec::typeIdentifier, Brand::bundleID));
static_assert(isTypeOf(LayerCodec::legacyTypeIdentifier, Brand::earlierBundleID));
static_assert(JSONValue::readPadding >= simdjson::SIMDJSON_PADDING);

constexpr std::string_view versionKey = "version";
constexpr std::string_view layersKey = "layers";

using Value = JSONWalk::Value;
using Type = JSONWalk::Type;

bool ok(simdjson::error_code error) { return error == simdjson::SUCCESS; }

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

// The root of a layers file, walked once. Each element of a "layers" array
// goes to `element` (as `bool element(Value, int depth)`) as soon as the
// parser reaches it, after `restart` for each such array, since a text that
// repeats "layers" means its last one; the file is never held whole. The
// other members are built into `extras` when `keepExtras`, else only checked.
// Gives the version and extras, or the file's error: whether it is JSON,
// and its version, are known only at the end.
template <class Restart, class Element>
std::expected<LayerFile, LayerError> walkFile(const JSONWalk::Input& input, bool keepExtras,
                                              Restart restart, Element element) {
  std::optional<JSONValue> version;
  bool layersIsArray = false;
  std::vector<JSONObject::Member> extras;
  // A parser of its own, whose buffers (several bytes for each of the
  // file's) are given back as soon as the file is read.
  simdjson::ondemand::parser parser;
  const bool isJSON = JSONWalk::rootObject(parser, input, [&](JSONWalk::Object members) {
    for (auto result : members) {
      JSONWalk::Field field;
      if (!ok(std::move(result).get(field))) return false;
      const std::optional<std::string_view> read = JSONWalk::key(field);
      if (!read) return false;
      const std::string_view key = *read;
      Value value = field.value();
      if (key == layersKey) {
        Type type{};
        if (!JSONWalk::type(value, 2, type)) return false;
        layersIsArray = type == Type::array;
        if (!layersIsArray) {
          if (!JSONWalk::check(value, 2)) return false;
          continue;
        }
        restart();
        JSONWalk::Array elements;
        if (!ok(value.get_array().get(elements))) return false;
        for (auto item : elements) {
          Value inner;
          if (!ok(item.get(inner)) || !element(inner, 3)) return false;
        }
      } else if (key == versionKey) {
        if (!JSONWalk::build(value, 2, version.emplace())) return false;
      } else if (keepExtras) {
        extras.emplace_back(std::string(key), JSONValue());
        if (!JSONWalk::build(value, 2, extras.back().second)) return false;
      } else if (!JSONWalk::check(value, 2)) {
        return false;
      }
    }
    return true;
  });
  if (!isJSON) return std::unexpected(LayerError::notJSON());

  LayerFile file;
  JSONObject members;
  if (version) members.set(std::string(versionKey), std::move(*version));
  const JSONValue root(std::move(members));
  JSONObjectReader reader("", root);
  file.version = reader.integer(versionKey, LayerCodec::currentVersion);
  if (file.version < 1) return std::unexpected(LayerError::unsupportedVersion(file.version));
  if (!layersIsArray) return std::unexpected(LayerError::notLayers());
  file.extras = JSONObject(std::move(extras));
  return file;
}

// ---- Summaries ----
//
// The summary of an element is what Layer::fromJSON would make of it, read
// from the parser directly: the same members decide, each by its last
// occurrence (as in a decoded object), and a layer, key or action counts
// exactly when the full reader would take it. The differential tests and
// the layers file's fuzzer hold the two readers to the same answers.

// A member as the checks below look at it: its case, and a string's text or
// a Boolean's value. Any other value is checked and left.
struct Seen {
  bool present = false;
  Type type = Type::null;
  std::string_view text;
  bool flag = false;

  [[nodiscard]] const std::string_view* string() const {
    return present && type == Type::string ? &text : nullptr;
  }
};

bool look(Value value, int depth, Seen& seen) {
  seen = Seen{};
  seen.present = true;
  if (!JSONWalk::type(value, depth, seen.type)) return false;
  if (seen.type == Type::string) {
    const std::optional<std::string_view> text = JSONWalk::string(value);
    seen.text = text.value_or(std::string_view());
    return text.has_value();
  }
  if (seen.type == Type::boolean) return ok(value.get_bool().get(seen.flag));
  return JSONWalk::check(value, depth);
}

// The members of an object, each by its key; `member` (as
// `bool member(std::string_view key, Value, int depth)`) takes each in turn.
template <class Member>
bool members(Value value, int depth, Member member) {
  JSONWalk::Object object;
  if (!ok(value.get_object().get(object))) return false;
  for (auto result : object) {
    JSONWalk::Field field;
    if (!ok(std::move(result).get(field))) return false;
    const std::optional<std::string_view> key = JSONWalk::key(field);
    if (!key || !member(*key, field.value(), depth + 1)) return false;
  }
  return true;
}

// Whether the value is an object; anything else is checked and left.
bool isObject(Value& value, int depth, bool& object) {
  Type type{};
  if (!JSONWalk::type(value, depth, type)) return false;
  object = type == Type::object;
  return object || JSONWalk::check(value, depth);
}

// A sendShortcut's "modifiers": missing or null, or an array of modifier names.
bool modifiersRead(Value value, int depth, bool& fine) {
  Type type{};
  if (!JSONWalk::type(value, depth, type)) return false;
  fine = type == Type::null;
  if (type != Type::array) return JSONWalk::check(value, depth);
  JSONWalk::Array elements;
  if (!ok(value.get_array().get(elements))) return false;
  fine = true;
  for (auto item : elements) {
    Value element;
    Seen name;
    if (!ok(item.get(element)) || !look(element, depth + 1, name)) return false;
    fine = fine && name.string() != nullptr && keyModifier(name.text).has_value();
  }
  return true;
}

// Whether LayerAction::fromJSON reads the value.
bool actionReads(Value value, int depth, bool& reads) {
  bool object = false;
  reads = false;
  if (!isObject(value, depth, object)) return false;
  if (!object) return true;
  Seen type, bundleID, name, text, key;
  bool modifiersFine = true;
  const bool isJSON = members(value, depth, [&](std::string_view member, Value inner, int at) {
    if (member == "type") return look(inner, at, type);
    if (member == "bundleID") return look(inner, at, bundleID);
    if (member == "name") return look(inner, at, name);
    if (member == "text") return look(inner, at, text);
    if (member == "key") return look(inner, at, key);
    if (member == "modifiers") return modifiersRead(inner, at, modifiersFine);
    return JSONWalk::check(inner, at);
  });
  if (!isJSON || type.string() == nullptr) return isJSON;
  if (type.text == "openApp") {
    reads = bundleID.string() != nullptr && LayerNames::isBundleID(bundleID.text);
  } else if (type.text == "typeText") {
    std::int64_t removed = 0;
    reads = text.string() != nullptr &&
            !DocumentRules::cleanedAndCut(text.text, LayerAction::maxTextLength, removed).empty();
  } else if (type.text == "sendShortcut") {
    reads =
        key.string() != nullptr && DocumentRules::keyNamed(key.text).has_value() && modifiersFine;
  } else if (type.text == "showSymbol") {
    reads = name.string() != nullptr && LayerNames::isSymbolName(name.text);
  }
  return true;
}

// Whether CapFace::fromJSON reads the value; null stands for no face.
bool faceReads(Value value, int depth, bool& reads) {
  Type kind{};
  if (!JSONWalk::type(value, depth, kind)) return false;
  reads = kind == Type::null;
  if (kind != Type::object) return JSONWalk::check(value, depth);
  Seen type, text, symbol, caption, bundleID;
  const bool isJSON = members(value, depth, [&](std::string_view member, Value inner, int at) {
    if (member == "type") return look(inner, at, type);
    if (member == "text") return look(inner, at, text);
    if (member == "symbol") return look(inner, at, symbol);
    if (member == "caption") return look(inner, at, caption);
    if (member == "bundleID") return look(inner, at, bundleID);
    return JSONWalk::check(inner, at);
  });
  if (!isJSON || type.string() == nullptr) return isJSON;
  const bool symbolNamed = symbol.string() != nullptr && LayerNames::isSymbolName(symbol.text);
  if (type.text == "label" || type.text == "text") {
    reads = text.string() != nullptr;
  } else if (type.text == "symbol") {
    reads = symbolNamed;
  } else if (type.text == "symbolCaption") {
    reads = symbolNamed && caption.string() != nullptr;
  } else if (type.text == "appIcon") {
    reads = bundleID.string() != nullptr && LayerNames::isBundleID(bundleID.text);
  }
  return true;
}

// Whether LayerKey::fromJSON reads the value.
bool keyReads(Value value, int depth, bool& reads) {
  bool object = false;
  reads = false;
  if (!isObject(value, depth, object)) return false;
  if (!object) return true;
  bool hasAction = false;
  bool actionFine = false;
  bool faceFine = true;
  const bool isJSON = members(value, depth, [&](std::string_view member, Value inner, int at) {
    if (member == "action") {
      hasAction = true;
      return actionReads(inner, at, actionFine);
    }
    if (member == "display") return faceReads(inner, at, faceFine);
    return JSONWalk::check(inner, at);
  });
  reads = hasAction && actionFine && faceFine;
  return isJSON;
}

// Counts the keys of a "keys" object that a layer would hold: each entry
// named by a key whose last value reads.
class KeyCounter {
 public:
  bool count(Value value, int depth, std::int64_t& keys) {
    bool object = false;
    keys = 0;
    if (!isObject(value, depth, object)) return false;
    if (!object) return true;
    for (std::size_t index : named_) reads_[index] = false;
    named_.clear();
    const bool isJSON = members(value, depth, [&](std::string_view member, Value inner, int at) {
      bool reads = false;
      if (!keyReads(inner, at, reads)) return false;
      if (const std::optional<KeyID> key = DocumentRules::keyNamed(member)) {
        const auto index = static_cast<std::size_t>(*key);
        if (!reads_[index]) {
          if (reads) named_.push_back(index);
        } else if (!reads) {
          std::erase(named_, index);
        }
        reads_[index] = reads;
      }
      return true;
    });
    keys = static_cast<std::int64_t>(named_.size());
    return isJSON;
  }

 private:
  // Whether each key's entry reads, by the key's number; `named_` lists
  // the keys whose entries read, so that only they are cleared next time.
  std::array<bool, 256> reads_{};
  std::vector<std::size_t> named_;
};

// Reads each element of "layers" into the summary of the layer
// Layer::fromJSON would make of it, keeping the first layer of each id.
class Summarizer {
 public:
  void restart() {
    summaries_.clear();
    ids_.clear();
  }

  bool element(Value value, int depth) {
    bool object = false;
    if (!isObject(value, depth, object)) return false;
    if (!object) return true;
    Seen id, name, appScope, enabled, needsReview;
    std::optional<LayerTrigger> trigger;
    std::int64_t keys = 0;
    const bool isJSON = members(value, depth, [&](std::string_view member, Value inner, int at) {
      if (member == "id") return look(inner, at, id);
      if (member == "name") return look(inner, at, name);
      if (member == "appScope") return look(inner, at, appScope);
      if (member == "enabled") return look(inner, at, enabled);
      if (member == "needsReview") return look(inner, at, needsReview);
      if (member == "keys") return keys_.count(inner, at, keys);
      if (member == "trigger") {
        JSONValue json;
        if (!JSONWalk::build(inner, at, json)) return false;
        trigger = json.isNull() ? std::nullopt : LayerTrigger::fromJSON(json);
        return true;
      }
      return JSONWalk::check(inner, at);
    });
    if (!isJSON) return false;

    const std::optional<UUID> uuid = id.string() != nullptr ? UUID::parse(id.text) : std::nullopt;
    if (!uuid || !trigger || trigger->empty()) return true;
    LayerSummary summary;
    if (const std::string_view* scope = appScope.string(); scope != nullptr && !scope->empty()) {
      if (!LayerNames::isBundleID(*scope)) return true;
      summary.appScope = std::string(*scope);
    }
    if (!ids_.insert(*uuid).second) return true;
    if (const std::string_view* text = name.string()) {
      std::int64_t removed = 0;
      summary.name = DocumentRules::cleanedAndCut(*text, Layer::maxNameLength, removed);
    }
    if (DocumentRules::isBlank(summary.name)) summary.name = Layer::defaultName;
    summary.trigger = std::move(*trigger);
    summary.needsReview = needsReview.present && needsReview.type != Type::null &&
                          (needsReview.type != Type::boolean || needsReview.flag);
    summary.enabled =
        !summary.needsReview && enabled.present && enabled.type == Type::boolean && enabled.flag;
    summary.keys = keys;
    summaries_.push_back(std::move(summary));
    return true;
  }

  std::vector<LayerSummary> taken() { return std::move(summaries_); }

 private:
  std::vector<LayerSummary> summaries_;
  std::unordered_set<UUID> ids_;
  KeyCounter keys_;
};

}  // namespace

std::expected<LayerFile, LayerError> LayerCodec::decodeFile(std::string_view data) {
  if (data.size() > maxFileBytes) return std::unexpected(LayerError::tooLarge());
  // Each element of "layers" is read into a layer as soon as the parser has
  // it and then let go, so that a large file is never held both as JSON
  // and as layers.
  std::vector<Layer> layers;
  JSONArray unparsed;
  std::unordered_set<UUID> ids;
  std::int64_t unreadable = 0;
  const JSONWalk::Input input(data, 0);
  auto file = walkFile(
      input, true,
      [&] {
        layers.clear();
        unparsed.clear();
        ids.clear();
        unreadable = 0;
      },
      [&](Value value, int depth) {
        JSONValue element;
        if (!JSONWalk::build(value, depth, element)) return false;
        auto layer = Layer::fromJSON(element);
        if (!layer) {
          ++unreadable;
          unparsed.push_back(std::move(element));
        } else if (!ids.insert(layer->id).second) {
          // A repeated id is never loaded twice; the first layer keeps it.
          unparsed.push_back(std::move(element));
        } else {
          layers.push_back(std::move(*layer));
        }
        return true;
      });
  if (!file) return file;
  file->layers = std::move(layers);
  file->unparsed = std::move(unparsed);
  if (file->version != currentVersion) file->unparsedFromNewer = unreadable;
  return file;
}

std::expected<std::vector<LayerSummary>, LayerError> LayerCodec::summaries(
    const std::string& data) {
  if (data.size() > maxFileBytes) return std::unexpected(LayerError::tooLarge());
  Summarizer summarizer;
  const JSONWalk::Input input(data, data.capacity());
  auto file = walkFile(
      input, false, [&] { summarizer.restart(); },
      [&](Value value, int depth) { return summarizer.element(value, depth); });
  if (!file) return std::unexpected(file.error());
  return summarizer.taken();
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
