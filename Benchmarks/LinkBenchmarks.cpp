// How fast a typical show command goes to its link and back: the tool does
// this once per command, the app once per link it receives. The round trip
// also reports its heap allocations.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "AllocationCount.h"
#include "CorvelCore/Automation/AutomationParser.h"

namespace corvel {
namespace {

AutomationCommand typicalShow() {
  ShowOptions options;
  options.position = PositionRequest::named(NamedPosition::bottom);
  options.width = 900;
  options.hideAfterMS = 4000;
  TemporaryLayerSpec layer{"Navigation",
                           {{"h", KeyAssignment::symbol("arrow.left")},
                            {"j", KeyAssignment::text("Down")},
                            {"k", KeyAssignment::symbolText("arrow.up", "Up & away")},
                            {"s", KeyAssignment::app("com.apple.Safari")}}};
  return AutomationCommand::show(options, layer);
}

void BM_ShowLinkRoundTrip(benchmark::State& state) {
  const AutomationCommand command = typicalShow();
  const std::uint64_t allocationsBefore = allocationCount();
  for (auto _ : state) {
    std::string link = command.link();
    auto parsed = AutomationParser::parse(link);
    benchmark::DoNotOptimize(parsed);
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["allocs"] =
      benchmark::Counter(static_cast<double>(allocationCount() - allocationsBefore),
                         benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_ShowLinkRoundTrip);

void BM_ShowLinkBuild(benchmark::State& state) {
  const AutomationCommand command = typicalShow();
  for (auto _ : state) benchmark::DoNotOptimize(command.link());
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ShowLinkBuild);

void BM_ShowLinkParse(benchmark::State& state) {
  const std::string link = typicalShow().link();
  for (auto _ : state) benchmark::DoNotOptimize(AutomationParser::parse(link));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ShowLinkParse);

}  // namespace
}  // namespace corvel
