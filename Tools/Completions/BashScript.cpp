#include "Tools/Completions/BashScript.h"

#include <map>

#include "Tools/Completions/ScriptText.h"

namespace corvel {
namespace {

// The parts that do not depend on the grammar: splitting the line the way
// the user sees it, quoting, and offering values of each kind.
constexpr std::string_view kHelpers = R"BASH(
# Undoes the quoting of one word as typed; the result is in REPLY.
_quillon_dequote() {
  local text=$1 c quote=
  REPLY=
  while [[ -n $text ]]; do
    c=${text:0:1}
    text=${text:1}
    if [[ $quote == "'" ]]; then
      if [[ $c == "'" ]]; then quote=; else REPLY+=$c; fi
    elif [[ $c == '\' && -n $text && ( -z $quote || ${text:0:1} == [\"\\\$\`] ) ]]; then
      REPLY+=${text:0:1}
      text=${text:1}
    elif [[ $c == '"' ]]; then
      if [[ -n $quote ]]; then quote=; else quote='"'; fi
    elif [[ $c == "'" && -z $quote ]]; then
      quote="'"
    else
      REPLY+=$c
    fi
  done
}

# A backslash before each character the shell would read specially; the
# result is in REPLY. A leading "~" is kept, so paths from home still expand.
_quillon_quote() {
  local text=$1 c i specials=$' \t\n"\'\\$`!*?[]{}()<>|&;#^'
  REPLY=
  for ((i = 0; i < ${#text}; i++)); do
    c=${text:i:1}
    [[ $specials == *"$c"* ]] && REPLY+='\'
    REPLY+=$c
  done
}

# Splits the line up to the cursor as the user sees it. Bash also cuts words
# at "=" and ":" ("--theme=x" arrives as three words); pieces with no blank
# between them are joined again. Sets _quillon_words (dequoted, the last one
# ending at the cursor), _quillon_cur (the last word) and _quillon_before
# (the part of it that bash keeps when it puts in a completion).
_quillon_split() {
  local line=${COMP_LINE:0:COMP_POINT} piece raw last replaced=
  local -i offset=0 start=0 i joined
  local -a raws=()
  for ((i = 0; i <= COMP_CWORD; i++)); do
    piece=${COMP_WORDS[i]}
    joined=1
    while [[ ${line:offset:1} == [[:space:]] ]]; do
      offset+=1
      joined=0
    done
    if ((i == COMP_CWORD)); then
      piece=${line:offset}
      replaced=$piece
    fi
    if ((i > 0 && joined)); then
      raws[${#raws[@]} - 1]+=$piece
    else
      raws+=("$piece")
    fi
    offset+=${#piece}
  done
  # Bash puts a completion after a lone "=" or ":", not in its place.
  [[ -z ${replaced//[=:]/} ]] && replaced=
  _quillon_words=()
  for raw in "${raws[@]}"; do
    _quillon_dequote "$raw"
    _quillon_words+=("$REPLY")
  done
  _quillon_cur=${_quillon_words[${#_quillon_words[@]} - 1]}
  last=${raws[${#raws[@]} - 1]}
  _quillon_dequote "${last:0:${#last}-${#replaced}}"
  _quillon_before=$REPLY
}

# Offers each candidate, after the prefix, that continues the current word.
_quillon_add() {
  local prefix=$1 candidate
  shift
  for candidate in "$@"; do
    candidate=$prefix$candidate
    [[ $candidate == "$_quillon_cur"* ]] || continue
    _quillon_quote "${candidate#"$_quillon_before"}"
    COMPREPLY+=("$REPLY")
  done
}

# The string values of members of one of the tool's JSON listings; nothing
# when the tool is not on the PATH.
_quillon_listed() {
  local listing=$1
  shift
  command -v quillon >/dev/null || return 0
  command quillon "$listing" list --json 2>/dev/null | awk -v members="$*" '@AWK@'
}

# Folders, and files matching one of the globs.
_quillon_files() {
  local prefix=$1 path=${_quillon_cur#"$1"} glob line
  local -a found=()
  shift
  while IFS= read -r line; do found+=("${line%/}/"); done < <(compgen -d -- "$path")
  for glob in "$@"; do
    while IFS= read -r line; do found+=("$line"); done < <(compgen -f -X "!$glob" -- "$path")
  done
  _quillon_add "$prefix" "${found[@]}"
  [[ ${COMPREPLY[*]} == */* ]] && compopt -o nospace 2>/dev/null
}

# Offers values of one kind for a command, after the prefix.
_quillon_value() {
  local command=$1 kind=$2 prefix=$3 line
  local -a values=()
  case $kind in
    position) values=("${_quillon_positions[@]}") ;;
    fill) values=("${_quillon_fills[@]}") ;;
    helpTopic) values=("${_quillon_topics[@]}") ;;
    keyName) values=("${_quillon_keys[@]}") ;;
    keyAssignment)
      # The key's name, up to its "="; what the key is given is the user's own.
      [[ ${_quillon_cur#"$prefix"} == *=* ]] && return 0
      values=("${_quillon_keys[@]/%/=}")
      compopt -o nospace 2>/dev/null
      ;;
    theme | layer | sheetApp)
      _quillon_listing "$kind"
      while IFS= read -r line; do values+=("$line"); done < <(_quillon_listed "${REPLY[@]}")
      ;;
    importFile | exportFile)
      _quillon_extensions "$command"
      _quillon_files "$prefix" "${REPLY[@]}"
      return 0
      ;;
    *) return 0 ;;
  esac
  _quillon_add "$prefix" "${values[@]}"
}

_quillon() {
  local _quillon_cur _quillon_before word command first kind ended=
  local -a _quillon_words
  local -i count at=2 i plain=0
  COMPREPLY=()
  _quillon_split
  count=${#_quillon_words[@]}
  if ((count <= 2)); then
    _quillon_add "" "${_quillon_first_words[@]}"
    return 0
  fi
  first=${_quillon_words[1],,}
  command=$first
  if _quillon_subcommands "$first"; then
    if ((count == 3)); then
      _quillon_add "" "${REPLY[@]}"
      return 0
    fi
    command+=" ${_quillon_words[2],,}"
    at=3
  fi
  for ((i = at; i < count - 1; i++)); do
    word=${_quillon_words[i]}
    if [[ -n $ended || $word != -?* ]]; then
      plain+=1
    elif [[ $word == -- ]]; then
      ended=1
    elif [[ $word != --*=* ]] && _quillon_value_kind "$command" "$word"; then
      if ((i == count - 2)); then
        _quillon_value "$command" "$REPLY" ""
        return 0
      fi
      i+=1
    fi
  done
  if [[ -z $ended && $_quillon_cur == --*=* ]]; then
    word=${_quillon_cur%%=*}
    _quillon_value_kind "$command" "$word" && _quillon_value "$command" "$REPLY" "$word="
    return 0
  fi
  if ((plain == 0)) && _quillon_plain_kind "$command"; then
    kind=$REPLY
    if [[ -n $ended || $_quillon_cur != -* ]]; then
      _quillon_value "$command" "$kind" ""
      return 0
    fi
  fi
  [[ -z $ended ]] && _quillon_options "$command" && _quillon_add "" "${REPLY[@]}"
  return 0
}

complete -F _quillon quillon
)BASH";

std::string quotedCase(const std::string& text) { return "\"" + text + "\""; }

// One `case` arm per value, matching every key that gives it; a long list
// of keys goes on one line each.
std::string caseArms(const std::map<std::string, std::vector<std::string>>& keysByValue) {
  std::string text;
  for (const auto& [value, keys] : keysByValue) {
    const std::string separator = keys.size() > 3 ? " | \\\n    " : " | ";
    text += "    ";
    for (std::size_t i = 0; i < keys.size(); ++i) {
      if (i > 0) text += separator;
      text += quotedCase(keys[i]);
    }
    text += ") " + value + " ;;\n";
  }
  return text;
}

std::string function(std::string_view name, std::string_view comment, std::string_view subject,
                     const std::string& arms) {
  return "# " + std::string(comment) + "\n" + std::string(name) + "() {\n  case " +
         std::string(subject) + " in\n" + arms + "    *) return 1 ;;\n  esac\n}\n\n";
}

}  // namespace

std::string BashScript::text(const CompletionModel& model) {
  std::map<std::string, std::vector<std::string>> subcommands;
  std::map<std::string, std::vector<std::string>> options;
  std::map<std::string, std::vector<std::string>> valueKinds;
  std::map<std::string, std::vector<std::string>> plainKinds;
  std::map<std::string, std::vector<std::string>> extensions;
  for (const auto& first : model.firstWords()) {
    const auto subs = model.subcommands(first);
    if (!subs.empty())
      subcommands["REPLY=(" + ScriptText::joined(subs, " ") + ")"].push_back(first);
  }
  for (const auto& command : model.commands) {
    const std::string name = CommandGrammar::name(command);
    std::vector<std::string> words;
    for (const auto& use : command.options) {
      const OptionSpec& option = *use.definition;
      words.emplace_back(option.word);
      if (option.completion != ValueKind::none) {
        valueKinds["REPLY=" + std::string(ScriptText::kindWord(option.completion))].push_back(
            name + "|" + std::string(option.word));
      }
    }
    if (!words.empty()) options["REPLY=(" + ScriptText::joined(words, " ") + ")"].push_back(name);
    if (command.plain != nullptr) {
      plainKinds["REPLY=" + std::string(ScriptText::kindWord(command.plain->completion))].push_back(
          name);
    }
    std::vector<std::string> globs;
    for (const auto& extension : CompletionModel::extensions(command)) {
      globs.push_back(ScriptText::singleQuoted(ScriptText::anyCaseGlob(extension)));
    }
    if (!globs.empty()) {
      extensions["REPLY=(" + ScriptText::joined(globs, " ") + ")"].push_back(name);
    }
  }
  std::map<std::string, std::vector<std::string>> listings;
  for (const ValueKind kind : {ValueKind::theme, ValueKind::layer, ValueKind::sheetApp}) {
    const auto [listing, members] = ScriptText::listing(kind);
    listings["REPLY=(" + std::string(listing) + " " + std::string(members) + ")"].push_back(
        std::string(ScriptText::kindWord(kind)));
  }

  std::string text =
      "# bash completion for quillon                                  -*- shell-script -*-\n"
      "# Written by quillon-completions from the tool's own grammar; do not edit.\n\n"
      "# It needs bash 4.1 or later, as bash-completion 2 does.\n"
      "((BASH_VERSINFO[0] > 4 || (BASH_VERSINFO[0] == 4 && BASH_VERSINFO[1] >= 1))) || return "
      "0\n\n";
  text += "_quillon_first_words=(" + ScriptText::joined(model.firstWords(), " ") + ")\n";
  text += "_quillon_positions=(" + ScriptText::joined(model.positions, " ") + ")\n";
  text += "_quillon_fills=(" + ScriptText::joined(model.fills, " ") + ")\n";
  text += "_quillon_topics=(" + ScriptText::joined(model.topics, " ") + ")\n";
  text += "_quillon_keys=(" + ScriptText::joined(model.keys, " ") + ")\n\n";
  text += function("_quillon_subcommands", "The subcommand words of a first word, in REPLY.", "$1",
                   caseArms(subcommands));
  text += function("_quillon_options", "The option words a command takes, in REPLY.", "$1",
                   caseArms(options));
  text += function("_quillon_value_kind",
                   "What the value of an option of a command is (fails for a flag), in REPLY.",
                   "\"$1|$2\"", caseArms(valueKinds));
  text += function("_quillon_plain_kind", "What the plain word of a command is, in REPLY.", "$1",
                   caseArms(plainKinds));
  text += function("_quillon_extensions", "The file globs of a command's files, in REPLY.", "$1",
                   caseArms(extensions));
  text +=
      function("_quillon_listing", "The listing and members a live kind is read from, in REPLY.",
               "$1", caseArms(listings));
  text += ScriptText::replaced(kHelpers.substr(1), "@AWK@", ScriptText::listedValuesAwk);
  return text;
}

}  // namespace corvel
