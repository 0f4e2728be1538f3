#!/usr/bin/env bash
# Builds the fuzz targets (Fuzz/*Fuzzer.cpp) with Clang, libFuzzer and the
# sanitizers, and runs each in turn for a bounded time. Any crash, leak,
# broken property, slow input (over 10 s) or memory blow-up (over 2 GiB)
# fails the run; the input that did it is kept in build-fuzz/artifacts/.
#
#   Tools/fuzz.sh [SECONDS] [TARGET...]   default: 60 seconds each, every target
#
# FUZZ_SEED and FUZZ_RUNS make a run repeatable: the same seed, the same
# number of inputs and an empty corpus give the same inputs on every machine
# (SECONDS then only guards against a slow one).
#
# New inputs found go to build-fuzz/corpus/TARGET (the seeds in Fuzz/corpus
# stay as they are). A found input becomes a case of the regression tests.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true

# Clang 16 and its fuzzing runtime, on top of what every build needs.
PACKAGES=(clang-16 libclang-rt-16-dev libfuzzer-16-dev)
./dev setup "${PACKAGES[@]}"

targets=("$@")
if ((${#targets[@]} == 0)); then
  for source in Fuzz/*Fuzzer.cpp; do targets+=("$(basename "$source" .cpp)"); done
fi

build=build-fuzz
cmake -S . -B "$build" -DCMAKE_CXX_COMPILER=clang++-16 -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DQUILLON_FUZZ=ON -DQUILLON_TESTS=OFF -DQUILLON_BENCHMARKS=OFF \
  -DQUILLON_WERROR="${QUILLON_WERROR:-OFF}" >/dev/null
cmake --build "$build" -j "$(nproc)" --target "${targets[@]}" >&2

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

failed=()
for target in "${targets[@]}"; do
  corpus=$build/corpus/$target
  artifacts=$build/artifacts/$target
  log=$build/logs/$target.log
  mkdir -p "$corpus" "$artifacts" "$(dirname "$log")"
  dict=()
  [[ -f Fuzz/$target.dict ]] && dict=(-dict="Fuzz/$target.dict")
  [[ -n ${FUZZ_SEED:-} ]] && dict+=(-seed="$FUZZ_SEED")
  [[ -n ${FUZZ_RUNS:-} ]] && dict+=(-runs="$FUZZ_RUNS")
  echo "== $target: $seconds s" >&2
  if "$build/$target" "$corpus" "Fuzz/corpus/$target" "${dict[@]}" \
      -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
      -artifact_prefix="$artifacts/" -print_final_stats=1 >"$log" 2>&1; then
    grep -E '^(Done|stat::number_of_executed_units)' "$log" | tail -1 >&2 || true
  else
    echo "!! $target failed; the end of $log:" >&2
    tail -40 "$log" >&2
    ls "$artifacts" >&2
    failed+=("$target")
  fi
done

if ((${#failed[@]} > 0)); then
  echo "fuzz: ${#targets[@]} targets, ${#failed[@]} failed: ${failed[*]}"
  exit 1
fi
echo "fuzz: ${#targets[@]} targets, each ${seconds} s, no crash, leak or hang"
