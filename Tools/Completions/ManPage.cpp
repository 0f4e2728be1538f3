#include "Tools/Completions/ManPage.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <vector>

#include "CorvelCore/Automation/CommandGrammar.h"
#include "CorvelCore/Automation/CommandLineHelp.h"
#include "CorvelCore/Automation/CommandLineInterface.h"
#include "CorvelCore/Brand/Brand.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

// The files the tool reads, in the app's support folder on the Mac.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kFiles{{
    {"Layers.json", "The layers Quillon keeps."},
    {"Themes", "Your own themes."},
    {"Sheets", "Your changes to cheatsheets."},
}};

// Words as a shell reads them, for the examples: blanks part words, single
// quotes group them.
std::vector<std::string> shellWords(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  bool quoted = false;
  bool inWord = false;
  for (const char c : text) {
    if (c == '\'') {
      quoted = !quoted;
      inWord = true;
    } else if (c == ' ' && !quoted) {
      if (inWord) words.push_back(std::move(word));
      word.clear();
      inWord = false;
    } else {
      word.push_back(c);
      inWord = true;
    }
  }
  if (inWord) words.push_back(std::move(word));
  return words;
}

std::string sentence(std::string_view text) {
  std::string out(text);
  if (!out.empty()) out[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(out[0])));
  if (!out.ends_with('.')) out += '.';
  return out;
}

std::string listed(const std::vector<std::string>& items) {
  std::string text;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i > 0) text += i + 1 == items.size() ? " and " : ", ";
    text += items[i];
  }
  return text;
}

// Text that never breaks across lines: its blanks unbreakable.
std::string unbroken(std::string_view text) {
  std::string out;
  for (const char c : ManPage::escaped(text)) {
    if (c == ' ') {
      out += "\\ ";
    } else {
      out.push_back(c);
    }
  }
  return out;
}

// A usage line whose pieces break only between each other, "quillon" in bold.
std::string synopsisLine(const std::vector<std::string>& pieces) {
  std::string text = "\\fB" + ManPage::escaped(pieces.front()) + "\\fR";
  for (std::size_t i = 1; i < pieces.size(); ++i) text += " " + unbroken(pieces[i]);
  return text;
}

// An option's form such as "--text KEY=TEXT", never broken.
std::string form(const OptionSpec& option) {
  std::string text = "\\fB" + ManPage::escaped(option.word) + "\\fR";
  if (!option.placeholder.empty()) {
    text += "\\ \\fI" + ManPage::escaped(option.placeholder) + "\\fR";
  }
  return text;
}

// An option with its other spellings ("-f" and "--file"), and the commands
// that take it.
struct OptionEntry {
  std::string_view word;                     // the option's own word
  std::string_view summary;                  // what it is for
  std::vector<const OptionSpec*> spellings;  // the option first, then its other spellings
  std::vector<std::string> commands;
};

void add(std::vector<OptionEntry>& entries, const OptionSpec& option, std::string command) {
  const std::string_view word = option.aliasOf.empty() ? option.word : option.aliasOf;
  auto entry = std::find_if(entries.begin(), entries.end(), [&](const OptionEntry& e) {
    return e.word == word && e.summary == option.summary;
  });
  if (entry == entries.end()) entry = entries.insert(entries.end(), {word, option.summary, {}, {}});
  auto& spellings = entry->spellings;
  if (std::none_of(spellings.begin(), spellings.end(),
                   [&](const OptionSpec* s) { return s->word == option.word; })) {
    spellings.insert(option.aliasOf.empty() ? spellings.begin() : spellings.end(), &option);
  }
  if (!command.empty() &&
      std::find(entry->commands.begin(), entry->commands.end(), command) == entry->commands.end()) {
    entry->commands.push_back(std::move(command));
  }
}

std::string tag(const OptionEntry& entry) {
  std::string text;
  for (const OptionSpec* spelling : entry.spellings) {
    if (!text.empty()) text += ", ";
    text += form(*spelling);
  }
  return text;
}

// What the option is for and, when the tool says more about it, what its
// value must be.
std::string meaning(const OptionEntry& entry) {
  std::string text(entry.summary);
  const std::string_view description = CommandGrammar::description(*entry.spellings.front());
  if (description != entry.summary) text.append(": ").append(description);
  return ManPage::escaped(sentence(text));
}

AppMatch exampleApp(std::string_view) { return AppMatch::one("com.example.App"); }

std::expected<std::string, std::string> examples() {
  std::string text = ".SH EXAMPLES\n";
  for (const auto& command : CommandGrammar::commands()) {
    if (!command.aliasOf.empty()) continue;
    const auto words = shellWords(command.exampleWords);
    const auto action =
        CommandLineInterface::parse(words, {"/Users/you", "/Users/you", exampleApp});
    if (!action) {
      return std::unexpected("the example of " + CommandGrammar::name(command) +
                             " is refused: " + CommandLineInterface::message(action.error()));
    }
    text += ".TP\n\\fBquillon " + ManPage::escaped(command.exampleWords) + "\\fR\n" +
            ManPage::escaped(command.exampleMeaning) + "\n";
  }
  return text;
}

std::string commandsSection() {
  std::string text = ".SH COMMANDS\n";
  const auto commands = CommandGrammar::commands();
  for (const auto& command : commands) {
    if (!command.aliasOf.empty()) continue;
    std::string tag = "\\fB" + ManPage::escaped(CommandGrammar::name(command)) + "\\fR";
    for (const auto& alias : commands) {
      if (command.sub.empty() && alias.aliasOf == command.first) {
        tag += ", \\fB" + ManPage::escaped(alias.first) + "\\fR";
      }
    }
    if (command.plain != nullptr) {
      const std::string word = "\\fI" + ManPage::escaped(command.plain->word) + "\\fR";
      tag += command.plain->optional ? " [" + word + "]" : " " + word;
    }
    text += ".TP\n" + tag + "\n" + ManPage::escaped(sentence(command.summary)) + "\n";
  }
  return text;
}

std::string optionsSection() {
  std::vector<OptionEntry> entries;
  for (const auto& command : CommandGrammar::commands()) {
    for (const auto& use : command.options) {
      if (!use.definition->option.givesKey())
        add(entries, *use.definition, CommandGrammar::name(command));
    }
  }
  std::string text = ".SH OPTIONS\n";
  for (const auto& entry : entries) {
    text += ".TP\n" + tag(entry) + "\n" + meaning(entry) + "\n" +
            ManPage::escaped("Taken by " + listed(entry.commands) + ".") + "\n";
  }
  return text;
}

// The KEYS block of the usage text, the forms free to wrap between each
// other, then each key option with its other spellings.
std::string keysSection() {
  std::vector<OptionEntry> entries;
  for (const auto& option : CommandGrammar::keyOptions()) add(entries, option, {});
  std::string forms;
  for (const auto& entry : entries) {
    if (!forms.empty()) forms += ' ';
    forms += form(*entry.spellings.front());
  }
  std::string text =
      ".SH KEYS\n" + ManPage::escaped(CommandLineHelp::keysTitle()) + "\n.PP\n" + forms + "\n";
  for (const auto note : CommandLineHelp::keyNotes()) {
    text += ".PP\n" + ManPage::escaped(note) + "\n";
  }
  for (const auto& entry : entries) {
    text += ".TP\n" + tag(entry) + "\n" + meaning(entry) + "\n";
  }
  return text;
}

}  // namespace

std::string ManPage::escaped(std::string_view text) {
  std::string out;
  if (text.starts_with('.') || text.starts_with('\'')) out = "\\&";
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t c = UTF8::next(text, offset);
    if (c == '\\') {
      out += "\\e";
    } else if (c == '-') {
      out += "\\-";
    } else if (c < 0x80) {
      out.push_back(static_cast<char>(c));
    } else {
      std::array<char, 16> name{};
      std::snprintf(name.data(), name.size(), "\\[u%04X]", static_cast<unsigned>(c));
      out += name.data();
    }
  }
  return out;
}

std::expected<std::string, std::string> ManPage::text(std::string_view version) {
  const std::string purpose(CommandLineHelp::purpose());
  std::string text =
      ".\\\" Manual page of quillon. Written by quillon-completions from the tool's own grammar\n"
      ".\\\" and help texts; do not edit.\n";
  // Ragged right and no hyphens: option words and paths read as typed.
  text += ".TH QUILLON 1 \"\" \"quillon " + escaped(version) + "\" \"User Commands\"\n.ad l\n.nh\n";
  text += ".SH NAME\nquillon \\- " + escaped(purpose) + "\n";

  text += ".SH SYNOPSIS\n.in +4n\n";
  for (const auto& line : CommandLineHelp::synopsisLines()) {
    text += ".ti -4n\n" + synopsisLine(line) + "\n";
  }
  text += ".in -4n\n";

  std::string notes;
  for (const auto line : CommandLineHelp::notes()) {
    if (!notes.empty()) notes += ' ';
    notes += line;
  }
  text +=
      ".SH DESCRIPTION\n" + escaped("quillon " + purpose + ".") + "\n.PP\n" + escaped(notes) + "\n";

  text += commandsSection() + optionsSection() + keysSection();

  text += ".SH EXIT STATUS\n";
  for (const auto& code : CommandLineHelp::exitCodes()) {
    text += ".TP\n.B " + std::to_string(code.status) + "\n" + escaped(code.meaning) + "\n";
  }

  text +=
      ".SH FILES\nOn the Mac, Quillon keeps its files in the folder\n.IR \"~/Library/Application "
      "Support/" +
      escaped(Brand::supportFolderName) + "\" :\n";
  for (const auto& [name, meaning] : kFiles) {
    text += ".TP\n.I " + escaped(name) + "\n" + escaped(meaning) + "\n";
  }
  text += ".PP\nLists and exports read these files and never change them.\n";

  auto exampleText = examples();
  if (!exampleText) return std::unexpected(exampleText.error());
  return text + *exampleText;
}

}  // namespace corvel
