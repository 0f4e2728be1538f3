// Turning JSON text into a JSONValue and back.
//
// Reading walks the text with simdjson's On-Demand front end (JSONWalk), the
// same walk the readers of large documents use, so they accept the same texts.
//
// Writing is our own: pretty-printed the way the app writes its files, keys in
// code-point order, "/" left alone.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "CorvelCore/Theme/JSONValue.h"
#include "CorvelCore/Theme/JSONWalk.h"

namespace corvel {
namespace {

namespace od = simdjson::ondemand;

bool ok(simdjson::error_code error) { return error == simdjson::SUCCESS; }

std::unexpected<JSONError> refused() { return std::unexpected(JSONError::notJSONValue); }

// A document whose root is a scalar cannot be taken as a value by On-Demand,
// so the root is dispatched here.
std::expected<JSONValue, JSONError> decodeRoot(od::document& document) {
  od::json_type type{};
  if (!ok(document.type().get(type))) return refused();
  switch (type) {
    case od::json_type::object:
    case od::json_type::array: {
      od::value root;
      if (!ok(document.get_value().get(root))) return refused();
      JSONValue decoded;
      if (!JSONWalk::build(root, 1, decoded)) return refused();
      return decoded;
    }
    case od::json_type::string: {
      std::string_view text;
      if (!ok(document.get_string().get(text))) return refused();
      return JSONValue(text);
    }
    case od::json_type::number: {
      double number = 0;
      if (!ok(document.get_double().get(number))) return refused();
      return JSONValue(number);
    }
    case od::json_type::boolean: {
      bool flag = false;
      if (!ok(document.get_bool().get(flag))) return refused();
      return JSONValue(flag);
    }
    case od::json_type::null: {
      bool isNull = false;
      if (!ok(document.is_null().get(isNull)) || !isNull) return refused();
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

}  // namespace

std::expected<JSONValue, JSONError> JSONValue::decode(std::string_view text, std::size_t readable) {
  const JSONWalk::Input input(text, readable);
  od::document document;
  if (!ok(JSONWalk::parser().iterate(input.view()).get(document))) return refused();
  auto root = decodeRoot(document);
  if (root && !JSONWalk::atEnd(document)) return refused();
  return root;
}

std::expected<std::string, JSONError> JSONValue::encoded() const {
  if (!isEncodable()) return std::unexpected(JSONError::notEncodable);
  Writer writer{{}, true};
  writer.write(*this, 0);
  return std::move(writer.out);
}

std::string JSONValue::compactText() const {
  if (const JSONString* text = asString()) return std::string(*text);
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
