#include <benchmark/benchmark.h>

#include <vector>

#include "CorvelCore/Automation/TriggerText.h"
#include "CorvelCore/Faces/LayerTrigger.h"

namespace corvel {
namespace {

std::vector<LayerTrigger> sampleTriggers() {
  std::vector<LayerTrigger> triggers;
  for (const char* text : {"cmd-shift", "rcmd-rshift", "ctrl-opt", "hyper", "lcmd", "fn-ctrl",
                           "ropt", "rcmd-rshift-ropt"}) {
    if (auto trigger = TriggerText::parse(text)) triggers.push_back(*trigger);
  }
  return triggers;
}

// What the event path does on every modifier change: flags to mask, then the winner.
void winnerFromDeviceFlags(benchmark::State& state) {
  const std::vector<LayerTrigger> triggers = sampleTriggers();
  const std::uint64_t flags = 0x100000 | 0x20000 | 0x10 | 0x4;  // right command and right shift
  for (auto _ : state) {
    benchmark::DoNotOptimize(LayerTrigger::winner(triggers, LayerTrigger::mask(flags)));
  }
}
BENCHMARK(winnerFromDeviceFlags);

void winnerFromHeldKeys(benchmark::State& state) {
  const std::vector<LayerTrigger> triggers = sampleTriggers();
  const KeySet held{KeyID::commandRight, KeyID::shiftRight, KeyID::keyK};
  for (auto _ : state) benchmark::DoNotOptimize(LayerTrigger::winner(triggers, held));
}
BENCHMARK(winnerFromHeldKeys);

void parseTriggerText(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(TriggerText::parse("RCmd+RShift"));
}
BENCHMARK(parseTriggerText);

}  // namespace
}  // namespace corvel
