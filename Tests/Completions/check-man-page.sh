#!/usr/bin/env bash
# check-man-page.sh PAGE COMMAND...
# Checks the manual page PAGE: groff and man render it without a warning,
# and every line of the usage text that COMMAND prints (quillon help) reads
# in the rendered page, each exit code with its meaning included, and each
# other spelling of an option or a command stands beside it. Exits 77
# (skipped) when groff or man is not installed.
set -u
page=$1
shift

for tool in groff man; do
  if ! command -v "$tool" >/dev/null 2>&1; then
    echo "$tool is not installed, so the manual page is not checked."
    exit 77
  fi
done

failures=0
fail() {
  failures=$((failures + 1))
  printf '%s\n' "$*"
}

warnings=$(groff -man -ww -z "$page" 2>&1)
[[ -z $warnings ]] || fail "groff warns: $warnings"
# man-db's man renders through groff with its own settings; other mans lack
# the --warnings option.
if man --version 2>/dev/null | grep -q man-db; then
  warnings=$(LC_ALL=C MANWIDTH=80 man -l --warnings "$page" 2>&1 >/dev/null)
  [[ -z $warnings ]] || fail "man warns: $warnings"
fi

# The page as one line of words, and each usage line likewise.
collapsed() { tr -s ' \t\n' '   ' | sed -e 's/^ //' -e 's/ $//'; }
rendered=$(groff -man -Tascii -P-cbou -rLL=300n "$page" 2>/dev/null | collapsed)
usage=$("$@") || fail "the usage text could not be printed: $*"

checked=0
while IFS= read -r line; do
  line=$(collapsed <<<"$line")
  [[ -z $line || $line == "Usage:" ]] && continue
  if [[ $line == "Exit codes: "* || $line =~ ^[0-9]+\  ]]; then
    # Exit codes read as a list: each code and its meaning.
    line=${line#Exit codes: }
    line=${line%.}
    IFS=',' read -r -a items <<<"$line"
    for item in "${items[@]}"; do
      item=$(collapsed <<<"$item")
      [[ -z $item ]] && continue
      checked=$((checked + 1))
      [[ $rendered == *"$item"* ]] || fail "the page lacks the exit code: $item"
    done
    continue
  fi
  checked=$((checked + 1))
  [[ $rendered == *"$line"* ]] || fail "the page lacks the usage line: $line"
done <<<"$usage"

# Another spelling of an option or a command stands beside it.
for spelled in "-f FILE, --file FILE" "-k KEY=VALUE, --key KEY=VALUE" "version, --version"; do
  checked=$((checked + 1))
  [[ $rendered == *"$spelled"* ]] || fail "the page lacks: $spelled"
done

((checked > 20)) || fail "only $checked usage lines were checked; is the usage text printed?"
echo "manual page: $checked usage lines checked, $failures problems."
((failures == 0))
