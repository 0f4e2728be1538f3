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
std::string filesAction(const CommandSpec& command) {
  return "_files -g \"*.(#i)(" + ScriptText::joined(CompletionModel::extensions(command), "|") +
         ")(-.)\"";
}

std::string action(const CompletionModel& model, const CommandSpec& command, ValueKind kind) {
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
std::string argumentsEntry(const CompletionModel& model, const CommandSpec& command,
                           const OptionSpec& option) {
  // Key options may be given once per key.
  const bool repeatable =
      option.completion == ValueKind::keyAssignment || option.completion == ValueKind::keyName;
  std::string text = repeatable ? "*" : "";
  text += option.word;
  // A long option takes its value after "=" or in the next word; "-k" and
  // "-f" only in the next word.
  const bool takesValue = option.completion != ValueKind::none;
  if (takesValue && option.word.starts_with("--")) text += "=";
  text.append("[").append(option.summary).append("]");
  if (takesValue) {
    text +=
        ":" + escapedColons(option.placeholder) + ":" + action(model, command, option.completion);
  }
  return ScriptText::singleQuoted(text);
}

std::string described(std::string_view word, std::string_view summary) {
  return ScriptText::singleQuoted(escapedColons(word) + ":" + std::string(summary));
}

}  // namespace

std::string ZshScript::text(const CompletionModel& model) {
  std::string text =
      "#compdef quillon\n"
      "# zsh completion for quillon\n"
      "# Written by quillon-completions from the tool's own grammar; do not edit.\n";
  text += ScriptText::replaced(kListed, "@AWK@", ScriptText::listedValuesAwk);

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
    for (const auto& command : CommandGrammar::withFirst(first)) {
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
    text += "    (" + ScriptText::singleQuoted(CommandGrammar::name(command)) + ")\n";
    if (command.options.empty() && command.plain == nullptr) {
      text += "      _message 'no more arguments'\n      ;;\n";
      continue;
    }
    text += "      _arguments -S :";
    for (const auto& use : command.options) {
      text += " \\\n        " + argumentsEntry(model, command, *use.definition);
    }
    if (command.plain != nullptr) {
      text += " \\\n        " +
              ScriptText::singleQuoted(":" + std::string(command.plain->word) + ":" +
                                       action(model, command, command.plain->completion));
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
