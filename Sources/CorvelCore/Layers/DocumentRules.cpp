#include "CorvelCore/Layers/DocumentRules.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "CorvelCore/Layers/LayerText.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

// The value with every non-finite number replaced by null.
JSONValue finiteCopy(const JSONValue& value) {
  if (const std::optional<double> number = value.asNumber()) {
    return std::isfinite(*number) ? value : JSONValue();
  }
  if (const JSONArray* elements = value.asArray()) {
    JSONArray copy;
    copy.reserve(elements->size());
    for (const JSONValue& element : *elements) copy.push_back(finiteCopy(element));
    return copy;
  }
  if (const JSONObject* members = value.asObject()) {
    std::vector<JSONObject::Member> copy;
    copy.reserve(members->size());
    for (const auto& [key, member] : *members) copy.emplace_back(key, finiteCopy(member));
    return JSONObject(std::move(copy));
  }
  return value;
}

// True when cutting the (cleaned) text to `limit` characters would give it
// back unchanged, decided without finding its characters: a text of no more
// scalars than the limit has no more characters either, and a character of
// more than 16 scalars needs 17 scalars in a row of which at most one (its
// base) is ASCII other than CR, since marks, joiners and prepended scalars
// never are. Most texts pass here, which spares the costly cluster search.
bool fitsWithoutCutting(std::string_view text, std::int64_t limit) {
  if (limit <= 0) return text.empty();
  std::int64_t scalars = 0;
  std::int64_t lastASCII = -1;
  std::int64_t asciiBefore = -1;  // the ASCII scalar before the last one
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) == 0x80) continue;  // inside a scalar: cleaned text is valid UTF-8
    if (scalars >= limit) return false;
    // CR joins the LF after it into one character, so it counts as a mark would.
    if (byte < 0x80 && byte != '\r') {
      asciiBefore = lastASCII;
      lastASCII = scalars;
    }
    if (scalars - asciiBefore > TextLimits::scalarsPerCharacter) return false;
    ++scalars;
  }
  return true;
}

// Member names are short and mostly differ in length or first letter, so
// comparing by hand first spares a call to memcmp for nearly every pair.
bool sameName(std::string_view name, std::string_view key) {
  if (name.size() != key.size()) return false;
  for (std::size_t index = 0; index < name.size(); ++index) {
    if (name[index] != key[index]) return false;
  }
  return true;
}

}  // namespace

std::string DocumentRules::cleaned(std::string_view text, std::int64_t& removed) {
  LayerText::Cleaned result = LayerText::clean(text);
  removed += static_cast<std::int64_t>(result.removed);
  return std::move(result.text);
}

std::string DocumentRules::cleanedAndCut(std::string_view text, std::int64_t limit,
                                         std::int64_t& removed) {
  LayerText::Cleaned result = LayerText::clean(text);
  removed += static_cast<std::int64_t>(result.removed);
  if (fitsWithoutCutting(result.text, limit)) return std::move(result.text);
  return TextLimits::cut(result.text, limit);
}

bool DocumentRules::isBlank(std::string_view text) {
  for (std::size_t offset = 0; offset < text.size();) {
    const auto byte = static_cast<unsigned char>(text[offset]);
    if (byte < 0x80) {
      // ASCII white space: tab, line feed, vertical tab, form feed, carriage return, space.
      if (byte != ' ' && (byte < 0x09 || byte > 0x0D)) return false;
      ++offset;
      continue;
    }
    if (!u_isUWhiteSpace(static_cast<UChar32>(UTF8::next(text, offset)))) return false;
  }
  return true;
}

std::optional<KeyID> DocumentRules::keyNamed(std::string_view identifier) {
  static const std::unordered_map<std::string_view, KeyID> index = [] {
    std::unordered_map<std::string_view, KeyID> byIdentifier;
    for (const KeyInfo& info : allKeys()) byIdentifier.emplace(info.identifier, info.id);
    return byIdentifier;
  }();
  const auto found = index.find(identifier);
  if (found == index.end()) return std::nullopt;
  return found->second;
}

std::size_t DocumentRules::findMembers(const JSONObject& object,
                                       std::span<const std::string_view> names,
                                       std::span<const JSONValue*> found) {
  std::fill(found.begin(), found.end(), nullptr);
  const std::size_t count = std::min(names.size(), found.size());
  std::size_t unknown = 0;
  for (const auto& [key, value] : object) {
    std::size_t index = 0;
    while (index < count && !sameName(names[index], key)) ++index;
    if (index < count) {
      found[index] = &value;
    } else {
      ++unknown;
    }
  }
  return unknown;
}

JSONObject DocumentRules::unknownMembers(const JSONObject& object,
                                         std::span<const std::string_view> known) {
  const auto isKnown = [known](const JSONObject::Member& member) {
    return std::find(known.begin(), known.end(), member.first) != known.end();
  };
  // Nearly every record holds only members it knows.
  if (std::all_of(object.begin(), object.end(), isKnown)) return JSONObject();
  std::vector<JSONObject::Member> unknown;
  for (const auto& member : object) {
    if (!isKnown(member)) unknown.push_back(member);
  }
  return JSONObject(std::move(unknown));
}

JSONObject DocumentRules::recordObject(const JSONObject& extras,
                                       std::vector<JSONObject::Member> own) {
  if (extras.empty()) return JSONObject(std::move(own));
  JSONObject object = extras;
  for (auto& [key, value] : own) object.set(std::move(key), std::move(value));
  return object;
}

std::string DocumentRules::printed(const JSONValue& document) {
  if (auto text = document.encoded()) return std::move(*text);
  return finiteCopy(document).encoded().value_or(std::string());
}

}  // namespace corvel
