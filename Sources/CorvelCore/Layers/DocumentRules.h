// DocumentRules: the small steps the readers and writers of the layer and
// sheet documents share: cleaning a text and counting what cleaning removed,
// cutting it to its limit, telling a blank text from a real one, finding a
// record's members and keeping the unknown ones, and printing a document.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct DocumentRules {
  // The text cleaned by LayerText::clean; adds the number of scalars removed to `removed`.
  [[nodiscard]] static std::string cleaned(std::string_view text, std::int64_t& removed);
  // The text cleaned, then cut to `limit` characters; adds the scalars removed to `removed`.
  [[nodiscard]] static std::string cleanedAndCut(std::string_view text, std::int64_t limit,
                                                 std::int64_t& removed);
  // True when the text holds nothing but white space and line breaks (or nothing at all).
  [[nodiscard]] static bool isBlank(std::string_view text);

  // The key whose identifier ("keyA", "arrowUp") is exactly `identifier`,
  // as keyID() finds it but through a hash table: documents name thousands.
  [[nodiscard]] static std::optional<KeyID> keyNamed(std::string_view identifier);

  // Finds in one pass over `object` the value of each name in `names`:
  // found[i] is the member named names[i], or nullptr. Returns how many
  // members have none of the names. A layers file holds hundreds of
  // thousands of small records; one pass costs less than a search per name.
  static std::size_t findMembers(const JSONObject& object, std::span<const std::string_view> names,
                                 std::span<const JSONValue*> found);

  // The members of `object` whose keys are not among `known`: what a
  // record's reader keeps as its extras. Allocates nothing when there are none.
  [[nodiscard]] static JSONObject unknownMembers(const JSONObject& object,
                                                 std::span<const std::string_view> known);

  // The members of one case of a record (an action, a face) that the case
  // does not read, given which of the record's fields were found: none, at
  // no cost, when every member was one of the case's own.
  template <class Field, std::size_t N>
  [[nodiscard]] static JSONObject unknownMembers(
      const JSONObject& object, const std::array<const JSONValue*, N>& found,
      std::span<const Field> caseFields, const std::array<std::string_view, N>& fieldNames) {
    std::size_t present = 0;
    for (Field field : caseFields) present += found[field] != nullptr ? 1 : 0;
    if (present == object.size()) return JSONObject();
    std::array<std::string_view, N> names{};
    std::size_t count = 0;
    for (Field field : caseFields) names[count++] = fieldNames[field];
    return unknownMembers(object, std::span<const std::string_view>(names.data(), count));
  }

  // A record's JSON object: its kept `extras` with its own members set over
  // them. `own` comes in ascending key order, so that a record without
  // extras (nearly all) becomes its object without a search or an insertion
  // per member.
  [[nodiscard]] static JSONObject recordObject(const JSONObject& extras,
                                               std::vector<JSONObject::Member> own);

  // The document printed pretty with sorted keys and "/" unescaped; a number
  // JSON cannot hold (only code can put one there) is printed as null.
  [[nodiscard]] static std::string printed(const JSONValue& document);
};

}  // namespace corvel
