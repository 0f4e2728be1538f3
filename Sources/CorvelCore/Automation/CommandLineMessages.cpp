#include "CorvelCore/Automation/CommandLineMessages.h"

#include <vector>

#include "CorvelCore/Automation/CommandLineInterface.h"
#include "CorvelCore/Automation/DocumentFiles.h"
#include "CorvelCore/Automation/KeyName.h"
#include "CorvelCore/Brand/Brand.h"
#include "CorvelCore/Support/UnicodeText.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

std::string owned(std::string_view piece) { return std::string(piece); }

// Choices joined by ", ", the last two by " or ".
std::string joinedChoices(std::span<const std::string_view> choices) {
  std::string out;
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (i > 0) out += i + 1 == choices.size() ? " or " : ", ";
    out += choices[i];
  }
  return out;
}

// The key options a user names a key's kind with: --text, --symbol, --app, --symtext.
std::string keyOptionWords() {
  std::vector<std::string_view> words;
  for (const auto& option : CommandGrammar::keyOptions()) {
    if (!std::holds_alternative<CommandOption::RawKey>(option.option.kind)) {
      words.push_back(option.word);
    }
  }
  return joinedChoices(words);
}

std::string_view parameterOf(const AutomationError& error) {
  if (const auto* bad = error.as<AutomationError::BadValue>()) return bad->parameter;
  if (const auto* missing = error.as<AutomationError::Missing>()) return missing->parameter;
  return {};
}

// The refusal of a parameter named by an option word, or nothing when the
// error is about no parameter.
std::optional<AutomationError> namedBy(const AutomationError& error, std::string_view word,
                                       std::string_view description) {
  if (error.as<AutomationError::BadValue>() != nullptr) {
    return CommandLineMessages::mustBe(word, description);
  }
  if (error.as<AutomationError::Missing>() != nullptr) {
    return CommandLineMessages::isMissing(word, description);
  }
  return std::nullopt;
}

}  // namespace

AutomationError CommandLineMessages::notACommand(std::string_view word) {
  return AutomationError::badArgument(
      shown(word) + " is not a quillon command. Run quillon help to see the commands.");
}

AutomationError CommandLineMessages::notTaken(std::string_view name, std::string_view first,
                                              std::string_view word) {
  return AutomationError::badArgument(
      "quillon " + owned(name) + " does not take " + (word.starts_with('-') ? "the option " : "") +
      shown(word) + ". Run quillon help " + owned(first) + " to see what it takes.");
}

AutomationError CommandLineMessages::needsOneOf(std::string_view name,
                                                std::span<const std::string_view> choices,
                                                std::optional<std::string_view> given) {
  const std::string what = given ? " takes " + joinedChoices(choices) + ", not " + shown(*given)
                                 : " needs one of " + joinedChoices(choices);
  return AutomationError::badArgument("quillon " + owned(name) + what + ". Run quillon help " +
                                      owned(name) + ".");
}

AutomationError CommandLineMessages::needsAValue(std::string_view word, std::string_view first) {
  return AutomationError::badArgument(owned(word) + " needs a value. Run quillon help " +
                                      owned(first) + " to see what it takes.");
}

AutomationError CommandLineMessages::notAKey(std::string_view key, std::string_view word,
                                             const OptionSpec& option) {
  return AutomationError::badArgument(
      shown(key) + " is not the name of a key. Name keys as a, 1, f5, esc or left, such as " +
      owned(word) + " " + owned(option.example) + ".");
}

AutomationError CommandLineMessages::takesKeyValue(std::string_view word,
                                                   const OptionSpec& option) {
  return AutomationError::badArgument(owned(word) + " takes KEY=VALUE, such as " +
                                      owned(option.example));
}

AutomationError CommandLineMessages::severalApps(std::string_view name, std::string_view word) {
  return AutomationError::badArgument("More than one app on this Mac is named " + shown(name) +
                                      ". Give " + owned(word) +
                                      " its bundle id, such as com.apple.Safari.");
}

AutomationError CommandLineMessages::noApp(std::string_view name, std::string_view word) {
  return AutomationError::badArgument(owned(Brand::productName) + " could not find an app named " +
                                      shown(name) + " on this Mac. Give " + owned(word) +
                                      " its bundle id, such as com.apple.Safari.");
}

AutomationError CommandLineMessages::importTakesOneFile(std::string_view name) {
  return AutomationError::badArgument("quillon " + owned(name) +
                                      " takes one FILE. Put quotes around a name with spaces.");
}

AutomationError CommandLineMessages::importOfWrongKind(std::string_view name, ExportKind kind) {
  return AutomationError::badArgument("quillon " + owned(name) + " takes a ." +
                                      owned(DocumentFiles::current(kind)) + " file.");
}

AutomationError CommandLineMessages::mustBe(std::string_view word, std::string_view description) {
  return AutomationError::badArgument(owned(word) + " must be " + owned(description) + ".");
}

AutomationError CommandLineMessages::isMissing(std::string_view word,
                                               std::string_view description) {
  return AutomationError::badArgument(owned(word) + " is missing. It must be " +
                                      owned(description) + ".");
}

AutomationError CommandLineMessages::reworded(
    const AutomationError& error, const CommandSpec& command,
    std::span<const std::pair<std::string_view, std::string_view>> typed) {
  const std::string_view parameter = parameterOf(error);
  if (parameter.empty() ||
      (error.as<AutomationError::Missing>() != nullptr && parameter == "modifiers")) {
    return error;
  }
  for (const auto& [typedParameter, word] : typed) {
    if (typedParameter != parameter) continue;
    if (const OptionSpec* option = CommandGrammar::option(command, word)) {
      return namedBy(error, word, CommandGrammar::description(*option)).value_or(error);
    }
  }
  if (const OptionSpec* option = CommandGrammar::optionFor(command, parameter)) {
    return namedBy(error, option->word, CommandGrammar::description(*option)).value_or(error);
  }
  if (command.plain != nullptr && command.plain->parameter == parameter) {
    return namedBy(error, command.plain->word, command.plain->description).value_or(error);
  }
  return error;
}

std::string CommandLineMessages::message(const AutomationError& error) {
  if (const auto* missing = error.as<AutomationError::Missing>();
      missing != nullptr && missing->parameter == "modifiers") {
    return "--modifiers is missing. Every Quillon layer is held on modifier keys, so give them, "
           "such as --modifiers rcmd-rshift or --modifiers hyper; for edit and remove, --name "
           "will do.";
  }
  const std::string_view parameter = parameterOf(error);
  if (!parameter.empty()) {
    if (const OptionSpec* option = CommandGrammar::optionFor(parameter)) {
      if (auto named = namedBy(error, option->word, CommandGrammar::description(*option))) {
        return named->message();
      }
    }
  }
  if (const auto* bad = error.as<AutomationError::BadValue>();
      bad != nullptr && KeyName::canonical(bad->parameter) == bad->parameter) {
    return "The key " + bad->parameter + " must be given once, with " + keyOptionWords() +
           ", with at most " + std::to_string(TextLimits::name) + " characters of text.";
  }
  return error.message();
}

std::string CommandLineMessages::message(ExportRefusal refusal, ExportKind kind, bool named) {
  return owned(toolMessage(refusal, kind, named));
}

std::string CommandLineMessages::shown(std::string_view word) {
  std::string visible;
  visible.reserve(word.size());
  for (std::size_t offset = 0; offset < word.size();) {
    const char32_t c = UTF8::next(word, offset);
    if (!UnicodeText::isInvisible(c)) UTF8::append(visible, c);
  }
  if (visible.empty()) return "That";
  if (TextLimits::characterCount(visible) >= 41) visible = TextLimits::cut(visible, 39) + "\u2026";
  return "\u201C" + visible + "\u201D";
}

std::string CommandLineMessages::text(ToolMessage message) {
  const std::string product(Brand::productName);
  switch (message) {
    case ToolMessage::notInstalled:
      return product + " is not installed. Get it at " + owned(Brand::webHost) + ".";
    case ToolMessage::notDelivered:
      return product + " did not take the command within " +
             std::to_string(static_cast<int>(CommandLineInterface::handOverSeconds)) +
             " seconds. Open " + product + ", then try again.";
    case ToolMessage::layersUnreadable:
      return product +
             "'s layers file could not be read, so nothing was listed or exported. Open " +
             product + "'s Settings, Layers, to see why.";
    case ToolMessage::noLayers:
      return "No layers yet. Add one in " + product +
             "'s Settings, in Layers, or with quillon layers store.";
    case ToolMessage::noSheets:
      return "No changed cheatsheets yet. Change one in " + product +
             "'s Settings, in Cheatsheets.";
    case ToolMessage::unreadableImport:
      return "That file could not be read. Check its name, and that it is a file.";
    case ToolMessage::outputUnwritable:
      return "quillon could not write its output: check that where it goes can be written to and "
             "has room.";
  }
  return {};
}

std::string CommandLineMessages::undecodableImport(ExportKind kind) {
  const std::string extension(DocumentFiles::current(kind));
  switch (kind) {
    case ExportKind::layers:
      return "That file holds no layers Quillon can read. Choose a ." + extension +
             " file Quillon exported.";
    case ExportKind::theme:
      return "That file is not a theme Quillon can read. Choose a ." + extension +
             " file Quillon exported.";
    case ExportKind::sheet:
      return "That file is not a cheatsheet Quillon can read. Choose a ." + extension +
             " file Quillon exported.";
  }
  return text(ToolMessage::unreadableImport);
}

std::string CommandLineMessages::exported(ExportKind kind, std::string_view what,
                                          std::string_view path) {
  switch (kind) {
    case ExportKind::layers:
      return "Exported " + owned(what) + " to " + owned(path) + ".";
    case ExportKind::theme:
      return "Exported the theme " + owned(what) + " to " + owned(path) + ".";
    case ExportKind::sheet:
      return "Exported the cheatsheet of " + owned(what) + " to " + owned(path) + ".";
  }
  return {};
}

}  // namespace corvel
