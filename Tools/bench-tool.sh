#!/usr/bin/env bash
# Measures the built tool as a user runs it, side by side with what it is held
# against, and says for each goal whether it is met:
#
#   1. start-up: `quillon version`, `help` and `themes list` within 1.5 times
#      a C++ hello world built by the same compiler with the same flags
#      (Benchmarks/Floors/HelloWorld.cpp), medians of alternating runs;
#   2. listing a layers file of just under 16 MiB (`layers list`, text and
#      JSON) in at most 0.15 times Python's json.load of the file and within
#      3 times a plain simdjson parse of it (Benchmarks/Floors/LayersFloor.cpp),
#      with a peak resident memory of at most twice the file's size;
#   3. JSON text to JSONValue at 500 MB/s or more and a link built and parsed
#      1,000,000 times a second or more (Google Benchmark, CorvelBenchmarks,
#      each benchmark in a process of its own, median of 9 repetitions).
#
# Also shown, without a goal: jq on the same file and `jq -n 1`, /bin/true,
# the hello world linked statically and a C hello world, and the hand-over of
# `quillon show` to a registered (throw-away) handler.
#
# The commands of each group run in turn, round after round, so that a busy
# moment of a shared machine falls on all of them alike; the median of each
# is judged. The machine and what else was running are printed with the
# figures.
#
#   Tools/bench-tool.sh      a Release build in build-release
#   STARTUP_ROUNDS, LISTING_ROUNDS (default 41 and 9) change the rounds.
set -euo pipefail
cd "$(dirname "$0")/.."

PACKAGES=(jq time python3 libbenchmark-dev)
./dev setup "${PACKAGES[@]}"

startupRounds=${STARTUP_ROUNDS:-41}
listingRounds=${LISTING_ROUNDS:-9}
benchmarkRepetitions=9
((startupRounds >= 31 && listingRounds >= 7)) || {
  echo "at least 31 start-up rounds and 7 listing rounds" >&2
  exit 1
}

build=build-release
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DQUILLON_TESTS=OFF -DQUILLON_BENCHMARKS=ON \
  >/dev/null
cmake --build "$build" -j "$(nproc)" \
  --target quillon hello-world layers-floor CorvelBenchmarks >&2
quillon=$PWD/$build/quillon
hello=$PWD/$build/hello-world
floor=$PWD/$build/layers-floor

# A throw-away home for the app's files: the layers file, a few themes of
# the user's own, preferences naming the theme in use, and a desktop whose
# handler of quillon:// links is a program that does nothing.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config \
  XDG_DATA_DIRS=$work/system-data XDG_CONFIG_DIRS=$work/system-config \
  XDG_RUNTIME_DIR=$work/runtime
unset XDG_CURRENT_DESKTOP DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
support=$XDG_DATA_HOME/Quillon
mkdir -p "$support/Themes" "$XDG_CONFIG_HOME/Quillon" "$XDG_DATA_HOME/applications" \
  "$XDG_DATA_DIRS" "$XDG_CONFIG_DIRS"
mkdir -m 700 "$XDG_RUNTIME_DIR"
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

cat >"$work/handler" <<'SH'
#!/bin/sh
exit 0
SH
chmod +x "$work/handler"
cat >"$XDG_DATA_HOME/applications/app.quillon.Quillon.desktop" <<DESKTOP
[Desktop Entry]
Type=Application
Name=Quillon
Exec=$work/handler %u
NoDisplay=true
MimeType=x-scheme-handler/quillon;
DESKTOP
cat >"$XDG_CONFIG_HOME/mimeapps.list" <<LIST
[Default Applications]
x-scheme-handler/quillon=app.quillon.Quillon.desktop
LIST

# Hello worlds for comparison only: the same program linked statically with
# the C++ runtime, and one in C that needs no C++ runtime at all.
c++ -O3 -DNDEBUG -std=c++23 Benchmarks/Floors/HelloWorld.cpp -static-libstdc++ -static-libgcc \
  -o "$work/hello-static"
printf '#include <stdio.h>\nint main(void) { puts("Hello, world!"); return 0; }\n' >"$work/hello.c"
cc -O3 -DNDEBUG "$work/hello.c" -o "$work/hello-c"
# The interpreter itself, not a version manager's wrapper script around it.
python=$(python3 -c 'import sys; print(sys.executable)')

# Every command must work before it is timed.
"$quillon" layers list --json >/dev/null
"$quillon" show --position bottom >/dev/null

# The machine, and what else was running when the runs began.
describe() {
  echo "machine: $(lscpu | sed -n 's/^Model name: *//p' | head -1), $(nproc) cores," \
    "$(awk '/MemTotal/ {printf "%.1f GiB", $2 / 1048576}' /proc/meminfo), $(uname -sr)"
  echo "compiler: $(c++ --version | head -1); python: $("$python" --version 2>&1);" \
    "$(jq --version)"
  echo "at $1: load average $(cut -d' ' -f1-3 /proc/loadavg); CPU pressure (share of time" \
    "something waited for a CPU, last 10 s, 60 s, 300 s):" \
    "$(sed -n 's/^some avg10=\([^ ]*\) avg60=\([^ ]*\) avg300=\([^ ]*\).*/\1% \2% \3%/p' \
      /proc/pressure/cpu 2>/dev/null || echo unknown)"
  echo "busiest processes visible at $1 (%CPU now, command):"
  top -b -n 1 -o %CPU | awk 'NR > 7 && $NF != "top" {print "  " $9 "  " $NF}' | head -5
}
describe start >"$work/machine"

# runs ROUNDS NAME=COMMAND...: runs the commands in turn, ROUNDS rounds after
# two warm-up rounds, and prints one JSON object per command: median, mean
# and least wall time and median CPU time (ms), and the peak resident memory
# (KiB), the largest of three runs under /usr/bin/time: a process started
# by this large Python is charged with Python's own memory.
runs() {
  python3 - "$@" <<'PY'
import json, os, shlex, statistics, sys, time

rounds = int(sys.argv[1])
named = [argument.split("=", 1) for argument in sys.argv[2:]]
devnull = os.open(os.devnull, os.O_WRONLY)
times = {name: [] for name, _ in named}
cpu = {name: [] for name, _ in named}
peak = {name: 0 for name, _ in named}
for round in range(rounds + 2):
    for name, command in named:
        words = shlex.split(command)
        start = time.perf_counter()
        pid = os.posix_spawnp(words[0], words, os.environ,
                              file_actions=[(os.POSIX_SPAWN_DUP2, devnull, 1)])
        _, status, usage = os.wait4(pid, 0)
        elapsed = time.perf_counter() - start
        if status != 0:
            sys.exit(f"{name} failed with status {status}")
        if round < 2:
            continue
        times[name].append(elapsed * 1000)
        cpu[name].append((usage.ru_utime + usage.ru_stime) * 1000)
for name, command in named:
    for _ in range(3):
        out = os.popen(f"/usr/bin/time -f %M {command} 2>&1 >/dev/null").read().split()
        peak[name] = max(peak[name], int(out[-1]))
for name, _ in named:
    print(json.dumps({"name": name, "median": statistics.median(times[name]),
                      "mean": statistics.mean(times[name]), "least": min(times[name]),
                      "cpu": statistics.median(cpu[name]), "peak": peak[name]}))
PY
}

echo "start-up: $startupRounds alternating rounds" >&2
runs "$startupRounds" \
  "hello world=$hello" \
  "quillon version=$quillon version" \
  "quillon help=$quillon help" \
  "quillon themes list=$quillon themes list" \
  "hello world, static=$work/hello-static" \
  "C hello world=$work/hello-c" \
  "/bin/true=/bin/true" \
  "jq -n 1=jq -n 1" >"$work/startup.json"

echo "hand-over: $startupRounds alternating rounds" >&2
runs "$startupRounds" \
  "quillon version=$quillon version" \
  "quillon show (hand-over)=$quillon show --position bottom" >"$work/handover.json"

echo "listing: $listingRounds alternating rounds" >&2
runs "$listingRounds" \
  "quillon layers list --json=$quillon layers list --json" \
  "quillon layers list=$quillon layers list" \
  "simdjson floor=$floor $layers" \
  "python3 json.load=$python -c 'import json, sys; print(len(json.load(open(sys.argv[1]))[\"layers\"]))' $layers" \
  "jq '.layers | length'=jq '.layers | length' $layers" >"$work/listing.json"

# Each in a process of its own, as the tool parses a link or reads a file in
# a fresh process: the heap that decoding 16 MiB leaves behind would shape
# the figures of whatever ran after it.
echo "Google Benchmark: JSON decoding and the link round trip" >&2
for benchmark in DecodeLayersDocument ParseLayersFileJSON ShowLinkRoundTrip; do
  "$build/CorvelBenchmarks" --benchmark_filter="^BM_$benchmark\$" \
    --benchmark_repetitions="$benchmarkRepetitions" --benchmark_report_aggregates_only=true \
    --benchmark_format=json >"$work/benchmark-$benchmark.json" 2>/dev/null
done

describe end >>"$work/machine"

python3 - "$work" "$(stat -c %s "$layers")" "$benchmarkRepetitions" <<'PY'
import json, sys

work, fileBytes, repetitions = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])

def load(name):
    return {r["name"]: r for r in map(json.loads, open(f"{work}/{name}.json"))}

startup, handover, listing = load("startup"), load("handover"), load("listing")
print()
print(open(f"{work}/machine").read().rstrip())
print(f"layers file: {fileBytes} bytes ({fileBytes / 1048576:.2f} MiB)")

def table(title, rows):
    print(f"\n{title}")
    print(f"  {'command':34} {'median':>9} {'mean':>9} {'least':>9} {'CPU':>9} {'peak':>10}")
    print(f"  {'':34} {'(ms)':>9} {'(ms)':>9} {'(ms)':>9} {'(ms)':>9} {'(KiB)':>10}")
    for r in rows.values():
        print(f"  {r['name']:34} {r['median']:9.2f} {r['mean']:9.2f} {r['least']:9.2f}"
              f" {r['cpu']:9.2f} {r['peak']:10d}")

table("Start-up (alternating runs)", startup)
table("Hand-over to a registered handler (alternating runs)", handover)
table("Listing the layers file (alternating runs)", listing)

benchmarks = {b["run_name"]: b
              for name in ["DecodeLayersDocument", "ParseLayersFileJSON", "ShowLinkRoundTrip"]
              for b in json.load(open(f"{work}/benchmark-{name}.json"))["benchmarks"]
              if b.get("aggregate_name") == "median"}
print(f"\nGoogle Benchmark (median of {repetitions} repetitions)")
for name, b in benchmarks.items():
    if "bytes_per_second" in b:
        print(f"  {name:34} {b['bytes_per_second'] / 1e6:9.1f} MB/s")
    else:
        print(f"  {name:34} {b['items_per_second']:9.0f} /s")

verdicts = []
def verdict(met, text):
    verdicts.append(met)
    print(f"{'met   ' if met else 'missed'}  {text}")

print()
hello = startup["hello world"]["median"]
for name in ["quillon version", "quillon help", "quillon themes list"]:
    ratio = startup[name]["median"] / hello
    verdict(ratio <= 1.5, f"goal 1: {name} in {ratio:.2f} times the C++ hello world (at most 1.5)")
python, floor = listing["python3 json.load"]["median"], listing["simdjson floor"]["median"]
for name in ["quillon layers list --json", "quillon layers list"]:
    r = listing[name]
    verdict(r["median"] <= 0.15 * python,
            f"goal 2: {name} in {r['median'] / python:.3f} times Python's json.load (at most 0.15)")
    verdict(r["median"] <= 3 * floor,
            f"goal 2: {name} in {r['median'] / floor:.2f} times the simdjson floor (at most 3)")
    verdict(r["peak"] * 1024 <= 2 * fileBytes,
            f"goal 2: {name} peaks at {r['peak'] * 1024 / fileBytes:.2f} times the file's size"
            " (at most 2)")
for name in ["BM_DecodeLayersDocument", "BM_ParseLayersFileJSON"]:
    rate = benchmarks[name]["bytes_per_second"] / 1e6
    verdict(rate >= 500, f"goal 3: JSON text to JSONValue ({name}) at {rate:.0f} MB/s"
            " (at least 500)")
rate = benchmarks["BM_ShowLinkRoundTrip"]["items_per_second"]
verdict(rate >= 1e6, f"goal 3: link build and parse at {rate:,.0f}/s (at least 1,000,000)")
shown = handover["quillon show (hand-over)"]["median"]
print(f"info    goal 4: quillon show hands over in {shown:.2f} ms"
      f" ({shown - handover['quillon version']['median']:.2f} ms more than quillon version)")
print(f"\n{sum(verdicts)} of {len(verdicts)} goal figures met")
PY
