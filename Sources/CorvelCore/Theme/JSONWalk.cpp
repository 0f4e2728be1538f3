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

#include <deque>
#include <iterator>
#include <utility>
#include <vector>

namespace corvel {
namespace {

using Type = JSONWalk::Type;

bool ok(simdjson::error_code error) { return error == simdjson::SUCCESS; }

// Members and elements are gathered in lists kept for each depth and reused
// from one container to the next, then moved into a container of exactly
// their number: no container grows while it is filled, and none holds room
// it does not use. A deque keeps each depth's list in place while deeper
// ones are added.
struct Scratch {
  std::deque<std::vector<JSONObject::Member>> members;
  std::deque<JSONArray> elements;

  template <class List>
  static List& at(std::deque<List>& lists, int depth) {
    const auto index = static_cast<std::size_t>(depth);
    if (lists.size() <= index) lists.resize(index + 1);
    return lists[index];
  }
};

thread_local Scratch scratch;

bool buildObject(JSONWalk::Object members, int depth, JSONValue& out) {
  auto& gathered = Scratch::at(scratch.members, depth);
  gathered.clear();
  for (auto result : members) {
    JSONWalk::Field field;
    std::string_view key;
    if (!ok(std::move(result).get(field)) || !JSONWalk::key(field, key)) return false;
    gathered.emplace_back(std::string(key), JSONValue());
    // A deeper container gathers into its own list, so this member stays put.
    if (!JSONWalk::build(field.value(), depth + 1, gathered.back().second)) return false;
  }
  std::vector<JSONObject::Member> kept;
  kept.reserve(gathered.size());
  std::move(gathered.begin(), gathered.end(), std::back_inserter(kept));
  gathered.clear();
  out = JSONObject(std::move(kept));
  return true;
}

bool buildArray(JSONWalk::Array elements, int depth, JSONValue& out) {
  auto& gathered = Scratch::at(scratch.elements, depth);
  gathered.clear();
  for (auto result : elements) {
    JSONWalk::Value element;
    if (!ok(result.get(element))) return false;
    gathered.emplace_back();
    if (!JSONWalk::build(element, depth + 1, gathered.back())) return false;
  }
  JSONArray kept;
  kept.reserve(gathered.size());
  std::move(gathered.begin(), gathered.end(), std::back_inserter(kept));
  gathered.clear();
  out = std::move(kept);
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
  // One parser per thread keeps its buffers between documents.
  thread_local simdjson::ondemand::parser parser;
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

bool JSONWalk::string(Value value, std::string_view& out) {
  // The token runs from the opening quote to the next token, blanks
  // included; without a backslash its closing quote is its last non-blank.
  const std::string_view token = value.raw_json_token();
  const std::size_t last = token.find_last_not_of(" \t\n\r");
  if (last != std::string_view::npos && last > 0 && token.front() == '"' && token[last] == '"') {
    const std::string_view text = token.substr(1, last - 1);
    if (text.find('\\') == std::string_view::npos) {
      out = text;
      return true;
    }
  }
  return ok(value.get_string().get(out));
}

bool JSONWalk::key(Field& field, std::string_view& out) {
  // Every string of the document was found closed before the walk began,
  // so the scan ends at the key's closing quote at the latest.
  const char* start = field.key().raw();
  const char* end = start;
  while (*end != '"' && *end != '\\') ++end;
  if (*end == '"') {
    out = std::string_view(start, static_cast<std::size_t>(end - start));
    return true;
  }
  return ok(field.unescaped_key().get(out));
}

bool JSONWalk::build(Value value, int depth, JSONValue& out) {
  Type kind{};
  if (!type(value, depth, kind)) return false;
  switch (kind) {
    case Type::object: {
      Object members;
      return ok(value.get_object().get(members)) && buildObject(members, depth, out);
    }
    case Type::array: {
      Array elements;
      return ok(value.get_array().get(elements)) && buildArray(elements, depth, out);
    }
    case Type::string: {
      std::string_view text;
      if (!string(value, text)) return false;
      out = text;
      return true;
    }
    case Type::number: {
      double number = 0;
      if (!ok(value.get_double().get(number))) return false;
      out = number;
      return true;
    }
    case Type::boolean: {
      bool flag = false;
      if (!ok(value.get_bool().get(flag))) return false;
      out = flag;
      return true;
    }
    case Type::null: {
      bool isNull = false;
      out = JSONValue();
      return ok(value.is_null().get(isNull)) && isNull;
    }
  }
  return false;
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
        std::string_view key;
        if (!ok(std::move(result).get(field)) || !JSONWalk::key(field, key)) return false;
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
    case Type::string: {
      std::string_view text;
      return string(value, text);
    }
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
