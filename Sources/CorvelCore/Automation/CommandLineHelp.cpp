#include "CorvelCore/Automation/CommandLineHelp.h"

#include <algorithm>
#include <array>

#include "CorvelCore/Automation/CommandLineInterface.h"

namespace corvel {
namespace {

using Exit = CommandLineInterface::Exit;

constexpr std::string_view kPurpose =
    "controls Quillon, the keyboard overlay, from Terminal and scripts";
constexpr std::string_view kKeysTitle = "KEYS put words, symbols or apps on keys:";
constexpr std::array<std::string_view, 2> kKeyNotes{
    "KEY is a key's name: a, 1, f5, esc, left. APP is a bundle id such as com.apple.Safari, or an "
    "app's name.",
    "Keys only show words and symbols, or open apps: automation never types or presses keys for "
    "you.",
};
constexpr std::array<std::string_view, 3> kNotes{
    "Lists and exports read Quillon's files and never change them; every other command goes to "
    "Quillon",
    "as a quillon:// link, without bringing it forward. Layers a command stores or imports stay "
    "off until you",
    "turn them on in Quillon's Settings, in Layers. An export never replaces a file.",
};
constexpr std::array kExitCodes{
    CommandLineHelp::ExitCode{static_cast<std::int32_t>(Exit::done), "done"},
    CommandLineHelp::ExitCode{static_cast<std::int32_t>(Exit::badArguments), "bad arguments"},
    CommandLineHelp::ExitCode{static_cast<std::int32_t>(Exit::notInstalled),
                              "Quillon is not installed"},
    CommandLineHelp::ExitCode{static_cast<std::int32_t>(Exit::fileProblem), "a file problem"},
    CommandLineHelp::ExitCode{static_cast<std::int32_t>(Exit::notDelivered),
                              "Quillon did not take the command"},
};

// Lines of the usage text go on in a new line before they pass this width.
constexpr std::size_t kWidth = 100;
constexpr std::string_view kIndent = "  ";
constexpr std::string_view kGoOn = "      ";

// Text laid out in lines: pieces are joined by blanks and start a new line
// (with `goOn` in front) where they would pass the width.
class Lines {
 public:
  Lines(std::string first, std::string_view goOn, std::size_t width)
      : lines_{std::move(first)}, goOn_(goOn), width_(width) {}

  void add(std::string_view piece) {
    std::string& line = lines_.back();
    if (line.size() + 1 + piece.size() > width_ && line.size() > goOn_.size()) {
      newLine(piece);
    } else {
      line.append(" ").append(piece);
    }
  }
  void newLine(std::string_view piece) { lines_.push_back(std::string(goOn_).append(piece)); }

  [[nodiscard]] std::string joined() const {
    std::string text;
    for (const auto& line : lines_) {
      if (!text.empty()) text.push_back('\n');
      text += line;
    }
    return text;
  }

 private:
  std::vector<std::string> lines_;
  std::string_view goOn_;
  std::size_t width_;
};

std::string form(const OptionUse& use) {
  std::string text(use.definition->word);
  const std::string_view placeholder =
      use.placeholder.empty() ? use.definition->placeholder : use.placeholder;
  if (!placeholder.empty()) text.append(" ").append(placeholder);
  return text;
}

// The pieces of a command's synopsis, each kept whole on a line.
std::vector<std::string> pieces(const CommandSpec& command) {
  std::vector<std::string> out;
  bool keys = false;
  bool showOptions = false;
  const auto& uses = command.options;
  for (std::size_t i = 0; i < uses.size(); ++i) {
    switch (uses[i].shown) {
      case Shown::hidden:
        break;
      case Shown::inKeys:
        if (!std::exchange(keys, true)) out.emplace_back("[KEYS]");
        break;
      case Shown::inShowOptions:
        if (!std::exchange(showOptions, true)) out.emplace_back("[the show options]");
        break;
      case Shown::optional:
        out.push_back("[" + form(uses[i]) + "]");
        break;
      case Shown::required:
        out.push_back(form(uses[i]));
        break;
      case Shown::either: {
        std::string choice = "(" + form(uses[i]);
        while (i + 1 < uses.size() && uses[i + 1].shown == Shown::either) {
          choice += " | " + form(uses[++i]);
        }
        out.push_back(choice + ")");
        break;
      }
    }
  }
  if (command.plain != nullptr) {
    const std::string word(command.plain->word);
    out.push_back(command.plain->optional ? "[" + word + "]" : word);
  }
  return out;
}

const CommandSpec& command(std::string_view name) {
  const CommandSpec* found = CommandGrammar::named(name);
  return found != nullptr ? *found : CommandGrammar::commands().front();
}

// A piece of a usage line, never broken across lines; `newLine` puts it at
// the head of a continuation line.
struct UsagePiece {
  std::string text;
  bool newLine = false;
};

// One line of the usage text as its pieces, "quillon" first.
std::vector<UsagePiece> usagePieces(const UsageLine& line) {
  std::vector<UsagePiece> out{{"quillon"}};
  const auto& entries = line.entries;
  if (line.join == UsageJoin::merged) {
    std::string words;
    for (const auto& entry : entries) {
      if (!words.empty()) words.push_back('|');
      words += command(entry.command).first;
    }
    out.push_back({std::move(words)});
    for (auto& piece : pieces(command(entries.front().command))) out.push_back({std::move(piece)});
    return out;
  }
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const CommandSpec& definition = command(entries[i].command);
    std::string head = line.join == UsageJoin::sameFirst && i > 0
                           ? std::string(definition.sub)
                           : CommandGrammar::name(definition);
    if (i > 0) head.insert(0, "| ");
    out.push_back({std::move(head), i > 0 && entries[i].newLine});
    for (auto& piece : pieces(definition)) out.push_back({std::move(piece)});
  }
  return out;
}

// One line of the usage text, with its continuation lines.
std::string usageLine(const UsageLine& line) {
  const auto all = usagePieces(line);
  Lines lines(std::string(kIndent) + all.front().text, kGoOn, kWidth);
  for (std::size_t i = 1; i < all.size(); ++i) {
    if (all[i].newLine) {
      lines.newLine(all[i].text);
    } else {
      lines.add(all[i].text);
    }
  }
  return lines.joined();
}

// The help topics of a command's first word show the KEYS block when a
// command of that word takes keys.
bool takesKeys(std::string_view first) {
  for (const auto& definition : CommandGrammar::withFirst(first)) {
    for (const auto& use : definition.options) {
      if (use.definition->option.givesKey()) return true;
    }
  }
  return false;
}

std::string keysBlock() {
  std::string text =
      std::string(kKeysTitle) + "\n" + std::string(kIndent) + CommandLineHelp::keyForms();
  for (const auto& note : kKeyNotes) text.append("\n").append(kIndent).append(note);
  return text;
}

std::string exitCodesText() {
  Lines lines("Exit codes:", "", kWidth);
  for (std::size_t i = 0; i < kExitCodes.size(); ++i) {
    lines.add(std::to_string(kExitCodes[i].status) + " " + std::string(kExitCodes[i].meaning) +
              (i + 1 == kExitCodes.size() ? "." : ","));
  }
  return lines.joined();
}

std::string lowercasedASCII(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return out;
}

}  // namespace

const std::string& CommandLineHelp::usage() {
  static const std::string text = [] {
    std::string out = "quillon " + std::string(kPurpose) + ".\n\nUsage:\n";
    for (const auto& line : CommandGrammar::usageLines()) {
      out += usageLine(line) + "\n";
    }
    out += "\n" + keysBlock() + "\n\n";
    for (const auto& note : kNotes) out.append(note).append("\n");
    out += "\n" + exitCodesText();
    return out;
  }();
  return text;
}

std::string CommandLineHelp::help(std::optional<std::string_view> topic) {
  if (!topic) return usage();
  const std::string wanted = lowercasedASCII(*topic);
  const auto topics = CommandGrammar::helpTopics();
  if (std::find(topics.begin(), topics.end(), wanted) == topics.end()) return usage();
  for (const auto& line : CommandGrammar::usageLines()) {
    const bool shows = std::any_of(line.entries.begin(), line.entries.end(), [&](const auto& e) {
      return command(e.command).first == wanted;
    });
    if (!shows) continue;
    std::string text = "Usage:\n" + usageLine(line);
    if (takesKeys(wanted)) text += "\n\n" + keysBlock();
    return text + "\n\nRun quillon help to see every command.";
  }
  return usage();
}

std::string CommandLineHelp::versionLine(const std::optional<std::string>& shortVersion,
                                         const std::optional<std::string>& build) {
  if (shortVersion && build) return "quillon " + *shortVersion + " (" + *build + ")";
  if (shortVersion) return "quillon " + *shortVersion;
  if (build) return "quillon, build " + *build;
  return "quillon, a development build";
}

std::string_view CommandLineHelp::purpose() { return kPurpose; }

std::string CommandLineHelp::synopsis(const CommandSpec& command) {
  std::string text;
  for (const auto& piece : pieces(command)) {
    if (!text.empty()) text.push_back(' ');
    text += piece;
  }
  return text;
}

std::vector<std::vector<std::string>> CommandLineHelp::synopsisLines() {
  std::vector<std::vector<std::string>> lines;
  for (const auto& line : CommandGrammar::usageLines()) {
    std::vector<std::string> texts;
    for (auto& piece : usagePieces(line)) texts.push_back(std::move(piece.text));
    lines.push_back(std::move(texts));
  }
  return lines;
}

std::string_view CommandLineHelp::keysTitle() { return kKeysTitle; }

std::string CommandLineHelp::keyForms() {
  std::string text;
  for (const auto& option : CommandGrammar::keyOptions()) {
    if (!option.aliasOf.empty()) continue;
    if (!text.empty()) text += "   ";
    text.append(option.word).append(" ").append(option.placeholder);
  }
  return text;
}

std::span<const std::string_view> CommandLineHelp::keyNotes() { return kKeyNotes; }

std::span<const std::string_view> CommandLineHelp::notes() { return kNotes; }

std::span<const CommandLineHelp::ExitCode> CommandLineHelp::exitCodes() { return kExitCodes; }

}  // namespace corvel
