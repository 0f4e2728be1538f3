#!/usr/bin/env bash
# check-install.sh CMAKE BUILD
# Installs the build into a throw-away prefix and checks that every file
# lands where Debian and Homebrew look for it, and nothing else is installed.
set -u
cmake=$1
build=$2

prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
if ! "$cmake" --install "$build" --prefix "$prefix" >/dev/null; then
  echo "cmake --install failed."
  exit 1
fi

expected=(
  bin/quillon
  share/bash-completion/completions/quillon
  share/fish/vendor_completions.d/quillon.fish
  share/man/man1/quillon.1
  share/zsh/site-functions/_quillon
)
failures=0
installed=$(cd "$prefix" && find . -type f | sed 's:^\./::' | LC_ALL=C sort)
wanted=$(printf '%s\n' "${expected[@]}" | LC_ALL=C sort)
if [[ $installed != "$wanted" ]]; then
  failures=$((failures + 1))
  printf 'installed:\n%s\nwanted:\n%s\n' "$installed" "$wanted"
fi
if [[ ! -x $prefix/bin/quillon ]]; then
  failures=$((failures + 1))
  echo "bin/quillon is not executable."
fi
# Each file is the one its shell or man reads: the first line says so.
first_lines=(
  "share/zsh/site-functions/_quillon|#compdef quillon"
  "share/bash-completion/completions/quillon|# bash completion for quillon"
  "share/fish/vendor_completions.d/quillon.fish|# fish completion for quillon"
  'share/man/man1/quillon.1|.\" Manual page of quillon.'
)
for entry in "${first_lines[@]}"; do
  file=${entry%%|*}
  start=${entry#*|}
  line=$(head -n 1 "$prefix/$file" 2>/dev/null)
  if [[ $line != "$start"* ]]; then
    failures=$((failures + 1))
    echo "$file begins with \"$line\"."
  fi
done
echo "install: ${#expected[@]} files checked, $failures problems."
((failures == 0))
