#include "CorvelCore/Theme/JSONValue.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace corvel {
namespace {

bool keyLess(const JSONObject::Member& a, const JSONObject::Member& b) { return a.first < b.first; }

// True when key `a` sorts before `b` (byte order). Keys are a few bytes
// long: compared by hand they cost less than the call to memcmp the
// standard comparison makes.
bool keyBefore(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t index = 0; index < common; ++index) {
    if (a[index] != b[index]) {
      return static_cast<unsigned char>(a[index]) < static_cast<unsigned char>(b[index]);
    }
  }
  return a.size() < b.size();
}

// Sorts members by key and keeps, of equal keys, the one that came last, as a
// JSON text with a repeated key means its last value.
void normalise(std::vector<JSONObject::Member>& members) {
  // Documents are written with sorted keys, so most objects are in order.
  if (std::adjacent_find(members.begin(), members.end(), [](const auto& a, const auto& b) {
        return !keyBefore(a.first, b.first);
      }) == members.end()) {
    return;
  }
  std::stable_sort(members.begin(), members.end(), keyLess);
  // Compacted in place: each key's last value moves onto its first slot.
  std::size_t kept = 0;
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (kept > 0 && members[kept - 1].first == members[i].first) {
      members[kept - 1].second = std::move(members[i].second);
    } else {
      if (kept != i) members[kept] = std::move(members[i]);
      ++kept;
    }
  }
  members.erase(members.begin() + static_cast<std::ptrdiff_t>(kept), members.end());
}

std::size_t mix(std::size_t seed, std::size_t value) {
  return seed ^ (value + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2));
}

std::vector<std::string> splitPath(std::string_view path) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  while (start <= path.size()) {
    std::size_t dot = path.find('.', start);
    if (dot == std::string_view::npos) dot = path.size();
    if (dot > start) pieces.emplace_back(path.substr(start, dot - start));
    start = dot + 1;
  }
  return pieces;
}

}  // namespace

JSONObject::JSONObject(std::initializer_list<Member> members) : members_(members) {
  normalise(members_);
}

JSONObject::JSONObject(std::vector<Member> members) : members_(std::move(members)) {
  normalise(members_);
}

const JSONValue* JSONObject::find(std::string_view key) const {
  auto it = std::lower_bound(members_.begin(), members_.end(), key,
                             [](const Member& m, std::string_view k) { return m.first < k; });
  if (it == members_.end() || it->first != key) return nullptr;
  return &it->second;
}

JSONValue* JSONObject::find(std::string_view key) {
  return const_cast<JSONValue*>(std::as_const(*this).find(key));
}

void JSONObject::set(std::string key, JSONValue value) {
  auto it = std::lower_bound(members_.begin(), members_.end(), key,
                             [](const Member& m, const std::string& k) { return m.first < k; });
  if (it != members_.end() && it->first == key) {
    it->second = std::move(value);
  } else {
    members_.emplace(it, std::move(key), std::move(value));
  }
}

bool JSONObject::erase(std::string_view key) {
  auto it = std::lower_bound(members_.begin(), members_.end(), key,
                             [](const Member& m, std::string_view k) { return m.first < k; });
  if (it == members_.end() || it->first != key) return false;
  members_.erase(it);
  return true;
}

JSONValue& JSONObject::operator[](std::string_view key) {
  auto it = std::lower_bound(members_.begin(), members_.end(), key,
                             [](const Member& m, std::string_view k) { return m.first < k; });
  if (it == members_.end() || it->first != key) {
    it = members_.emplace(it, std::string(key), JSONValue());
  }
  return it->second;
}

bool operator==(const JSONObject& a, const JSONObject& b) { return a.members_ == b.members_; }

std::string_view message(JSONError error) {
  switch (error) {
    case JSONError::notJSONValue:
      return "Not a JSON value";
    case JSONError::notEncodable:
      return "The value holds a number JSON cannot write";
  }
  return "Not a JSON value";
}

std::optional<double> JSONValue::asNumber() const {
  if (const double* number = std::get_if<double>(&storage_)) return *number;
  return std::nullopt;
}

std::optional<bool> JSONValue::asBool() const {
  if (const bool* flag = std::get_if<bool>(&storage_)) return *flag;
  return std::nullopt;
}

bool JSONValue::isEncodable() const {
  switch (kind()) {
    case Kind::number:
      return std::isfinite(std::get<double>(storage_));
    case Kind::object:
      return std::all_of(asObject()->begin(), asObject()->end(),
                         [](const auto& member) { return member.second.isEncodable(); });
    case Kind::array:
      return std::all_of(asArray()->begin(), asArray()->end(),
                         [](const JSONValue& element) { return element.isEncodable(); });
    case Kind::string:
    case Kind::boolean:
    case Kind::null:
      return true;
  }
  return true;
}

std::size_t JSONValue::hash() const {
  std::size_t seed = storage_.index();
  switch (kind()) {
    case Kind::string:
      return mix(seed, std::hash<std::string_view>{}(*asString()));
    case Kind::number: {
      double number = std::get<double>(storage_);
      // 0 and -0 are equal, so they must hash alike.
      return mix(seed, std::hash<double>{}(number == 0 ? 0.0 : number));
    }
    case Kind::boolean:
      return mix(seed, std::get<bool>(storage_) ? 1 : 0);
    case Kind::object:
      for (const auto& [key, value] : *asObject()) {
        seed = mix(mix(seed, std::hash<std::string>{}(key)), value.hash());
      }
      return seed;
    case Kind::array:
      for (const JSONValue& element : *asArray()) seed = mix(seed, element.hash());
      return seed;
    case Kind::null:
      return seed;
  }
  return seed;
}

JSONValue JSONValue::restoring(const UnreadValue& unread, std::span<const std::string> path) const {
  const JSONObject* object = asObject();
  if (object == nullptr || path.empty()) return *this;
  if (path.size() > 1) {
    const JSONValue* member = object->find(path.front());
    if (member == nullptr) return *this;
    JSONValue result = *this;
    result.asObject()->set(path.front(), member->restoring(unread, path.subspan(1)));
    return result;
  }
  const JSONValue* member = object->find(path.front());
  const JSONValue current = member != nullptr ? *member : JSONValue();
  if (!(current == unread.readAs)) return *this;
  JSONValue result = *this;
  result.asObject()->set(path.front(), unread.raw);
  return result;
}

JSONValue JSONValue::restoring(const std::map<std::string, UnreadValue>& unread) const {
  JSONValue result = *this;
  for (const auto& [path, entry] : unread) {
    std::vector<std::string> pieces = splitPath(path);
    result = result.restoring(entry, pieces);
  }
  return result;
}

}  // namespace corvel
