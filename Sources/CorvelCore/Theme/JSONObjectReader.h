// JSONObjectReader: walks one JSON object and pulls typed fields out of it,
// leniently. A missing key gives the default silently; a key of the wrong type
// gives the default and is remembered in `unread` (by its full dotted path) so
// that the writer can put the author's value back; keys never asked for are
// the `extras`. Every read first records its key as known, present or not.
//
// The reader borrows the object it reads: the JSONValue given to the
// constructor must outlive the reader.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Support/EnumName.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

class JSONObjectReader {
 public:
  // Integers read without a range are kept within plus or minus 2^53.
  static constexpr std::int64_t maxExactInteger = 9007199254740992;

  // Reads `value` when it is an object; any other value reads as an empty object.
  JSONObjectReader(std::string path, const JSONValue& value);

  // The object's members (empty when the value was not an object).
  [[nodiscard]] const JSONObject& members() const { return *object_; }
  // The dotted path of this object from the document's root ("" at the root).
  [[nodiscard]] const std::string& path() const { return path_; }
  // Every key some read asked for, in the order first asked.
  [[nodiscard]] const std::vector<std::string>& known() const { return known_; }
  // The values that could not be used, by full dotted path.
  [[nodiscard]] const std::map<std::string, UnreadValue>& unread() const { return unread_; }

  // The key alone at the root, otherwise path + "." + key.
  [[nodiscard]] std::string pathOf(std::string_view key) const;

  // The value as it stands (null included), or nothing when missing.
  std::optional<JSONValue> value(std::string_view key);
  // A string; null or another type gives the default, marked unread.
  std::string string(std::string_view key, std::string fallback);
  // A string; null gives nothing unmarked; another type gives the default, marked unread.
  std::optional<std::string> optionalString(std::string_view key,
                                            std::optional<std::string> fallback);
  // A finite number; a non-finite one gives the default unmarked; another type
  // (null included) gives the default, marked unread.
  double number(std::string_view key, double fallback);
  // As `number`, then clamped into lo...hi (lower bound first); the default too.
  double number(std::string_view key, double fallback, double lo, double hi);
  // An integer within plus or minus 2^53 (see the ranged form).
  std::int64_t integer(std::string_view key, std::int64_t fallback);
  // A finite number clamped into lo...hi, truncated toward zero; a value that
  // cannot be an integer gives the default. Wrong types as for `number`.
  std::int64_t integer(std::string_view key, std::int64_t fallback, std::int64_t lo,
                       std::int64_t hi);
  // The case whose raw text equals the string; null, another type or an
  // unknown text gives the default, marked unread (readAs: the default's raw text).
  template <class E, class Names>
  E choice(std::string_view key, E fallback, const Names& names) {
    const JSONValue* found = lookUp(key);
    if (found == nullptr) return fallback;
    if (const JSONString* text = found->asString()) {
      if (auto match = caseNamed<E>(names, *text)) return *match;
    }
    markUnread(key, *found, JSONValue(rawValue(names, fallback)));
    return fallback;
  }
  // The members of an object; null or another type gives nothing, marked
  // unread (readAs: what `readAs` produces).
  std::optional<JSONObject> object(std::string_view key, const std::function<JSONValue()>& readAs);
  // A sub-record: an object is handed to `read` with a child reader at
  // pathOf(key), whose unread entries are then absorbed; null gives nothing;
  // another type gives the default, marked unread (readAs: `json` of the
  // default, or null). `read` is (JSONObjectReader&) -> T, `json` is (const T&) -> JSONValue.
  template <class T, class Read, class ToJSON>
  std::optional<T> part(std::string_view key, Read read, ToJSON json, std::optional<T> fallback) {
    const JSONValue* found = lookUp(key);
    if (found == nullptr) return fallback;
    if (found->isNull()) return std::nullopt;
    if (found->isObject()) {
      JSONObjectReader child(pathOf(key), *found);
      T result = read(child);
      absorb(child);
      return result;
    }
    markUnread(key, *found, fallback ? json(*fallback) : JSONValue());
    return fallback;
  }

  // Records unread[pathOf(key)], replacing an earlier entry; nothing is
  // recorded when `raw` holds a non-finite number.
  void markUnread(std::string_view key, JSONValue raw, JSONValue readAs);
  // Takes a child reader's unread entries; the child's entry wins a clash.
  void absorb(const JSONObjectReader& child);
  // The members whose keys no read asked for. Take it after all the reads.
  [[nodiscard]] JSONObject extras() const;

  // Marks the key as known and finds it; nullptr when missing. For readers
  // of this area's records that need a rule of their own.
  const JSONValue* lookUp(std::string_view key);

 private:
  static const JSONObject& emptyObject();

  const JSONObject* object_;
  std::string path_;
  std::vector<std::string> known_;
  std::map<std::string, UnreadValue> unread_;
};

}  // namespace corvel
