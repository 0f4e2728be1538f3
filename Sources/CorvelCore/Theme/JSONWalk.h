// JSONWalk: JSON text read through simdjson's On-Demand front end, shared by
// JSONValue::decode and by the readers that take what they need straight
// from a large document instead of building it (the layers file's listing).
// Whatever walks a text with these functions accepts exactly the texts
// JSONValue::decode accepts: every value is visited and checked (strings'
// escapes, numbers, literals), nesting deeper than JSONValue::maxDepth is
// refused, and nothing may follow the document.
//
// Depths count as in JSONValue::decode: the root is at depth 1, its members
// or elements at 2. Every function returns false (or nothing) for text that
// is not JSON at that place; the walk then stops and the whole text is
// refused.
#pragma once

#include <simdjson.h>

#include <cstddef>
#include <optional>
#include <string_view>

#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct JSONWalk {
  using Value = simdjson::ondemand::value;
  using Object = simdjson::ondemand::object;
  using Array = simdjson::ondemand::array;
  using Field = simdjson::ondemand::field;
  using Type = simdjson::ondemand::json_type;

  // The text as the parser reads it: in place when `readable` bytes from its
  // start may be read (the parser reads a little past the end), else a
  // padded copy.
  class Input {
   public:
    Input(std::string_view text, std::size_t readable);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    [[nodiscard]] simdjson::padded_string_view view() const { return view_; }

   private:
    simdjson::padded_string copy_;
    simdjson::padded_string_view view_;
  };

  // The value, built.
  [[nodiscard]] static bool build(Value value, int depth, JSONValue& out);
  // The value visited and checked as `build` checks it, without building it.
  [[nodiscard]] static bool check(Value value, int depth);
  // The value's case, after the depth check every value passes.
  [[nodiscard]] static bool type(Value& value, int depth, Type& out);
  // A string's text (for a string the bytes of the document itself when it
  // holds no escapes, else its unescaped text, which lasts as long as the
  // parser's current document). Given back as a value, not through a
  // reference, so that a caller's loop keeps it in registers.
  [[nodiscard]] static std::optional<std::string_view> string(Value value);
  // A member's key, as `string` gives a string's text.
  [[nodiscard]] static std::optional<std::string_view> key(Field& field);

  // Parses `input` with `parser` and hands its root, when it is an object,
  // to `read` (as `bool read(Object members)`, which must visit every
  // member), then checks that nothing follows it. False for text that is
  // not JSON and for a root of another case.
  template <class Read>
  [[nodiscard]] static bool rootObject(simdjson::ondemand::parser& parser, const Input& input,
                                       Read read);

  // This thread's parser, which keeps its buffers from one small document
  // to the next. A large one is better read with a parser of its own, whose
  // buffers go with it.
  [[nodiscard]] static simdjson::ondemand::parser& parser();
  // True when nothing but blanks follows the root just read.
  [[nodiscard]] static bool atEnd(simdjson::ondemand::document& document);
};

template <class Read>
bool JSONWalk::rootObject(simdjson::ondemand::parser& parser, const Input& input, Read read) {
  simdjson::ondemand::document document;
  if (parser.iterate(input.view()).get(document) != simdjson::SUCCESS) return false;
  Type rootType{};
  if (document.type().get(rootType) != simdjson::SUCCESS || rootType != Type::object) return false;
  Object members;
  if (document.get_object().get(members) != simdjson::SUCCESS) return false;
  return read(members) && atEnd(document);
}

}  // namespace corvel
