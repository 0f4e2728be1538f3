#!/usr/bin/env bash
# Measures the built tool as a user runs it, side by side with the tools
# people compare it with: listing a 16 MiB layers file against jq and
# Python's json module on the same file, and start-up against `jq -n 1`.
# Prints the median and mean time (hyperfine) and the peak resident memory
# (/usr/bin/time) of each command, then how the tool stands against its
# goals: the listing in a fifth of jq's time and half of Python's with less
# memory than both, and start-up in a fifth of jq's.
#
#   Tools/bench-tool.sh            a Release build of quillon in build-release
set -euo pipefail
cd "$(dirname "$0")/.."

PACKAGES=(jq hyperfine time python3)
./dev setup "${PACKAGES[@]}"

build=build-release
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DQUILLON_TESTS=OFF -DQUILLON_BENCHMARKS=OFF \
  >/dev/null
cmake --build "$build" -j "$(nproc)" --target quillon >&2
quillon=$PWD/$build/quillon

# A throw-away home for the app's files: the layers file, a few themes of
# the user's own, and preferences naming the theme in use.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config
support=$XDG_DATA_HOME/Quillon
mkdir -p "$support/Themes" "$XDG_CONFIG_HOME/Quillon"
layers=$support/Layers.json

python3 - "$layers" "$support/Themes" "$XDG_CONFIG_HOME/Quillon/Preferences.json" <<'PY'
# Layers as the app writes them (pretty, keys sorted), of every action and
# face, with names and texts in several scripts, until the file is just
# under the 16 MiB a layers file may have.
import json, random, sys, uuid

random.seed(7)
limit = 16 * 1024 * 1024
letters = [f"key{c}" for c in "ABCDEFGHIJKLMNOPQRSTUVWXYZ"]
digits = [f"digit{d}" for d in range(10)]
keys = letters + digits + [f"f{n}" for n in range(1, 13)] + [
    "backquote", "minus", "equal", "bracketLeft", "bracketRight", "semicolon", "quote",
    "comma", "period", "slash", "arrowLeft", "arrowRight", "arrowUp", "arrowDown"]
modifiers = ["control", "option", "shift", "command"]
apps = ["com.apple.Safari", "com.apple.mail", "com.apple.Music", "com.apple.Notes",
        "com.microsoft.VSCode", "org.mozilla.firefox", "com.tinyspeck.slackmacgap"]
words = ["Kind regards", "Thank you!", "Grüße aus Köln", "東京タワー", "Привет, мир",
         "café ☕", "→ next", "λx. x", "Meeting at 10:30", "🙂 see you"]
symbols = ["star.fill", "bolt", "arrow.left", "1.circle", "heart.fill", "gear"]

weights = {"control": 0, "option": 3, "shift": 6, "command": 9, "fn": 12}
sides = {"left": 0, "right": 1, "either": 2}

def trigger(i):
    parts = []
    for m in random.sample(modifiers, random.randint(1, 3)):
        parts.append({"modifier": m, "side": random.choice(list(sides))})
    if i % 17 == 0:
        parts.append({"modifier": "fn", "side": "either"})
    # In the order the app writes them.
    parts.sort(key=lambda part: weights[part["modifier"]] + sides[part["side"]])
    return {"parts": parts}

def key(i):
    kind = i % 4
    if kind == 0:
        action = {"type": "typeText", "text": random.choice(words)}
    elif kind == 1:
        app = random.choice(apps)
        action = {"type": "openApp", "bundleID": app, "name": app.split(".")[-1]}
    elif kind == 2:
        action = {"type": "sendShortcut", "key": random.choice(letters),
                  "modifiers": sorted(random.sample(modifiers, 2))}
    else:
        action = {"type": "showSymbol", "name": random.choice(symbols), "caption": "Go"}
    entry = {"action": action}
    if i % 3 == 0:
        entry["display"] = {"type": "label", "text": random.choice(words)[:12]}
    elif i % 5 == 0:
        entry["display"] = {"type": "symbol", "symbol": random.choice(symbols)}
    if i % 7 == 0:
        entry["caption"] = "Hold"
    return entry

def layer(i):
    chosen = random.sample(keys, random.randint(8, 30))
    result = {
        "id": str(uuid.UUID(int=random.getrandbits(128), version=4)),
        "name": f"{random.choice(words)} {i}",
        "enabled": i % 3 != 0,
        "kind": "custom",
        "trigger": trigger(i),
        "holdDelay": round(random.uniform(0, 1), 2),
        "appScope": random.choice(apps) if i % 4 == 0 else None,
        "keys": {k: key(i + n) for n, k in enumerate(chosen)},
    }
    if i % 6 == 0:  # a fill is written only when the layer sets one
        result["fill"] = random.choice(["visible", "dimmed", "blank"])
    return result

def text(layers):
    return json.dumps({"version": 1, "layers": layers}, indent=2, sort_keys=True,
                      ensure_ascii=False)

# Each layer's own text, indented by two levels inside the file, and the
# ",\n" between layers.
layers, size = [], 64
while True:
    candidate = layer(len(layers))
    own = json.dumps(candidate, indent=2, sort_keys=True, ensure_ascii=False)
    size += len(own.encode()) + 4 * (own.count("\n") + 1) + 2
    if size > limit:
        break
    layers.append(candidate)
data = text(layers).encode()
while len(data) > limit:
    layers = layers[:-max(1, (len(data) - limit) // 3000)]
    data = text(layers).encode()
open(sys.argv[1], "wb").write(data)
print(f"{len(layers)} layers, {len(data)} bytes", file=sys.stderr)

for n in range(12):
    theme = {"version": 1, "id": f"mine-{n}", "name": f"Mine {n}", "family": "Custom",
             "caps": {"gap": 2 + n % 5}, "plate": {"fill": "#20242a"}}
    open(f"{sys.argv[2]}/Mine {n}.quillontheme", "w").write(json.dumps(theme, indent=2))
json.dump({"overlay.v1": {"themeID": "mine-3"}}, open(sys.argv[3], "w"))
PY

# The commands compared, in the order they are printed, each with its name.
names=(
  "quillon layers list --json"
  "quillon layers list"
  "jq '.layers | length'"
  "python3 json.load"
  "quillon version"
  "quillon themes list"
  "jq -n 1"
)
commands=(
  "$quillon layers list --json"
  "$quillon layers list"
  "jq '.layers | length' $layers"
  "python3 -c 'import json, sys; print(len(json.load(open(sys.argv[1]))[\"layers\"]))' $layers"
  "$quillon version"
  "$quillon themes list"
  "jq -n 1"
)

# Every command must work before it is timed.
for command in "${commands[@]}"; do
  bash -c "$command" >/dev/null
done

median=() mean=() stddev=() cpu=() peak=()
for i in "${!commands[@]}"; do
  command=${commands[$i]}
  hyperfine -N --warmup 3 --min-runs 20 --export-json "$work/run.json" "$command" >/dev/null 2>&1 ||
    hyperfine --warmup 3 --min-runs 20 --export-json "$work/run.json" "$command" >/dev/null
  read -r "median[$i]" "mean[$i]" "stddev[$i]" "cpu[$i]" < <(python3 -c '
import json, sys
r = json.load(open(sys.argv[1]))["results"][0]
print("%.2f %.2f %.2f %.2f" % (r["median"] * 1000, r["mean"] * 1000, r["stddev"] * 1000,
                              (r["user"] + r["system"]) * 1000))' "$work/run.json")
  # The least of five runs: what the command needs, without the noise of a busy machine.
  best=
  for _ in 1 2 3 4 5; do
    kib=$(/usr/bin/time -f %M bash -c "exec $command" 2>&1 >/dev/null | tail -1)
    [[ -z $best || $kib -lt $best ]] && best=$kib
  done
  peak[$i]=$best
done

printf '\nlayers file: %s bytes\n\n' "$(stat -c %s "$layers")"
printf '%-28s %12s %10s %8s %10s %12s\n' command "median (ms)" "mean (ms)" "± (ms)" "CPU (ms)" \
  "peak (KiB)"
for i in "${!names[@]}"; do
  printf '%-28s %12s %10s %8s %10s %12s\n' "${names[$i]}" "${median[$i]}" "${mean[$i]}" \
    "${stddev[$i]}" "${cpu[$i]}" "${peak[$i]}"
done

verdict() {  # verdict TEXT CONDITION
  if python3 -c "import sys; sys.exit(0 if ($2) else 1)"; then echo "met     $1"; else echo "missed  $1"; fi
}
# A time goal is judged on the median (what a run typically takes; a shared
# machine adds the odd slow run) and on the mean.
timeVerdict() {  # timeVerdict TEXT INDEX FACTOR OTHER
  verdict "$1 (median)" "${median[$2]} * $3 <= ${median[$4]}"
  verdict "$1 (mean)" "${mean[$2]} * $3 <= ${mean[$4]}"
}
# Indexes into the arrays above.
jq=2 python=3 version=4 jqStart=6
printf '\n'
for listing in 0 1; do
  p=${peak[$listing]} name=${names[$listing]}
  timeVerdict "$name: time at most 1/5 of jq's" "$listing" 5 "$jq"
  timeVerdict "$name: time at most 1/2 of Python's" "$listing" 2 "$python"
  verdict "$name: peak memory below jq's and Python's" \
    "$p < ${peak[$jq]} and $p < ${peak[$python]}"
done
timeVerdict "quillon version: time at most 1/5 of jq -n 1's" "$version" 5 "$jqStart"
