#include "CorvelCore/Theme/JSONObjectReader.h"

#include <algorithm>
#include <cmath>

namespace corvel {

JSONObjectReader::JSONObjectReader(std::string path, const JSONValue& value)
    : object_(value.isObject() ? value.asObject() : &emptyObject()), path_(std::move(path)) {}

const JSONObject& JSONObjectReader::emptyObject() {
  static const JSONObject empty;
  return empty;
}

std::string JSONObjectReader::pathOf(std::string_view key) const {
  if (path_.empty()) return std::string(key);
  std::string full;
  full.reserve(path_.size() + 1 + key.size());
  full.append(path_).push_back('.');
  full.append(key);
  return full;
}

const JSONValue* JSONObjectReader::lookUp(std::string_view key) {
  if (std::find(known_.begin(), known_.end(), key) == known_.end()) known_.emplace_back(key);
  return object_->find(key);
}

std::optional<JSONValue> JSONObjectReader::value(std::string_view key) {
  const JSONValue* found = lookUp(key);
  if (found == nullptr) return std::nullopt;
  return *found;
}

std::string JSONObjectReader::string(std::string_view key, std::string fallback) {
  const JSONValue* found = lookUp(key);
  if (found == nullptr) return fallback;
  if (const JSONString* text = found->asString()) return std::string(*text);
  markUnread(key, *found, JSONValue(fallback));
  return fallback;
}

std::optional<std::string> JSONObjectReader::optionalString(std::string_view key,
                                                            std::optional<std::string> fallback) {
  const JSONValue* found = lookUp(key);
  if (found == nullptr) return fallback;
  if (found->isNull()) return std::nullopt;
  if (const JSONString* text = found->asString()) return std::string(*text);
  markUnread(key, *found, fallback ? JSONValue(*fallback) : JSONValue());
  return fallback;
}

double JSONObjectReader::number(std::string_view key, double fallback) {
  const JSONValue* found = lookUp(key);
  if (found == nullptr) return fallback;
  if (auto number = found->asNumber()) return std::isfinite(*number) ? *number : fallback;
  markUnread(key, *found, JSONValue(fallback));
  return fallback;
}

double JSONObjectReader::number(std::string_view key, double fallback, double lo, double hi) {
  return std::min(hi, std::max(lo, number(key, fallback)));
}

std::int64_t JSONObjectReader::integer(std::string_view key, std::int64_t fallback) {
  return integer(key, fallback, -maxExactInteger, maxExactInteger);
}

std::int64_t JSONObjectReader::integer(std::string_view key, std::int64_t fallback, std::int64_t lo,
                                       std::int64_t hi) {
  const JSONValue* found = lookUp(key);
  if (found == nullptr) return fallback;
  auto number = found->asNumber();
  if (!number) {
    markUnread(key, *found, JSONValue(fallback));
    return fallback;
  }
  if (!std::isfinite(*number)) return fallback;
  double clamped =
      std::trunc(std::min(static_cast<double>(hi), std::max(static_cast<double>(lo), *number)));
  // Only values strictly inside the 64-bit range convert without overflow.
  constexpr double kLimit = 9223372036854775808.0;
  if (!(clamped >= -kLimit && clamped < kLimit)) return fallback;
  return static_cast<std::int64_t>(clamped);
}

std::optional<JSONObject> JSONObjectReader::object(std::string_view key,
                                                   const std::function<JSONValue()>& readAs) {
  const JSONValue* found = lookUp(key);
  if (found == nullptr) return std::nullopt;
  if (const JSONObject* members = found->asObject()) return *members;
  markUnread(key, *found, readAs ? readAs() : JSONValue());
  return std::nullopt;
}

void JSONObjectReader::markUnread(std::string_view key, JSONValue raw, JSONValue readAs) {
  if (!raw.isEncodable()) return;
  unread_.insert_or_assign(pathOf(key), UnreadValue{std::move(raw), std::move(readAs)});
}

void JSONObjectReader::absorb(const JSONObjectReader& child) {
  for (const auto& [path, entry] : child.unread_) unread_.insert_or_assign(path, entry);
}

JSONObject JSONObjectReader::extras() const {
  std::vector<JSONObject::Member> members;
  for (const auto& [key, value] : *object_) {
    if (std::find(known_.begin(), known_.end(), key) == known_.end()) {
      members.emplace_back(key, value);
    }
  }
  return JSONObject(std::move(members));
}

}  // namespace corvel
