// JSONValue: the plain JSON value every document of the system is read into
// and written from. Six cases (string, number, bool, object, array, null),
// value semantics, structural equality and a matching hash.
//
// Text goes in through `decode` (strict RFC 8259, every number a double) and
// comes out through `encoded` (pretty-printed, keys sorted by code point, "/"
// unescaped, integral numbers without a fraction) or `compactText` (one line,
// for quoting a value in a message).
#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "CorvelCore/Theme/JSONString.h"

namespace corvel {

class JSONValue;
struct UnreadValue;

using JSONArray = std::vector<JSONValue>;

// A JSON object: members kept sorted by key (byte order, which for UTF-8 is
// code-point order), each key once. Key order of the source text is not kept.
class JSONObject {
 public:
  using Member = std::pair<std::string, JSONValue>;
  using const_iterator = std::vector<Member>::const_iterator;

  JSONObject() = default;
  // Builds from members in any order; of two equal keys the later one wins.
  JSONObject(std::initializer_list<Member> members);
  explicit JSONObject(std::vector<Member> members);

  [[nodiscard]] std::size_t size() const;
  [[nodiscard]] bool empty() const;
  // The member's value, or nullptr when the key is absent.
  [[nodiscard]] const JSONValue* find(std::string_view key) const;
  [[nodiscard]] JSONValue* find(std::string_view key);
  [[nodiscard]] bool contains(std::string_view key) const { return find(key) != nullptr; }
  // Inserts the member, or replaces the value of an existing key.
  void set(std::string key, JSONValue value);
  // Removes the key; false when it was not there.
  bool erase(std::string_view key);
  // The member's value, inserted as null first when the key is absent.
  JSONValue& operator[](std::string_view key);

  // Members in ascending key order.
  [[nodiscard]] const_iterator begin() const;
  [[nodiscard]] const_iterator end() const;
  [[nodiscard]] const std::vector<Member>& members() const { return members_; }

  friend bool operator==(const JSONObject& a, const JSONObject& b);

 private:
  std::vector<Member> members_;
};

enum class JSONError {
  notJSONValue,  // the text is not one well-formed JSON value
  notEncodable,  // the value holds a non-finite number
};

// The sentence for an error ("Not a JSON value" for text that does not decode).
[[nodiscard]] std::string_view message(JSONError error);

class JSONValue {
 public:
  // The cases, in their declared order.
  enum class Kind { string, number, boolean, object, array, null };

  // Deepest nesting of arrays and objects that `decode` accepts; far beyond
  // any document of ours, and well inside the parser's own limit.
  static constexpr int maxDepth = 512;

  JSONValue() : storage_(nullptr) {}
  JSONValue(std::nullptr_t) : storage_(nullptr) {}
  JSONValue(std::string text) : storage_(std::in_place_type<JSONString>, std::move(text)) {}
  JSONValue(std::string_view text) : storage_(std::in_place_type<JSONString>, text) {}
  JSONValue(const char* text) : storage_(std::in_place_type<JSONString>, std::string_view(text)) {}
  JSONValue(double number) : storage_(number) {}
  JSONValue(int number) : storage_(static_cast<double>(number)) {}
  JSONValue(std::int64_t number) : storage_(static_cast<double>(number)) {}
  JSONValue(bool flag) : storage_(flag) {}
  JSONValue(JSONObject object) : storage_(std::move(object)) {}
  JSONValue(JSONArray array) : storage_(std::move(array)) {}

  [[nodiscard]] Kind kind() const { return static_cast<Kind>(storage_.index()); }
  [[nodiscard]] bool isObject() const { return kind() == Kind::object; }
  [[nodiscard]] bool isNull() const { return kind() == Kind::null; }

  // Typed access: nullptr (or nothing) when the value is of another case.
  [[nodiscard]] const JSONString* asString() const { return std::get_if<JSONString>(&storage_); }
  [[nodiscard]] std::optional<double> asNumber() const;
  [[nodiscard]] std::optional<bool> asBool() const;
  [[nodiscard]] const JSONObject* asObject() const { return std::get_if<JSONObject>(&storage_); }
  [[nodiscard]] JSONObject* asObject() { return std::get_if<JSONObject>(&storage_); }
  [[nodiscard]] const JSONArray* asArray() const { return std::get_if<JSONArray>(&storage_); }
  [[nodiscard]] JSONArray* asArray() { return std::get_if<JSONArray>(&storage_); }

  // True when no number anywhere inside is infinite or NaN.
  [[nodiscard]] bool isEncodable() const;

  // A string's own text; any other value as compact JSON with sorted keys and
  // "/" unescaped; a value that cannot be encoded as a plain description.
  [[nodiscard]] std::string compactText() const;

  // Parses one JSON text (UTF-8). Refuses malformed text, invalid UTF-8,
  // trailing garbage and nesting deeper than `maxDepth`. Every number
  // becomes a double, integers beyond 64 bits included. When `readable`,
  // the bytes that may be read from the text's start, holds `readPadding`
  // more than the text (as a file read by the tool does), the text is
  // parsed where it lies; otherwise it is copied first.
  [[nodiscard]] static std::expected<JSONValue, JSONError> decode(std::string_view text,
                                                                  std::size_t readable = 0);

  // Room a text needs after it to be parsed where it lies: a reader of large
  // documents given text whose storage holds this many more bytes (which
  // it reads but never uses) does not copy the text first.
  static constexpr std::size_t readPadding = 64;

  // Pretty-printed JSON (two-space indent, "key" : value), keys sorted, "/"
  // unescaped, no final line break. Fails on a non-finite number.
  [[nodiscard]] std::expected<std::string, JSONError> encoded() const;

  // Puts one unread value back: walks `path` from this value and, where the
  // member at the end still equals `unread.readAs`, sets it to `unread.raw`.
  // A path through a member that is missing or not an object changes nothing.
  [[nodiscard]] JSONValue restoring(const UnreadValue& unread,
                                    std::span<const std::string> path) const;
  // Applies every entry (keys are dotted paths) in ascending order of its path.
  [[nodiscard]] JSONValue restoring(const std::map<std::string, UnreadValue>& unread) const;

  // A hash consistent with equality (0 and -0 hash alike).
  [[nodiscard]] std::size_t hash() const;

  friend bool operator==(const JSONValue& a, const JSONValue& b) {
    return a.storage_ == b.storage_;
  }

 private:
  std::variant<JSONString, double, bool, JSONObject, JSONArray, std::nullptr_t> storage_;
};

// A value the lenient reader could not use: what the file held, and what the
// reader used instead (in JSON form; null where an optional fell back to absent).
struct UnreadValue {
  JSONValue raw;
  JSONValue readAs;
  friend bool operator==(const UnreadValue&, const UnreadValue&) = default;
};

// Defined here, where JSONValue is complete, so that every compiler can size
// the members.
inline std::size_t JSONObject::size() const { return members_.size(); }
inline bool JSONObject::empty() const { return members_.empty(); }
inline JSONObject::const_iterator JSONObject::begin() const { return members_.begin(); }
inline JSONObject::const_iterator JSONObject::end() const { return members_.end(); }

}  // namespace corvel

template <>
struct std::hash<corvel::JSONValue> {
  std::size_t operator()(const corvel::JSONValue& value) const { return value.hash(); }
};
