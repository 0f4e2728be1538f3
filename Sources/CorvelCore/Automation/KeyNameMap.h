// KeyNameMap: values by canonical key name, kept sorted by name, each name
// once. A command names a handful of keys, so one vector in name order holds
// them with a single allocation where a tree would make one per key, and is
// walked in the order links write them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvel {

template <class Value>
class KeyNameMap {
 public:
  using Entry = std::pair<std::string, Value>;
  using const_iterator = typename std::vector<Entry>::const_iterator;

  KeyNameMap() = default;
  // Of two entries with the same name, the first is kept.
  KeyNameMap(std::initializer_list<Entry> entries) {
    for (const Entry& entry : entries) add(entry.first, entry.second);
  }

  // Adds the entry; false (and nothing changed) when the name is there
  // already. The value is made in its place from what is given.
  template <class Given>
  bool add(std::string name, Given&& value) {
    const auto place = lowerBound(name);
    if (place != entries_.end() && place->first == name) return false;
    entries_.emplace(place, std::move(name), std::forward<Given>(value));
    return true;
  }

  // Adds the entry, or replaces the value of the name already there.
  void set(std::string name, Value value) {
    const auto place = lowerBound(name);
    if (place != entries_.end() && place->first == name) {
      place->second = std::move(value);
    } else {
      entries_.emplace(place, std::move(name), std::move(value));
    }
  }

  void reserve(std::size_t count) { entries_.reserve(count); }

  [[nodiscard]] std::size_t size() const { return entries_.size(); }
  [[nodiscard]] bool empty() const { return entries_.empty(); }
  // Entries in ascending name order.
  [[nodiscard]] const_iterator begin() const { return entries_.begin(); }
  [[nodiscard]] const_iterator end() const { return entries_.end(); }

  friend bool operator==(const KeyNameMap&, const KeyNameMap&) = default;

 private:
  // Where the name is or would go. Names are mostly added in order, so the
  // end is tried first.
  typename std::vector<Entry>::iterator lowerBound(std::string_view name) {
    if (entries_.empty() || entries_.back().first < name) return entries_.end();
    return std::lower_bound(
        entries_.begin(), entries_.end(), name,
        [](const Entry& entry, std::string_view sought) { return entry.first < sought; });
  }

  std::vector<Entry> entries_;
};

}  // namespace corvel
