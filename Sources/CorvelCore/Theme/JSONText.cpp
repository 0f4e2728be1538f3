// Turning JSON text into a JSONValue and back.
//
// Reading uses simdjson's On-Demand front end: it validates UTF-8 over the
// whole input, and `get_double` reads integers of any length (the DOM front
// end refuses those beyond 64 bits, and every number here is a double anyway).
// On-Demand validates only what it is asked to visit, so the walk visits
// every value and then checks that nothing follows the document.
//
// Writing is our own: pretty-printed the way the app writes its files, keys in
// code-point order, "/" left alone.
#include <simdjson.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {
namespace {

namespace od = simdjson::ondemand;

// Builds each value where it is to be kept (false for text that is not
// JSON), so that no value is moved on its way up the tree.
struct Decoder {
  // The root's array member handed over element by element, if any.
  const JSONValue::StreamedArray* streamed = nullptr;
  // How many members (or elements) the last object (or array) completed at
  // each depth held: siblings tend to be alike, so a container is given
  // that much room at once and seldom grows while it is filled.
  std::vector<std::size_t> memberHints;
  std::vector<std::size_t> elementHints;

  bool value(od::value element, int depth, JSONValue& out);
  bool object(od::object members, int depth, JSONValue& out);
  bool array(od::array elements, int depth, JSONValue& out);
  bool stream(od::value element, int depth);
};

std::unexpected<JSONError> refused() { return std::unexpected(JSONError::notJSONValue); }

// The room to give a container at `depth`, made known the first time.
std::size_t& hint(std::vector<std::size_t>& hints, int depth) {
  const auto index = static_cast<std::size_t>(depth);
  if (hints.size() <= index) hints.resize(index + 1, 0);
  return hints[index];
}

// A guess is never trusted far: room well beyond what a container holds is
// given back, so that a text of many small containers after a large one
// costs no more memory than without guessing.
constexpr std::size_t kMostRoomGuessed = 64;

template <class Container>
void fitted(Container& container) {
  if (container.capacity() > 2 * container.size() + 4) container.shrink_to_fit();
}

bool Decoder::object(od::object members, int depth, JSONValue& out) {
  std::vector<JSONObject::Member> filled;
  filled.reserve(std::min(hint(memberHints, depth), kMostRoomGuessed));
  for (auto field : members) {
    std::string_view key;
    if (field.unescaped_key().get(key) != simdjson::SUCCESS) return false;
    od::value inner;
    if (field.value().get(inner) != simdjson::SUCCESS) return false;
    // The key lives in the parser's buffer only until the next one is read.
    // The member's place stays put while its value is built: deeper
    // containers fill vectors of their own.
    filled.emplace_back(std::string(key), JSONValue());
    if (depth == 1 && streamed != nullptr && key == streamed->key) {
      od::json_type type;
      if (inner.type().get(type) != simdjson::SUCCESS) return false;
      if (type == od::json_type::array) {
        if (!stream(inner, depth + 1)) return false;
        filled.back().second = JSONArray();
        continue;
      }
    }
    if (!value(inner, depth + 1, filled.back().second)) return false;
  }
  hint(memberHints, depth) = filled.size();
  fitted(filled);
  out = JSONObject(std::move(filled));
  return true;
}

bool Decoder::array(od::array elements, int depth, JSONValue& out) {
  JSONArray filled;
  filled.reserve(std::min(hint(elementHints, depth), kMostRoomGuessed));
  for (auto element : elements) {
    od::value inner;
    if (element.get(inner) != simdjson::SUCCESS) return false;
    filled.emplace_back();
    if (!value(inner, depth + 1, filled.back())) return false;
  }
  hint(elementHints, depth) = filled.size();
  fitted(filled);
  out = std::move(filled);
  return true;
}

// The elements of the streamed array, each handed over once read, so that
// no more than one of them is held at a time.
bool Decoder::stream(od::value element, int depth) {
  if (depth > JSONValue::maxDepth) return false;
  od::array elements;
  if (element.get_array().get(elements) != simdjson::SUCCESS) return false;
  if (streamed->begin) streamed->begin();
  for (auto item : elements) {
    od::value inner;
    if (item.get(inner) != simdjson::SUCCESS) return false;
    JSONValue decoded;
    if (!value(inner, depth + 1, decoded)) return false;
    if (streamed->element) streamed->element(std::move(decoded));
  }
  return true;
}

bool Decoder::value(od::value element, int depth, JSONValue& out) {
  if (depth > JSONValue::maxDepth) return false;
  od::json_type type;
  if (element.type().get(type) != simdjson::SUCCESS) return false;
  switch (type) {
    case od::json_type::object: {
      od::object members;
      if (element.get_object().get(members) != simdjson::SUCCESS) return false;
      return object(members, depth, out);
    }
    case od::json_type::array: {
      od::array elements;
      if (element.get_array().get(elements) != simdjson::SUCCESS) return false;
      return array(elements, depth, out);
    }
    case od::json_type::string: {
      std::string_view text;
      if (element.get_string().get(text) != simdjson::SUCCESS) return false;
      out = text;
      return true;
    }
    case od::json_type::number: {
      double number = 0;
      if (element.get_double().get(number) != simdjson::SUCCESS) return false;
      out = number;
      return true;
    }
    case od::json_type::boolean: {
      bool flag = false;
      if (element.get_bool().get(flag) != simdjson::SUCCESS) return false;
      out = flag;
      return true;
    }
    case od::json_type::null: {
      bool isNull = false;
      return element.is_null().get(isNull) == simdjson::SUCCESS && isNull;
    }
  }
  return false;
}

// A document whose root is a scalar cannot be taken as a value by On-Demand,
// so the root is dispatched here.
std::expected<JSONValue, JSONError> decodeRoot(od::document& document,
                                               const JSONValue::StreamedArray* streamed) {
  od::json_type type;
  if (document.type().get(type) != simdjson::SUCCESS) return refused();
  Decoder decoder;
  decoder.streamed = streamed;
  switch (type) {
    case od::json_type::object:
    case od::json_type::array: {
      od::value root;
      if (document.get_value().get(root) != simdjson::SUCCESS) return refused();
      JSONValue decoded;
      if (!decoder.value(root, 1, decoded)) return refused();
      return decoded;
    }
    case od::json_type::string: {
      std::string_view text;
      if (document.get_string().get(text) != simdjson::SUCCESS) return refused();
      return JSONValue(text);
    }
    case od::json_type::number: {
      double number = 0;
      if (document.get_double().get(number) != simdjson::SUCCESS) return refused();
      return JSONValue(number);
    }
    case od::json_type::boolean: {
      bool flag = false;
      if (document.get_bool().get(flag) != simdjson::SUCCESS) return refused();
      return JSONValue(flag);
    }
    case od::json_type::null: {
      bool isNull = false;
      if (document.is_null().get(isNull) != simdjson::SUCCESS || !isNull) return refused();
      return JSONValue();
    }
  }
  return refused();
}

// ---- Writing ----

constexpr std::array<bool, 256> makeEscapeTable() {
  std::array<bool, 256> table{};
  for (int c = 0; c < 0x20; ++c) table[c] = true;
  table['"'] = true;
  table['\\'] = true;
  return table;
}
constexpr std::array<bool, 256> kNeedsEscape = makeEscapeTable();

void writeString(std::string& out, std::string_view text) {
  static constexpr char kHex[] = "0123456789abcdef";
  out.push_back('"');
  std::size_t runStart = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto byte = static_cast<unsigned char>(text[i]);
    if (!kNeedsEscape[byte]) continue;
    out.append(text.data() + runStart, i - runStart);
    runStart = i + 1;
    switch (byte) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\b':
        out += "\\b";
        break;
      case '\f':
        out += "\\f";
        break;
      default:
        out += "\\u00";
        out.push_back(kHex[byte >> 4]);
        out.push_back(kHex[byte & 0x0F]);
    }
  }
  out.append(text.data() + runStart, text.size() - runStart);
  out.push_back('"');
}

// Integral numbers within the range where doubles are exact print as
// integers; everything else in the shortest form that reads back the same.
void writeNumber(std::string& out, double number) {
  std::array<char, 32> buffer{};
  constexpr double kExact = 9007199254740992.0;
  std::to_chars_result result;
  if (number == std::trunc(number) && std::fabs(number) <= kExact) {
    if (number == 0 && std::signbit(number)) {
      out += "-0";
      return;
    }
    result = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                           static_cast<std::int64_t>(number));
  } else {
    result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  }
  out.append(buffer.data(), result.ptr);
}

struct Writer {
  std::string out;
  bool pretty;

  void newline(int depth) {
    out.push_back('\n');
    out.append(static_cast<std::size_t>(depth) * 2, ' ');
  }

  void write(const JSONValue& value, int depth) {
    switch (value.kind()) {
      case JSONValue::Kind::string:
        writeString(out, *value.asString());
        return;
      case JSONValue::Kind::number:
        writeNumber(out, value.asNumber().value_or(0));
        return;
      case JSONValue::Kind::boolean:
        out += value.asBool().value_or(false) ? "true" : "false";
        return;
      case JSONValue::Kind::null:
        out += "null";
        return;
      case JSONValue::Kind::object: {
        const JSONObject& object = *value.asObject();
        if (object.empty()) {
          out += "{}";
          return;
        }
        out.push_back('{');
        bool first = true;
        for (const auto& [key, member] : object) {
          if (!first) out.push_back(',');
          first = false;
          if (pretty) newline(depth + 1);
          writeString(out, key);
          out += pretty ? " : " : ":";
          write(member, depth + 1);
        }
        if (pretty) newline(depth);
        out.push_back('}');
        return;
      }
      case JSONValue::Kind::array: {
        const JSONArray& array = *value.asArray();
        if (array.empty()) {
          out += "[]";
          return;
        }
        out.push_back('[');
        bool first = true;
        for (const JSONValue& element : array) {
          if (!first) out.push_back(',');
          first = false;
          if (pretty) newline(depth + 1);
          write(element, depth + 1);
        }
        if (pretty) newline(depth);
        out.push_back(']');
        return;
      }
    }
  }
};

// The description used when a value cannot be written as JSON: the same
// shape, with non-finite numbers spelled out.
void describe(std::string& out, const JSONValue& value) {
  switch (value.kind()) {
    case JSONValue::Kind::number: {
      double number = value.asNumber().value_or(0);
      if (std::isnan(number)) {
        out += "nan";
      } else if (std::isinf(number)) {
        out += number > 0 ? "inf" : "-inf";
      } else {
        writeNumber(out, number);
      }
      return;
    }
    case JSONValue::Kind::object: {
      out.push_back('{');
      bool first = true;
      for (const auto& [key, member] : *value.asObject()) {
        if (!first) out.push_back(',');
        first = false;
        writeString(out, key);
        out.push_back(':');
        describe(out, member);
      }
      out.push_back('}');
      return;
    }
    case JSONValue::Kind::array: {
      out.push_back('[');
      bool first = true;
      for (const JSONValue& element : *value.asArray()) {
        if (!first) out.push_back(',');
        first = false;
        describe(out, element);
      }
      out.push_back(']');
      return;
    }
    case JSONValue::Kind::string:
    case JSONValue::Kind::boolean:
    case JSONValue::Kind::null: {
      Writer writer{{}, false};
      writer.write(value, 0);
      out += writer.out;
      return;
    }
  }
}

static_assert(JSONValue::readPadding >= simdjson::SIMDJSON_PADDING);

// `capacity` is how many bytes from the start of the text may be read; with
// enough beyond the text, the parser reads it where it is.
std::expected<JSONValue, JSONError> decodeText(std::string_view text, std::size_t capacity,
                                               const JSONValue::StreamedArray* streamed) {
  // One parser per thread keeps its buffers between documents.
  thread_local od::parser parser;
  simdjson::padded_string copy;
  simdjson::padded_string_view padded;
  if (capacity >= text.size() + simdjson::SIMDJSON_PADDING) {
    padded = simdjson::padded_string_view(text, capacity);
  } else {
    copy = simdjson::padded_string(text);
    padded = copy;
  }
  od::document document;
  if (parser.iterate(padded).get(document) != simdjson::SUCCESS) return refused();
  auto root = decodeRoot(document, streamed);
  if (!root) return root;
  // Anything left after the document (a second value, a stray bracket) makes
  // the text malformed.
  const char* rest = nullptr;
  if (document.current_location().get(rest) == simdjson::SUCCESS) return refused();
  return root;
}

}  // namespace

std::expected<JSONValue, JSONError> JSONValue::decode(std::string_view text) {
  return decodeText(text, 0, nullptr);
}

std::expected<JSONValue, JSONError> JSONValue::decode(const std::string& text,
                                                      const StreamedArray& streamed) {
  return decodeText(text, text.capacity(), &streamed);
}

std::expected<std::string, JSONError> JSONValue::encoded() const {
  if (!isEncodable()) return std::unexpected(JSONError::notEncodable);
  Writer writer{{}, true};
  writer.write(*this, 0);
  return std::move(writer.out);
}

std::string JSONValue::compactText() const {
  if (const std::string* text = asString()) return *text;
  if (!isEncodable()) {
    std::string out;
    describe(out, *this);
    return out;
  }
  Writer writer{{}, false};
  writer.write(*this, 0);
  return std::move(writer.out);
}

}  // namespace corvel
