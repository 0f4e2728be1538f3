#include <benchmark/benchmark.h>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Shortcuts/KeySpec.h"

namespace corvel {
namespace {

void parseTwoStepShortcut(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(KeySpec::parse("Ctrl+Shift+K cmd+pagedown"));
}
BENCHMARK(parseTwoStepShortcut);

void keyFromMacCode(benchmark::State& state) {
  std::uint16_t code = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(keyIDForMacCode(code));
    code = static_cast<std::uint16_t>((code + 1) & 0x7F);
  }
}
BENCHMARK(keyFromMacCode);

}  // namespace
}  // namespace corvel
