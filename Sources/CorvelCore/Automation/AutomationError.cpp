#include "CorvelCore/Automation/AutomationError.h"

#include "CorvelCore/Automation/AutomationCommand.h"
#include "CorvelCore/Automation/KeyAssignment.h"
#include "CorvelCore/Automation/KeyName.h"
#include "CorvelCore/Brand/Brand.h"

namespace corvel {

namespace {

// The commands a user can send from a link or the tool; "clickToType" stays
// out because only the Shortcuts app sends it.
constexpr std::string_view commandList =
    " The commands are show, hide, toggle, profile, theme, layer/show, layer/reset, layer/store, "
    "layer/edit, layer/remove, export and import.";

std::string unknownVerbMessage(const std::string& verb) {
  std::string text;
  if (AutomationError::isSafeEcho(verb)) {
    text = verb + " is not a ";
  } else {
    text = "That is not a ";
  }
  text += Brand::productName;
  text += " command.";
  text += commandList;
  return text;
}

std::string missingMessage(const std::string& parameter) {
  if (parameter == "modifiers") {
    std::string text = "modifiers is missing. Every ";
    text += Brand::productName;
    text +=
        " layer is held on modifier keys, so give them, such as rcmd-rshift or hyper; for "
        "layer/edit and layer/remove the layer's name will do.";
    return text;
  }
  if (auto description = AutomationError::expectation(parameter)) {
    return parameter + " is missing. It must be " + std::string(*description) + ".";
  }
  return "A parameter is missing.";
}

std::string badValueMessage(const std::string& parameter) {
  if (auto description = AutomationError::expectation(parameter)) {
    return parameter + " must be " + std::string(*description) + ".";
  }
  // The parser reports a bad assignment under the key's canonical name, so
  // only a name already in that form is known to be a key.
  if (auto canonical = KeyName::canonical(parameter); canonical && *canonical == parameter) {
    return "The key " + parameter +
           " must be given once, as text, s:symbol, a:bundle.id or s:symbol|text, with at most " +
           std::to_string(KeyAssignment::maxTextLength) + " characters of text.";
  }
  return "A parameter has a value that does not fit.";
}

std::string notAllowedMessage(const std::string& verb) {
  std::string subject = AutomationError::isSafeEcho(verb) ? verb : std::string("That command");
  if (verb == "clickToType") return subject + " works only from the Shortcuts app.";
  if (verb == "export" || verb == "import") {
    return subject + " works only from a " + std::string(Brand::linkScheme) +
           ":// link or the command-line tool, never from a notification.";
  }
  return subject + " is not available from here.";
}

// The numbers come from the limits themselves so the sentence cannot drift
// from what is enforced.
std::string tooLargeMessage() {
  return "The command is too large. Send at most " +
         std::to_string(AutomationCommand::maxURLBytes) + " bytes, " +
         std::to_string(AutomationCommand::maxParameters) + " parameters, " +
         std::to_string(AutomationCommand::maxKeys) + " keys and " +
         std::to_string(AutomationCommand::maxValueLength) + " characters in a value.";
}

}  // namespace

std::string AutomationError::message() const {
  struct Visitor {
    std::string operator()(const UnknownVerb& error) const {
      return unknownVerbMessage(error.verb);
    }
    std::string operator()(const Missing& error) const { return missingMessage(error.parameter); }
    std::string operator()(const BadValue& error) const { return badValueMessage(error.parameter); }
    std::string operator()(const NotAllowed& error) const { return notAllowedMessage(error.verb); }
    std::string operator()(const BadArgument& error) const { return error.text; }
    std::string operator()(const TooLarge&) const { return tooLargeMessage(); }
  };
  return std::visit(Visitor{}, value_);
}

bool AutomationError::isSafeEcho(std::string_view verb) {
  constexpr std::size_t maxEchoLength = 32;
  if (verb.empty() || verb.size() > maxEchoLength) return false;
  auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  if (!isLetter(verb.front())) return false;
  for (char c : verb.substr(1)) {
    if (!isLetter(c) && c != '/') return false;
  }
  return true;
}

std::optional<std::string_view> AutomationError::expectation(std::string_view parameter) {
  for (const auto& row : expectations) {
    if (row.parameter == parameter) return row.description;
  }
  return std::nullopt;
}

}  // namespace corvel
