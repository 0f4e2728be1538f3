#include "Tools/Completions/ZshScript.h"

#include "Tools/Completions/ScriptText.h"

namespace corvel {
namespace {

constexpr std::string_view kListed = R"ZSH(
# The string values of members of one of the tool's JSON listings, one a
# line; nothing when the tool is not on the PATH.
_quillon_listed() {
  local listing=$1
  shift
  (( $+commands[quillon] )) || return
  command quillon $listing list --json 2>/dev/null | awk -v members="$*" '@AWK@'
}

# Offers the values of members of a listing, under a tag and a description.
_quillon_live() {
  local tag=$1 description=$2 expl
  local -a values
  shift 2
  values=(${(f)"$(_quillon_listed "$@")"})
  _wanted $tag expl $description compadd -a values
}

_quillon_themes() { _quillon_live themes theme themes id name }
_quillon_layers() { _quillon_live layers layer layers name }
_quillon_sheet_apps() { _quillon_live apps app sheets app }
)ZSH";

std::string replaced(std::string_view text, std::string_view marker, std::string_view with) {
  std::string out(text);
  const std::size_t at = out.find(marker);
  if (at != std::string::npos) out.replace(at, marker.size(), with);
  return out;
}

// A message or description inside an _arguments entry: colons escaped.
std::string escapedColons(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == ':') out += '\\';
    out.push_back(c);
  }
  return out;
}

// The files a command reads or writes: folders, and files of its extensions
// in any case.
std::string filesAction(const CompletedCommand& command) {
  return "_files -g \"*.(#i)(" + ScriptText::joined(command.extensions, "|") + ")(-.)\"";
}

std::string action(const CompletionModel& model, const CompletedCommand& command, ValueKind kind) {
  switch (kind) {
    case ValueKind::none:
    case ValueKind::free:
      return " ";
    case ValueKind::position:
      return "(" + ScriptText::joined(model.positions, " ") + ")";
    case ValueKind::fill:
      return "(" + ScriptText::joined(model.fills, " ") + ")";
    case ValueKind::helpTopic:
      return "(" + ScriptText::joined(model.topics, " ") + ")";
    case ValueKind::theme:
      return "_quillon_themes";
    case ValueKind::layer:
      return "_quillon_layers";
    case ValueKind::sheetApp:
      return "_quillon_sheet_apps";
    case ValueKind::keyAssignment:
      return "_quillon_key_assignments";
    case ValueKind::keyName:
      return "_quillon_key_names";
    case ValueKind::importFile:
    case ValueKind::exportFile:
      return filesAction(command);
  }
  return " ";
}

// One _arguments entry: "--position=[where the board goes]:NAME|X\:Y:(top ...)".
std::string argumentsEntry(const CompletionModel& model, const CompletedCommand& command,
                           const CompletedOption& option) {
  std::string text = option.repeatable ? "*" : "";
  text += option.word;
  // A long option takes its value after "=" or in the next word; "-k" and
  // "-f" only in the next word.
  if (option.value != ValueKind::none && option.word.starts_with("--")) text += "=";
  text += "[" + option.summary + "]";
  if (option.value != ValueKind::none) {
    text += ":" + escapedColons(option.placeholder) + ":" + action(model, command, option.value);
  }
  return ScriptText::singleQuoted(text);
}

std::string described(const std::string& word, const std::string& summary) {
  return ScriptText::singleQuoted(escapedColons(word) + ":" + summary);
}

}  // namespace

std::string ZshScript::text(const CompletionModel& model) {
  std::string text =
      "#compdef quillon\n"
      "# zsh completion for quillon\n"
      "# Written by quillon-completions from the tool's own grammar; do not edit.\n";
  text += replaced(kListed, "@AWK@", ScriptText::listedValuesAwk);

  const std::string keys = ScriptText::joined(model.keys, " ");
  text +=
      "\n# A key's name and its \"=\"; what the key is given is the user's own.\n"
      "_quillon_key_assignments() {\n"
      "  local expl\n"
      "  if compset -P '*='; then\n"
      "    _message -e values 'what the key is given'\n"
      "    return 1\n"
      "  fi\n"
      "  _wanted keys expl key compadd -S '=' -- " +
      keys +
      "\n}\n\n"
      "_quillon_key_names() {\n"
      "  local expl\n"
      "  _wanted keys expl key compadd -- " +
      keys + "\n}\n\n";

  text +=
      "_quillon() {\n"
      "  local curcontext=$curcontext command\n"
      "  local -a choices\n"
      "  if (( CURRENT == 2 )); then\n"
      "    choices=(\n";
  for (const auto& first : model.firstWords()) {
    text += "      " + described(first, model.summary(first)) + "\n";
  }
  text +=
      "    )\n"
      "    _describe -t commands 'quillon command' choices\n"
      "    return\n"
      "  fi\n"
      "  command=${(L)words[2]}\n"
      "  case $command in\n";
  for (const auto& first : model.firstWords()) {
    if (model.subcommands(first).empty()) continue;
    text += "    (" + first +
            ")\n"
            "      if (( CURRENT == 3 )); then\n"
            "        choices=(\n";
    for (const auto& command : model.commands) {
      if (command.first != first) continue;
      text += "          " + described(command.sub, command.summary) + "\n";
    }
    text +=
        "        )\n"
        "        _describe -t subcommands \"quillon $command command\" choices\n"
        "        return\n"
        "      fi\n"
        "      command+=\" ${(L)words[3]}\"\n"
        "      words=(\"quillon $command\" \"${(@)words[4,-1]}\")\n"
        "      (( CURRENT -= 2 ))\n"
        "      ;;\n";
  }
  text +=
      "    (*)\n"
      "      words=(\"quillon $command\" \"${(@)words[3,-1]}\")\n"
      "      (( CURRENT -= 1 ))\n"
      "      ;;\n"
      "  esac\n"
      "  curcontext=${curcontext%:*:*}:quillon-${command// /-}:\n"
      "  case $command in\n";
  for (const auto& command : model.commands) {
    text += "    (" + ScriptText::singleQuoted(command.name()) + ")\n";
    if (command.options.empty() && command.plain == ValueKind::none) {
      text += "      _message 'no more arguments'\n      ;;\n";
      continue;
    }
    text += "      _arguments -S :";
    for (const auto& option : command.options) {
      text += " \\\n        " + argumentsEntry(model, command, option);
    }
    if (command.plain != ValueKind::none) {
      text += " \\\n        " + ScriptText::singleQuoted(":" + command.plainWord + ":" +
                                                         action(model, command, command.plain));
    }
    text += "\n      ;;\n";
  }
  text +=
      "  esac\n"
      "}\n\n"
      "_quillon \"$@\"\n";
  return text;
}

}  // namespace corvel
