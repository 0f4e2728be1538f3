#include "Tools/Completions/ManPage.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <vector>

#include "CorvelCore/Automation/CommandLineInterface.h"
#include "CorvelCore/Brand/Brand.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

// One example per command, by the command's name: the words after
// "quillon" (single quotes group words) and what it does. Every example is
// parsed by the tool's own parser before the page is written.
struct Example {
  std::string_view command;
  std::string_view words;
  std::string_view meaning;
};
constexpr std::array<Example, 21> kExamples{{
    {"help", "help layers", "Print how the layers commands are used."},
    {"version", "version", "Print the tool's version."},
    {"show", "show --position bottom --width 900 --hide-after-ms 4000",
     "Show the board at the bottom of the screen, 900 points wide, for four seconds."},
    {"toggle", "toggle --theme space-black",
     "Show the board in the theme space-black, or hide it when it shows."},
    {"hide", "hide --fade-out-ms 300", "Hide the board, fading it out over 300 milliseconds."},
    {"profile", "profile Presenting", "Switch to the profile named Presenting."},
    {"theme", "theme space-black", "Switch to the theme whose id is space-black."},
    {"layer show",
     "layer show --text c=Copy --symbol v=doc.on.clipboard --symtext 'f=magnifyingglass|Find'",
     "Show a layer for now: a word on C, a symbol on V, and a symbol with a word on F."},
    {"layer reset", "layer reset", "Take the layer shown for now away again."},
    {"layers list", "layers list --json", "List the stored layers as JSON."},
    {"layers store",
     "layers store --modifiers rcmd-rshift --name Apps --app s=Safari --app t=com.apple.Terminal",
     "Store a layer named Apps, held on the right command and shift keys, whose S and T keys open "
     "Safari and Terminal. It stays off until you turn it on."},
    {"layers edit", "layers edit --name Apps --text n=Notes --unset-key t",
     "Put the word Notes on N in the layer named Apps, and take away what T does."},
    {"layers remove", "layers remove --modifiers rcmd-rshift",
     "Remove the layer held on the right command and shift keys."},
    {"layers export", "layers export --name Apps -f ~/Desktop/Apps.quillonlayer",
     "Write the layer named Apps to a new file on the desktop."},
    {"layers import", "layers import ~/Downloads/Apps.quillonlayer",
     "Bring the layers of a file into Quillon."},
    {"themes list", "themes list",
     "List the built-in themes and your own; a * marks the theme in use."},
    {"themes export", "themes export --name space-black -f ~/Desktop/space-black.quillontheme",
     "Write the theme whose id is space-black to a new file."},
    {"themes import", "themes import ~/Downloads/Night.quillontheme",
     "Bring a theme file into Quillon."},
    {"sheets list", "sheets list", "List the apps whose cheatsheets you changed."},
    {"sheets export", "sheets export --app com.apple.Safari -f ~/Desktop/Safari.quillonsheet",
     "Write the changes you made to Safari's cheatsheet to a new file."},
    {"sheets import", "sheets import ~/Downloads/Safari.quillonsheet",
     "Bring a cheatsheet file into Quillon."},
}};

// The files the tool reads, in the app's support folder on the Mac.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kFiles{{
    {"Layers.json", "The layers Quillon keeps."},
    {"Themes", "Your own themes."},
    {"Sheets", "Your changes to cheatsheets."},
}};

// The usage text cut into the parts the page shows.
struct Usage {
  std::string intro;                                       // the first sentence
  std::vector<std::string> synopsis;                       // one line per command group
  std::vector<std::string> keys;                           // the KEYS block, line by line
  std::string notes;                                       // one paragraph
  std::vector<std::pair<std::string, std::string>> exits;  // "0", "done"
};

std::vector<std::string> split(std::string_view text, std::string_view separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  while (true) {
    const std::size_t at = text.find(separator, start);
    parts.emplace_back(text.substr(start, at == std::string_view::npos ? at : at - start));
    if (at == std::string_view::npos) return parts;
    start = at + separator.size();
  }
}

std::string trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

// The lines of a paragraph joined with blanks, each line trimmed.
std::string reflowed(std::string_view paragraph) {
  std::string text;
  for (const auto& line : split(paragraph, "\n")) {
    if (!text.empty()) text += ' ';
    text += trimmed(line);
  }
  return text;
}

std::expected<Usage, std::string> readUsage(std::string_view text) {
  const auto parts = split(text, "\n\n");
  const std::string_view exitLead = "Exit codes: ";
  if (parts.size() != 5 || !parts[1].starts_with("Usage:\n") || !parts[2].starts_with("KEYS ") ||
      !parts[4].starts_with(exitLead)) {
    return std::unexpected("the usage text is not intro, usage, KEYS, notes and exit codes");
  }
  Usage usage;
  usage.intro = parts[0];
  for (const auto& line : split(std::string_view(parts[1]).substr(7), "\n")) {
    if (line.starts_with("  quillon ")) {
      usage.synopsis.push_back(trimmed(line));
    } else if (line.starts_with("      ") && !usage.synopsis.empty()) {
      usage.synopsis.back() += " " + trimmed(line);
    } else {
      return std::unexpected("a usage line neither begins nor goes on a command: " + line);
    }
  }
  usage.keys = split(parts[2], "\n");
  usage.notes = reflowed(parts[3]);
  std::string exits = reflowed(std::string_view(parts[4]).substr(exitLead.size()));
  if (exits.ends_with('.')) exits.pop_back();
  for (const auto& item : split(exits, ", ")) {
    const std::size_t blank = item.find(' ');
    if (blank == std::string::npos || blank == 0 ||
        !std::all_of(item.begin(), item.begin() + static_cast<std::ptrdiff_t>(blank),
                     [](unsigned char c) { return std::isdigit(c); })) {
      return std::unexpected("an exit code is not a number and its meaning: " + item);
    }
    usage.exits.emplace_back(item.substr(0, blank), item.substr(blank + 1));
  }
  return usage;
}

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

std::string capitalized(std::string_view text) {
  std::string out(text);
  if (!out.empty()) out[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(out[0])));
  return out;
}

std::string sentence(std::string_view text) {
  std::string out = capitalized(text);
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

// A synopsis line that breaks only between whole parts: never inside
// brackets or parentheses, nor between an option and its placeholder.
std::string synopsisLine(std::string_view line) {
  const auto words = split(line, " ");
  std::string text = "\\fB" + ManPage::escaped(words.front()) + "\\fR";
  int depth = 0;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::string& word = words[i];
    const std::string& before = words[i - 1];
    for (const char c : before) {
      if (c == '[' || c == '(') ++depth;
      if (c == ']' || c == ')') --depth;
    }
    const bool placeholder = before.starts_with('-') && !word.empty() &&
                             std::string_view("-|[(").find(word.front()) == std::string_view::npos;
    text += depth > 0 || placeholder ? "\\ " : " ";
    text += ManPage::escaped(word);
  }
  return text;
}

// An option form such as "--text KEY=TEXT" that never breaks.
std::string form(std::string_view word, std::string_view placeholder) {
  std::string text = "\\fB" + ManPage::escaped(word) + "\\fR";
  if (!placeholder.empty()) text += "\\ \\fI" + ManPage::escaped(placeholder) + "\\fR";
  return text;
}

// Options with the same placeholder and description, gathered with the
// commands that take them.
struct OptionEntry {
  std::vector<std::string> words;
  std::string placeholder;
  std::string description;
  std::vector<std::string> commands;
};

std::vector<OptionEntry> optionEntries(const CompletionModel& model, bool keyOptions) {
  std::vector<OptionEntry> entries;
  for (const auto& command : model.commands) {
    for (const auto& option : command.options) {
      if ((option.value == ValueKind::keyAssignment) != keyOptions) continue;
      auto entry = std::find_if(entries.begin(), entries.end(), [&](const OptionEntry& e) {
        return e.placeholder == option.placeholder && e.description == option.description;
      });
      if (entry == entries.end()) {
        entries.push_back({{}, option.placeholder, option.description, {}});
        entry = entries.end() - 1;
      }
      if (std::find(entry->words.begin(), entry->words.end(), option.word) == entry->words.end()) {
        entry->words.push_back(option.word);
      }
      if (std::find(entry->commands.begin(), entry->commands.end(), command.name()) ==
          entry->commands.end()) {
        entry->commands.push_back(command.name());
      }
    }
  }
  return entries;
}

std::string optionTag(const OptionEntry& entry) {
  std::string tag;
  for (const auto& word : entry.words) {
    if (!tag.empty()) tag += ", ";
    tag += form(word, entry.placeholder);
  }
  return tag;
}

AppMatch exampleApp(std::string_view) { return AppMatch::one("com.example.App"); }

std::expected<std::string, std::string> examples(const CompletionModel& model) {
  std::string text = ".SH EXAMPLES\n";
  for (const auto& command : model.commands) {
    if (command.first.starts_with('-')) continue;  // an alias of a command shown by its word
    const auto example = std::find_if(kExamples.begin(), kExamples.end(), [&](const Example& e) {
      return e.command == command.name();
    });
    if (example == kExamples.end()) return std::unexpected("no example of " + command.name());
    const auto words = shellWords(example->words);
    const auto action = CommandLineInterface::parse(words, "/Users/you", exampleApp);
    if (!action) {
      return std::unexpected("the example of " + command.name() +
                             " is refused: " + CommandLineInterface::message(action.error()));
    }
    text += ".TP\n\\fBquillon " + ManPage::escaped(example->words) + "\\fR\n" +
            ManPage::escaped(example->meaning) + "\n";
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

std::expected<std::string, std::string> ManPage::text(const CompletionModel& model,
                                                      std::string_view version) {
  const auto usage = readUsage(CommandLineInterface::usage());
  if (!usage) return std::unexpected(usage.error());
  const std::string_view lead = "quillon ";
  if (!usage->intro.starts_with(lead) || !usage->intro.ends_with('.')) {
    return std::unexpected("the usage text does not open with a sentence about quillon");
  }

  std::string text =
      ".\\\" Manual page of quillon. Written by quillon-completions from the tool's own grammar\n"
      ".\\\" and usage text; do not edit.\n";
  // Ragged right and no hyphens: option words and paths read as typed.
  text += ".TH QUILLON 1 \"\" \"quillon " + escaped(version) + "\" \"User Commands\"\n.ad l\n.nh\n";
  text += ".SH NAME\nquillon \\- " +
          escaped(std::string_view(usage->intro)
                      .substr(lead.size(), usage->intro.size() - lead.size() - 1)) +
          "\n";

  text += ".SH SYNOPSIS\n.in +4n\n";
  for (const auto& line : usage->synopsis) text += ".ti -4n\n" + synopsisLine(line) + "\n";
  text += ".in -4n\n";

  text += ".SH DESCRIPTION\n" + escaped(usage->intro) + "\n.PP\n" + escaped(usage->notes) + "\n";

  text += ".SH COMMANDS\n";
  for (const auto& command : model.commands) {
    if (command.first.starts_with('-')) continue;
    std::string tag = "\\fB" + escaped(command.name()) + "\\fR";
    for (const auto& alias : model.commands) {
      if (alias.first == "--" + command.first) tag += ", \\fB" + escaped(alias.first) + "\\fR";
    }
    if (!command.plainWord.empty()) tag += " \\fI" + escaped(command.plainWord) + "\\fR";
    text += ".TP\n" + tag + "\n" + escaped(sentence(command.summary)) + "\n";
  }

  text += ".SH OPTIONS\n";
  for (const auto& entry : optionEntries(model, false)) {
    text += ".TP\n" + optionTag(entry) + "\n" + escaped(sentence(entry.description)) + "\n" +
            escaped("Taken by " + listed(entry.commands) + ".") + "\n";
  }

  text += ".SH KEYS\n";
  for (std::size_t i = 0; i < usage->keys.size(); ++i) {
    const std::string line = trimmed(usage->keys[i]);
    if (i > 0) text += ".PP\n";
    if (i != 1) {
      text += escaped(line) + "\n";
      continue;
    }
    // The line of forms: each form kept whole, the forms free to wrap.
    std::string forms;
    for (const auto& part : split(line, "   ")) {
      const std::string item = trimmed(part);
      if (item.empty()) continue;
      const std::size_t blank = item.find(' ');
      if (!forms.empty()) forms += ' ';
      forms += blank == std::string::npos ? form(item, "")
                                          : form(item.substr(0, blank), item.substr(blank + 1));
    }
    text += forms + "\n";
  }
  for (const auto& entry : optionEntries(model, true)) {
    text += ".TP\n" + optionTag(entry) + "\n" + escaped(sentence(entry.description)) + "\n";
  }

  text += ".SH EXIT STATUS\n";
  for (const auto& [code, meaning] : usage->exits) {
    text += ".TP\n.B " + code + "\n" + escaped(meaning) + "\n";
  }

  text +=
      ".SH FILES\nOn the Mac, Quillon keeps its files in the folder\n.IR \"~/Library/Application "
      "Support/" +
      escaped(Brand::supportFolderName) + "\" :\n";
  for (const auto& [name, meaning] : kFiles) {
    text += ".TP\n.I " + escaped(name) + "\n" + escaped(meaning) + "\n";
  }
  text += ".PP\nLists and exports read these files and never change them.\n";

  auto exampleText = examples(model);
  if (!exampleText) return std::unexpected(exampleText.error());
  text += *exampleText;
  return text;
}

}  // namespace corvel
