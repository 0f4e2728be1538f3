// AppMatch: what looking an app up by name or bundle identifier found on this
// machine: exactly one app (its bundle identifier), none, or several.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>

namespace corvel {

class AppMatch {
 public:
  struct One {
    std::string bundleID;
    friend bool operator==(const One&, const One&) = default;
  };
  struct None {
    friend bool operator==(const None&, const None&) = default;
  };
  struct Several {
    friend bool operator==(const Several&, const Several&) = default;
  };

  static AppMatch one(std::string bundleID) { return AppMatch(One{std::move(bundleID)}); }
  static AppMatch none() { return AppMatch(None{}); }
  static AppMatch several() { return AppMatch(Several{}); }

  // The bundle identifier when exactly one app fits, otherwise nullptr.
  [[nodiscard]] const std::string* bundleID() const {
    const One* found = std::get_if<One>(&value_);
    return found != nullptr ? &found->bundleID : nullptr;
  }
  [[nodiscard]] bool isNone() const { return std::holds_alternative<None>(value_); }
  [[nodiscard]] bool isSeveral() const { return std::holds_alternative<Several>(value_); }

  friend bool operator==(const AppMatch&, const AppMatch&) = default;

 private:
  explicit AppMatch(std::variant<One, None, Several> value) : value_(std::move(value)) {}
  std::variant<One, None, Several> value_;
};

// Looks an app up on this machine by its name or bundle identifier.
using AppResolver = std::function<AppMatch(std::string_view name)>;

}  // namespace corvel
