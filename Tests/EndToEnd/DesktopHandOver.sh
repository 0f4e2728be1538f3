#!/bin/sh
# The desktop hand-over against a throw-away desktop: a home, data and config
# folders of its own, where a recorder script is registered as the handler of
# quillon:// links. Checks that the handler is found only when its program
# exists, that the link reaches the program exactly, and how app names resolve.
set -eu

probe=$1
quillon=$2
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT INT TERM

export HOME="$root/home"
export XDG_DATA_HOME="$root/data"
export XDG_CONFIG_HOME="$root/config"
export XDG_DATA_DIRS="$root/system-data"
export XDG_CONFIG_DIRS="$root/system-config"
export XDG_RUNTIME_DIR="$root/runtime"
unset XDG_CURRENT_DESKTOP DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
applications="$XDG_DATA_HOME/applications"
mkdir -p "$HOME" "$applications" "$XDG_CONFIG_HOME" "$XDG_DATA_DIRS" "$XDG_CONFIG_DIRS" \
  "$root/bin"
mkdir -m 700 "$XDG_RUNTIME_DIR"

failures=0
fail() {
  echo "FAIL: $*" >&2
  failures=$((failures + 1))
}

# entry ID NAME EXEC [MIME]: writes the desktop entry ID.desktop.
entry() {
  {
    echo "[Desktop Entry]"
    echo "Type=Application"
    echo "Name=$2"
    echo "Exec=$3"
    echo "NoDisplay=true"
    [ $# -ge 4 ] && echo "MimeType=$4;"
    true
  } >"$applications/$1.desktop"
}

# Nothing registered for the scheme: not installed.
if found=$("$probe" quillonApp); then fail "found an app with no handler: $found"; fi

# quillon ARGS... : runs the tool, keeping its status, output and errors.
run_quillon() {
  set +e
  "$quillon" "$@" >"$root/out" 2>"$root/err"
  status=$?
  set -e
}
not_installed="Quillon is not installed. Get it at quillon.app."
run_quillon show --position "Bottom Right" --width 5000 --text "a=Hi & bye"
[ $status -eq 2 ] || fail "show with no app exited $status"
[ "$(cat "$root/err")" = "$not_installed" ] || fail "show with no app said: $(cat "$root/err")"

cat >"$XDG_CONFIG_HOME/mimeapps.list" <<LIST
[Default Applications]
x-scheme-handler/quillon=app.quillon.Quillon.desktop
LIST

# A handler whose program is missing does not count as installed.
entry app.quillon.Quillon Quillon "$root/bin/missing %u" x-scheme-handler/quillon
if found=$("$probe" quillonApp); then fail "found a handler whose program is missing: $found"; fi
run_quillon hide
[ $status -eq 2 ] || fail "hide with a missing program exited $status"

# The recorder appends each argument it is given, one per line.
received="$root/received"
cat >"$root/bin/recorder" <<SCRIPT
#!/bin/sh
for argument in "\$@"; do printf '%s\n' "\$argument" >>"$received"; done
SCRIPT
chmod +x "$root/bin/recorder"
entry app.quillon.Quillon Quillon "$root/bin/recorder %u" x-scheme-handler/quillon

if app=$("$probe" quillonApp); then
  [ "$app" = "$applications/app.quillon.Quillon.desktop" ] || fail "the app is at $app"
else
  fail "no app found for a registered handler"
  app="$applications/app.quillon.Quillon.desktop"
fi

link="quillon://show?theme=Ocean%20Blue&app=com.apple.Safari&label=O%27Brien%20%26%20Sons"
outcome=$("$probe" handOver "$link" "$app")
case $outcome in
  delivered*) ;;
  *) fail "handing over gave: $outcome" ;;
esac
# The launch is reported when the program starts; give it time to write,
# however busy the machine.
tries=0
while [ ! -s "$received" ] && [ $tries -lt 200 ]; do
  sleep 0.1
  tries=$((tries + 1))
done
if [ ! -s "$received" ]; then
  fail "the recorder never ran"
elif [ "$(cat "$received")" != "$link" ]; then
  fail "the recorder received: $(cat "$received")"
fi

# The whole tool: the command line becomes one link, handed to the recorder.
rm -f "$received"
run_quillon show --position "Bottom Right" --width 5000 --text "a=Hi & bye"
[ $status -eq 0 ] || fail "show exited $status: $(cat "$root/err")"
tries=0
while [ ! -s "$received" ] && [ $tries -lt 200 ]; do
  sleep 0.1
  tries=$((tries + 1))
done
expected="quillon://show?position=bottomRight&width=4000&a=Hi%20%26%20bye"
[ "$(cat "$received" 2>/dev/null)" = "$expected" ] ||
  fail "quillon show sent: $(cat "$received" 2>/dev/null)"

# Imports are checked before the app is asked for.
run_quillon layers import "$root/nothing.quillonlayer"
[ $status -eq 3 ] || fail "an import of a missing file exited $status"

# Where there is no desktop entry the hand-over fails at once, well within a
# second, never through the bounded wait.
outcome=$("$probe" handOver "$link" "$root/nowhere.desktop")
case $outcome in
  "failed 0."*) ;;
  *) fail "handing over to no app gave: $outcome" ;;
esac

# App names: desktop ids stand for bundle identifiers, display names for names.
entry com.example.Writer "Writer" "$root/bin/recorder"
entry org.example.Paint "Paint" "$root/bin/recorder"
entry net.example.Paint "PAINT" "$root/bin/recorder"
entry com.example.Viewer "Ｖｉｅｗｅｒ" "$root/bin/recorder"
entry "not an id" "Odd" "$root/bin/recorder"
check_app() {
  answer=$("$probe" app "$1")
  [ "$answer" = "$2" ] || fail "app '$1' gave '$answer', not '$2'"
}
check_app "writer" "one com.example.Writer"
check_app "com.example.Writer" "one com.example.Writer"
check_app "Paint" "several"
check_app "viewer" "one com.example.Viewer"
check_app "Odd" "none"
check_app "Nothing Here" "none"
check_app "com.example.Missing" "none"

[ $failures -eq 0 ] || exit 1
echo "desktop hand-over: all checks passed"
