#include "Tools/Completions/FishScript.h"

#include "Tools/Completions/ScriptText.h"

namespace corvel {
namespace {

constexpr std::string_view kHelpers = R"FISH(
# Whether the words after quillon begin with the given ones (compared in
# lower case, as the tool reads command words).
function __quillon_seen
    set -l words (commandline -opc)
    set -e words[1]
    test (count $words) -ge (count $argv); or return 1
    for i in (seq (count $argv))
        test (string lower -- $words[$i]) = $argv[$i]; or return 1
    end
end

# Whether the words after quillon are exactly the given ones.
function __quillon_at
    set -l words (commandline -opc)
    test (count $words) -eq (math (count $argv) + 1); or return 1
    __quillon_seen $argv
end

# The string values of members of one of the tool's JSON listings; nothing
# when the tool is not on the PATH.
function __quillon_listed --argument-names listing
    command -q quillon; or return
    command quillon $listing list --json 2>/dev/null | awk -v members="$argv[2..-1]" '@AWK@'
end

# Folders, and files with one of the given extensions (in any case).
function __quillon_files
    set -l token (commandline -ct | string replace -r -- '^--[^=]*=' '')
    set -l home
    if string match -q -- '~/*' $token
        set home $HOME/
        set token $home(string sub -s 3 -- $token)
    end
    set -l extensions (string join '|' -- $argv)
    for path in "$token"*
        if test -d $path
            set path $path/
        else if not string match -qir -- "\.($extensions)\$" $path
            continue
        end
        if set -q home[1]
            string replace -r -- '^'(string escape --style=regex -- $home) '~/' $path
        else
            echo $path
        end
    end
end

# A key's name and its "="; what the key is given is the user's own.
function __quillon_key_assignments
    commandline -ct | string replace -r -- '^--[^=]*=' '' | string match -q -- '*=*'; and return
    printf '%s=\n' @KEYS@
end
)FISH";

// The text between fish's single quotes, where "\" and "'" are escaped.
std::string fishQuoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\\' || c == '\'') quoted += '\\';
    quoted.push_back(c);
  }
  return quoted + "'";
}

// The condition that the words typed so far are those given.
std::string condition(std::string_view function, std::string_view words) {
  std::string text(function);
  if (!words.empty()) text.append(" ").append(words);
  return fishQuoted(text);
}

// The arguments of `complete` that offer values of a kind.
std::string values(const CompletionModel& model, const CommandSpec& command, ValueKind kind) {
  switch (kind) {
    case ValueKind::none:
    case ValueKind::free:
      return "";
    case ValueKind::position:
      return " -a " + fishQuoted(ScriptText::joined(model.positions, " "));
    case ValueKind::fill:
      return " -a " + fishQuoted(ScriptText::joined(model.fills, " "));
    case ValueKind::helpTopic:
      return " -a " + fishQuoted(ScriptText::joined(model.topics, " "));
    case ValueKind::theme:
    case ValueKind::layer:
    case ValueKind::sheetApp: {
      const auto [listing, members] = ScriptText::listing(kind);
      return " -a " + fishQuoted("(__quillon_listed " + std::string(listing) + " " +
                                 std::string(members) + ")");
    }
    case ValueKind::keyAssignment:
      return " -a '(__quillon_key_assignments)'";
    case ValueKind::keyName:
      return " -a " + fishQuoted(ScriptText::joined(model.keys, " "));
    case ValueKind::importFile:
    case ValueKind::exportFile:
      return " -a " +
             fishQuoted("(__quillon_files " +
                        ScriptText::joined(CompletionModel::extensions(command), " ") + ")");
  }
  return "";
}

}  // namespace

std::string FishScript::text(const CompletionModel& model) {
  std::string text =
      "# fish completion for quillon\n"
      "# Written by quillon-completions from the tool's own grammar; do not edit.\n";
  // The awk program sits between single quotes, where fish reads "\\" as "\".
  const std::string awk = fishQuoted(ScriptText::listedValuesAwk);
  text += ScriptText::replaced(ScriptText::replaced(kHelpers, "'@AWK@'", awk), "@KEYS@",
                               ScriptText::joined(model.keys, " "));
  text += "\n# Files only where a command takes one.\ncomplete -c quillon -f\n\n";
  for (const auto& first : model.firstWords()) {
    text += "complete -c quillon -n " + condition("__quillon_at", "") + " -a " + fishQuoted(first) +
            " -d " + fishQuoted(model.summary(first)) + "\n";
  }
  for (const auto& command : model.commands) {
    std::string lines;
    if (!command.sub.empty()) {
      lines += "complete -c quillon -n " + condition("__quillon_at", command.first) + " -a " +
               fishQuoted(command.sub) + " -d " + fishQuoted(command.summary) + "\n";
    }
    const std::string words = CommandGrammar::name(command);
    for (const auto& use : command.options) {
      const OptionSpec& option = *use.definition;
      lines += "complete -c quillon -n " + condition("__quillon_seen", words);
      if (option.word.starts_with("--")) {
        lines += " -l " + std::string(option.word.substr(2));
      } else {
        lines += " -s " + std::string(option.word.substr(1));
      }
      if (option.completion != ValueKind::none) {
        lines += " -x" + values(model, command, option.completion);
      }
      lines += " -d " + fishQuoted(option.summary) + "\n";
    }
    const std::string offered =
        command.plain != nullptr ? values(model, command, command.plain->completion) : "";
    if (!offered.empty()) {
      lines += "complete -c quillon -n " + condition("__quillon_at", words) + offered + "\n";
    }
    if (!lines.empty()) text += "\n" + lines;
  }
  return text;
}

}  // namespace corvel
