#!/usr/bin/env bash
# check-completions.sh SHELL FOLDER [QUILLON]
# Loads the completion script of quillon for SHELL (bash, zsh or fish) from
# FOLDER in that very shell and checks what it offers for each command line
# of completion-cases.tsv. A stand-in `quillon` on the PATH prints the
# listings; a folder of files serves the file completions. Given the built
# tool QUILLON, the lines of live-cases.tsv are checked with it on the PATH,
# reading a support folder made for the test. Exits 77 (skipped) when SHELL
# is not installed.
set -u
shell=$1
folder=$(cd "$2" && pwd)
tool=${3:+$(cd "$(dirname "$3")" && pwd)/$(basename "$3")}
here=$(cd "$(dirname "$0")" && pwd)
capture=$here/capture.zsh

if ! command -v "$shell" >/dev/null 2>&1; then
  echo "$shell is not installed, so its completion is not checked."
  exit 77
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/bin" "$work/files/folder"
touch "$work/files/"{a.quillonlayer,b.corvellayer,c.JSON,d.quillontheme,e.quillonsheet,f.txt}
touch "$work/files/folder/inner.quillonlayer" "$work/files/folder/other.txt"

# The listings as the tool prints them: pretty, one member a line.
cat >"$work/bin/quillon" <<'TOOL'
#!/bin/sh
case "$*" in
  "themes list --json")
    cat <<'JSON'
[
  {
    "family" : "Classic",
    "id" : "space-black",
    "inUse" : true,
    "name" : "Space Black"
  },
  {
    "id" : "mine-night",
    "inUse" : false,
    "name" : "Night \"Owl\" \\ 2\/3"
  }
]
JSON
    ;;
  "layers list --json")
    cat <<'JSON'
[
  {
    "app" : "com.apple.Safari",
    "enabled" : true,
    "keys" : 2,
    "name" : "Work",
    "needsReview" : false,
    "trigger" : "rcmd-rshift"
  },
  {
    "enabled" : false,
    "keys" : 0,
    "name" : "Apps & Tools",
    "needsReview" : false,
    "trigger" : "hyper"
  }
]
JSON
    ;;
  "sheets list --json")
    printf '[\n  {\n    "added" : 1,\n    "app" : "com.apple.Safari",\n    "hidden" : 0,\n'
    printf '    "name" : "Safari",\n    "renamed" : 2\n  }\n]\n'
    ;;
  *) exit 1 ;;
esac
TOOL
chmod +x "$work/bin/quillon"
cd "$work/files" || exit 1

# What bash offers: the line cut into words as readline does (at blanks
# outside quotes, and around runs of "=" and ":"), then the function called
# with COMP_WORDS and COMP_CWORD set. Replies come back unescaped.
cat >"$work/bash-offers" <<'DRIVER'
source "$1/quillon.bash"
line=$2 word= quote=
COMP_WORDS=()
for ((i = 0; i < ${#line}; i++)); do
  c=${line:i:1}
  if [[ -n $quote ]]; then
    [[ $c == "$quote" ]] && quote=
    word+=$c
  elif [[ $c == [\"\'] ]]; then
    quote=$c
    word+=$c
  elif [[ $c == " " ]]; then
    [[ -n $word ]] && COMP_WORDS+=("$word")
    word=
  elif [[ $c == [=:] ]]; then
    [[ -n $word && $word != *[=:] ]] && COMP_WORDS+=("$word") && word=
    word+=$c
  else
    [[ $word == *[=:] ]] && COMP_WORDS+=("$word") && word=
    word+=$c
  fi
done
COMP_WORDS+=("$word")
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
COMP_LINE=$line
COMP_POINT=${#line}
_quillon quillon
((${#COMPREPLY[@]})) && printf '%s\n' "${COMPREPLY[@]}"
DRIVER

bash_offers() {
  bash --norc --noprofile "$work/bash-offers" "$folder" "$1" | sed 's/\\\(.\)/\1/g'
}

# zsh answers every line of a file of cases in one session, since starting
# its completion system takes a while; the answers are read in first.
zsh_answers=()
limit=()
command -v timeout >/dev/null && limit=(timeout 60)
zsh_answer_all() {
  local line answer= word
  local -a lines=()
  zsh_answers=()
  while IFS=$'\t' read -r line _; do
    [[ -z $line || $line == \#* ]] || lines+=("$line")
  done <"$1"
  while IFS= read -r word; do
    if [[ $word == "<<end>>" ]]; then
      zsh_answers+=("$answer")
      answer=
    else
      answer+=$word$'\n'
    fi
  done < <(${limit[@]+"${limit[@]}"} zsh -f "$capture" "$folder" "${lines[@]}")
}
if [[ $shell == zsh ]] && ! zsh -f -c 'zmodload zsh/zpty' 2>/dev/null; then
  echo "zsh has no zsh/zpty module, so its completion is not checked."
  exit 77
fi

zsh_offers() {
  printf '%s' "${zsh_answers[asked - 1]-}"
}

fish_offers() {
  fish --no-config -c 'source $argv[1]/quillon.fish; complete -C $argv[2]' "$folder" "$1" |
    cut -f1
}

# One word a line, as compared: an option's "--word=" and a folder's final
# "/" taken away.
normalised() {
  sed -e 's/^--[a-z-]*=//' -e 's:/$::' | LC_ALL=C sort -u
}

failures=0
count=0
# Checks every line of a file of cases.
check_cases() {
  local line check rest offered wanted asked=0
  local -a expected
  [[ $shell == zsh ]] && zsh_answer_all "$1"
  while IFS=$'\t' read -r line check rest; do
    [[ -z $line || $line == \#* ]] && continue
    asked=$((asked + 1))
    count=$((count + 1))
    expected=()
    [[ -n ${rest-} ]] && IFS=$'\t' read -r -a expected <<<"$rest"
    offered=$("${shell}_offers" "$line" | normalised)
    wanted=$( ((${#expected[@]})) && printf '%s\n' "${expected[@]}" | normalised)
    case $check in
      is) [[ $offered == "$wanted" ]] ;;
      files) [[ $(sed 's:.*/::' <<<"$offered" | LC_ALL=C sort -u) == "$wanted" ]] ;;
      has) [[ -z $(LC_ALL=C comm -13 <(echo "$offered") <(echo "$wanted")) ]] ;;
      lacks) [[ -z $(LC_ALL=C comm -12 <(echo "$offered") <(echo "$wanted")) ]] ;;
      *) false ;;
    esac
    if (($? != 0)); then
      failures=$((failures + 1))
      printf '%s: "%s" %s\n  wanted: %s\n  offered: %s\n' "$shell" "$line" "$check" \
        "$(tr '\n' '|' <<<"$wanted")" "$(tr '\n' '|' <<<"$offered")"
    fi
  done <"$1"
}

PATH="$work/bin:$PATH" check_cases "$here/completion-cases.tsv"

if [[ -n $tool ]]; then
  # The built tool, reading a support folder with two layers.
  mkdir -p "$work/tool" "$work/data/Quillon"
  ln -s "$tool" "$work/tool/quillon"
  cat >"$work/data/Quillon/Layers.json" <<'LAYERS'
{
  "version" : 1,
  "layers" : [
    {"id" : "0F8FAD5B-D9CB-469F-A165-70867728950E", "name" : "Work", "enabled" : true,
     "trigger" : {"parts" : [{"modifier" : "command", "side" : "right"}]}, "keys" : {}},
    {"id" : "7C9E6679-7425-40DE-944B-E07FC1F90AE7", "name" : "Reading \"List\" / Notes",
     "trigger" : {"parts" : [{"modifier" : "shift", "side" : "left"}]}, "keys" : {}}
  ]
}
LAYERS
  PATH="$work/tool:$PATH" XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config \
    check_cases "$here/live-cases.tsv"
fi

# Without the tool on the PATH the live values are simply absent: nothing
# offered and nothing said. (zsh answers through its terminal, so only bash
# and fish are asked.)
if [[ $shell != zsh ]] && ! PATH=/usr/bin:/bin command -v quillon >/dev/null; then
  count=$((count + 1))
  said=$(PATH=/usr/bin:/bin "${shell}_offers" "quillon theme " 2>&1)
  if [[ -n $said ]]; then
    failures=$((failures + 1))
    printf '%s: without the tool, "quillon theme " gives: %s\n' "$shell" "$said"
  fi
fi

echo "$shell: $((count - failures)) of $count command lines complete as they should."
((failures == 0))
