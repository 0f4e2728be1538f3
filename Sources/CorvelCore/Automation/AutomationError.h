// AutomationError: every refusal of an automation command, whether it came as
// a link, a notification, a command line or a Shortcuts action, with the one
// sentence the user is shown. Errors compare by value.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace corvel {

// What a parameter's value must be, as the messages describe it.
struct ParameterExpectation {
  std::string_view parameter;
  std::string_view description;
};

// One row per parameter a command can carry, in the order the parameters are
// documented.
inline constexpr std::array<ParameterExpectation, 16> expectations{{
    {"position",
     "one of top, bottom, left, right, center, topLeft, topRight, bottomLeft, bottomRight, or x:y "
     "in points from the top left of the screen's usable area, the part the menu bar and the Dock "
     "leave free"},
    {"x:y",
     "two numbers written x:y, in points from the top left of the screen's usable area, the part "
     "the menu bar and the Dock leave free"},
    {"width", "a number of points, at least 300. More than 4000 reads as 4000"},
    {"screen",
     "a display's number or part of its name. With no such display, the board stays on its own"},
    {"theme", "a theme's name or id"},
    {"fill", "visible, dimmed or blank"},
    {"blank", "1 or 0"},
    {"hideAfterMS",
     "a whole number of milliseconds, 0 or more. More than 3600000 reads as 3600000"},
    {"fadeOutMS", "a whole number of milliseconds, 0 or more. More than 10000 reads as 10000"},
    {"name", "the name of a layer, a theme or a profile, not empty"},
    {"modifiers", "modifier keys such as rcmd-rshift, lcmd, ctrl-opt or hyper"},
    {"app", "a bundle id such as com.apple.Safari"},
    {"holdDelay", "a number of seconds, 0 or more. More than 5 reads as 5"},
    {"what", "layers, theme or sheet"},
    {"file", "an absolute path that starts with /"},
    {"on", "1 or 0"},
}};

class AutomationError {
 public:
  // The link's verb is no command; the verb is kept only when it is safe to echo.
  struct UnknownVerb {
    std::string verb;
    friend bool operator==(const UnknownVerb&, const UnknownVerb&) = default;
  };
  // A required parameter was not given.
  struct Missing {
    std::string parameter;
    friend bool operator==(const Missing&, const Missing&) = default;
  };
  // A parameter's value does not fit its rule.
  struct BadValue {
    std::string parameter;
    friend bool operator==(const BadValue&, const BadValue&) = default;
  };
  // The source may not send this verb.
  struct NotAllowed {
    std::string verb;
    friend bool operator==(const NotAllowed&, const NotAllowed&) = default;
  };
  // Any other refusal; the text is the complete message.
  struct BadArgument {
    std::string text;
    friend bool operator==(const BadArgument&, const BadArgument&) = default;
  };
  // The command exceeds the size limits.
  struct TooLarge {
    friend bool operator==(const TooLarge&, const TooLarge&) = default;
  };

  using Case = std::variant<UnknownVerb, Missing, BadValue, NotAllowed, BadArgument, TooLarge>;

  [[nodiscard]] static AutomationError unknownVerb(std::string verb) {
    return AutomationError(UnknownVerb{std::move(verb)});
  }
  [[nodiscard]] static AutomationError missing(std::string parameter) {
    return AutomationError(Missing{std::move(parameter)});
  }
  [[nodiscard]] static AutomationError badValue(std::string parameter) {
    return AutomationError(BadValue{std::move(parameter)});
  }
  [[nodiscard]] static AutomationError notAllowed(std::string verb) {
    return AutomationError(NotAllowed{std::move(verb)});
  }
  [[nodiscard]] static AutomationError badArgument(std::string text) {
    return AutomationError(BadArgument{std::move(text)});
  }
  [[nodiscard]] static AutomationError tooLarge() { return AutomationError(TooLarge{}); }

  [[nodiscard]] const Case& value() const { return value_; }
  // The payload when the error is of case T, otherwise nullptr.
  template <class T>
  [[nodiscard]] const T* as() const {
    return std::get_if<T>(&value_);
  }

  // The one sentence (or two) shown to the user; never fails, and never
  // repeats a verb that fails `isSafeEcho`.
  [[nodiscard]] std::string message() const;

  // True when a verb received from outside may be repeated in a message: 1 to
  // 32 characters, an ASCII letter first, then only ASCII letters and "/".
  [[nodiscard]] static bool isSafeEcho(std::string_view verb);

  // The description of what the parameter's value must be, from `expectations`.
  [[nodiscard]] static std::optional<std::string_view> expectation(std::string_view parameter);

  friend bool operator==(const AutomationError&, const AutomationError&) = default;

 private:
  explicit AutomationError(Case value) : value_(std::move(value)) {}

  Case value_;
};

}  // namespace corvel
