// Reading notes:
//
// On-Demand validates UTF-8 over the whole input and finds every string's
// end, unescaped control characters included, before anything is walked;
// it checks a string's escapes, a number or a literal only when that value
// is asked for. So the walks here ask for every value. A string without a
// backslash has nothing left to check and is taken from the document's own
// bytes, which spares copying it into the parser's buffer first; `get_double`
// reads integers of any length (every number here is a double anyway).
#include "CorvelCore/Theme/JSONWalk.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <tuple>
#include <utility>
#include <vector>

namespace corvel {
namespace {

using Type = JSONWalk::Type;

bool ok(simdjson::error_code error) { return error == simdjson::SUCCESS; }

// The first quote or backslash from `text` on, looked for eight bytes at a
// time. The text lies in a parsed document, which holds a closing quote
// further on and is followed by the parser's padding, so every word read
// is the document's or the padding's.
const char* quoteOrBackslash(const char* text) {
  constexpr std::uint64_t ones = 0x0101010101010101ULL;
  constexpr std::uint64_t highBits = 0x8080808080808080ULL;
  // The high bit of each byte that is zero; a byte above the lowest such
  // one may be marked wrongly, which the lowest one found makes harmless.
  const auto zeroBytes = [](std::uint64_t x) { return (x - ones) & ~x & highBits; };
  for (;; text += sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    if constexpr (std::endian::native == std::endian::big) word = std::byteswap(word);
    const std::uint64_t found = zeroBytes(word ^ (ones * '"')) | zeroBytes(word ^ (ones * '\\'));
    if (found != 0) return text + std::countr_zero(found) / 8;
  }
}

// How many members (or elements) the last object (or array) completed at
// each depth held, kept apart by the key the container stands under (a
// layer's "keys" and its "trigger" are not alike, but the "keys" of one
// layer and the next are): siblings tend to be alike, so a container is
// given that much room at once and seldom grows while it is filled. A guess
// is never trusted far: room well beyond what a container holds is given
// back, so that a text of many small containers after a large one costs no
// more memory than without guessing.
constexpr std::size_t kHintSlots = 32;

// The slot of the hints for containers under `key`.
std::size_t slotOf(std::string_view key) {
  const std::size_t ends = key.empty() ? 0
                                       : static_cast<unsigned char>(key.front()) * 7 +
                                             static_cast<unsigned char>(key.back());
  return (key.size() * 31 + ends) % kHintSlots;
}

struct Hints {
  std::vector<std::array<std::size_t, kHintSlots>> members;
  std::vector<std::array<std::size_t, kHintSlots>> elements;

  static std::size_t& at(std::vector<std::array<std::size_t, kHintSlots>>& hints, int depth,
                         std::size_t slot) {
    const auto index = static_cast<std::size_t>(depth);
    if (hints.size() <= index) hints.resize(index + 1);
    return hints[index][slot];
  }
};

thread_local Hints hints;

constexpr std::size_t kMostRoomGuessed = 64;

template <class Container>
void fitted(Container& container) {
  if (container.capacity() > 2 * container.size() + 4) container.shrink_to_fit();
}

bool buildObject(JSONWalk::Object members, int depth, std::size_t slot, JSONValue& out);
bool buildArray(JSONWalk::Array elements, int depth, std::size_t slot, JSONValue& out);

// Builds the value where `place` makes it: `place(arguments...)` constructs
// a JSONValue from the arguments where it is to be kept and returns it. A
// scalar is made from its text or number at once, never built elsewhere and
// moved; a container is made empty and filled there.
template <class Place>
bool buildPlaced(JSONWalk::Value value, int depth, std::size_t slot, Place&& place) {
  JSONWalk::Type kind{};
  if (!JSONWalk::type(value, depth, kind)) return false;
  switch (kind) {
    case JSONWalk::Type::object: {
      JSONWalk::Object members;
      return ok(value.get_object().get(members)) && buildObject(members, depth, slot, place());
    }
    case JSONWalk::Type::array: {
      JSONWalk::Array elements;
      return ok(value.get_array().get(elements)) && buildArray(elements, depth, slot, place());
    }
    case JSONWalk::Type::string: {
      const std::optional<std::string_view> text = JSONWalk::string(value);
      if (!text) return false;
      place(*text);
      return true;
    }
    case JSONWalk::Type::number: {
      double number = 0;
      if (!ok(value.get_double().get(number))) return false;
      place(number);
      return true;
    }
    case JSONWalk::Type::boolean: {
      bool flag = false;
      if (!ok(value.get_bool().get(flag))) return false;
      place(flag);
      return true;
    }
    case JSONWalk::Type::null: {
      bool isNull = false;
      if (!ok(value.is_null().get(isNull)) || !isNull) return false;
      place(nullptr);
      return true;
    }
  }
  return false;
}

bool buildObject(JSONWalk::Object members, int depth, std::size_t slot, JSONValue& out) {
  std::vector<JSONObject::Member> filled;
  filled.reserve(std::min(Hints::at(hints.members, depth, slot), kMostRoomGuessed));
  for (auto result : members) {
    JSONWalk::Field field;
    if (!ok(std::move(result).get(field))) return false;
    const std::optional<std::string_view> read = JSONWalk::key(field);
    if (!read) return false;
    const std::string_view key = *read;
    // Each member is made in its place, which stays put while a container
    // is filled there: deeper containers fill vectors of their own.
    const auto place = [&filled, key](auto&&... arguments) -> JSONValue& {
      return filled
          .emplace_back(std::piecewise_construct, std::forward_as_tuple(key),
                        std::forward_as_tuple(std::forward<decltype(arguments)>(arguments)...))
          .second;
    };
    if (!buildPlaced(field.value(), depth + 1, slotOf(key), place)) return false;
  }
  Hints::at(hints.members, depth, slot) = filled.size();
  fitted(filled);
  out = JSONObject(std::move(filled));
  return true;
}

bool buildArray(JSONWalk::Array elements, int depth, std::size_t slot, JSONValue& out) {
  JSONArray filled;
  filled.reserve(std::min(Hints::at(hints.elements, depth, slot), kMostRoomGuessed));
  for (auto result : elements) {
    JSONWalk::Value element;
    if (!ok(result.get(element))) return false;
    const auto place = [&filled](auto&&... arguments) -> JSONValue& {
      return filled.emplace_back(std::forward<decltype(arguments)>(arguments)...);
    };
    // Elements stand under their array's key.
    if (!buildPlaced(element, depth + 1, slot, place)) return false;
  }
  Hints::at(hints.elements, depth, slot) = filled.size();
  fitted(filled);
  out = std::move(filled);
  return true;
}

}  // namespace

JSONWalk::Input::Input(std::string_view text, std::size_t readable) {
  if (readable >= text.size() + simdjson::SIMDJSON_PADDING) {
    view_ = simdjson::padded_string_view(text, readable);
  } else {
    copy_ = simdjson::padded_string(text);
    view_ = copy_;
  }
}

simdjson::ondemand::parser& JSONWalk::parser() {
  // One parser per thread keeps its buffers between documents. It is given
  // room for a small document at once, so that the first few (preferences,
  // then themes of growing size) do not each make it grow again.
  thread_local simdjson::ondemand::parser parser = [] {
    constexpr std::size_t kSmallDocumentBytes = std::size_t{64} * 1024;
    simdjson::ondemand::parser made;
    // Should this fail, the parser makes its room when first used instead.
    const simdjson::error_code madeRoom = made.allocate(kSmallDocumentBytes);
    (void)madeRoom;
    return made;
  }();
  return parser;
}

bool JSONWalk::atEnd(simdjson::ondemand::document& document) {
  // Anything left after the document (a second value, a stray bracket)
  // makes the text malformed.
  const char* rest = nullptr;
  return !ok(document.current_location().get(rest));
}

bool JSONWalk::type(Value& value, int depth, Type& out) {
  return depth <= JSONValue::maxDepth && ok(value.type().get(out));
}

std::optional<std::string_view> JSONWalk::string(Value value) {
  // Every string of the document was found closed before the walk began:
  // without a backslash, the first quote after the opening one ends it.
  const std::string_view token = value.raw_json_token();
  if (!token.empty() && token.front() == '"') {
    const char* start = token.data() + 1;
    const char* end = quoteOrBackslash(start);
    if (*end == '"') return std::string_view(start, static_cast<std::size_t>(end - start));
  }
  std::string_view out;
  if (!ok(value.get_string().get(out))) return std::nullopt;
  return out;
}

std::optional<std::string_view> JSONWalk::key(Field& field) {
  // Every string of the document was found closed before the walk began,
  // so the scan ends at the key's closing quote at the latest.
  const char* start = field.key().raw();
  const char* end = quoteOrBackslash(start);
  if (*end == '"') return std::string_view(start, static_cast<std::size_t>(end - start));
  std::string_view out;
  if (!ok(field.unescaped_key().get(out))) return std::nullopt;
  return out;
}

bool JSONWalk::build(Value value, int depth, JSONValue& out) {
  return buildPlaced(value, depth, 0, [&out](auto&&... arguments) -> JSONValue& {
    out = JSONValue(std::forward<decltype(arguments)>(arguments)...);
    return out;
  });
}

bool JSONWalk::check(Value value, int depth) {
  Type kind{};
  if (!type(value, depth, kind)) return false;
  switch (kind) {
    case Type::object: {
      Object members;
      if (!ok(value.get_object().get(members))) return false;
      for (auto result : members) {
        Field field;
        if (!ok(std::move(result).get(field)) || !JSONWalk::key(field)) return false;
        if (!check(field.value(), depth + 1)) return false;
      }
      return true;
    }
    case Type::array: {
      Array elements;
      if (!ok(value.get_array().get(elements))) return false;
      for (auto result : elements) {
        Value element;
        if (!ok(result.get(element)) || !check(element, depth + 1)) return false;
      }
      return true;
    }
    case Type::string:
      return string(value).has_value();
    case Type::number: {
      double number = 0;
      return ok(value.get_double().get(number));
    }
    case Type::boolean: {
      bool flag = false;
      return ok(value.get_bool().get(flag));
    }
    case Type::null: {
      bool isNull = false;
      return ok(value.is_null().get(isNull)) && isNull;
    }
  }
  return false;
}

}  // namespace corvel
