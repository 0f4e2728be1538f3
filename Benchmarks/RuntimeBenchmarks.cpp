// The app's keyboard event path and the backlight wave: the layer gate must
// decide each event fast and without touching the heap, since it runs on
// every key press in the app; the wave runs on every key press under a
// `wave` backlight.
//
// The counters report heap allocations per event (AllocationCount.h).
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "AllocationCount.h"
#include "CorvelCore/Keyboard/KeyboardGeometry.h"
#include "CorvelCore/Layers/LayerGate.h"
#include "CorvelCore/Theme/BacklightWave.h"

namespace corvel {
namespace {

constexpr std::uint64_t ms = 1'000'000;

// System modifier flags.
constexpr std::uint64_t rightCommand = 0x100000 | 0x10;
constexpr std::uint64_t leftCommand = 0x100000 | 0x8;
constexpr std::uint64_t rightShift = 0x20000 | 0x4;
constexpr std::uint64_t leftControl = 0x40000 | 0x1;
constexpr std::uint64_t leftOption = 0x80000 | 0x20;
constexpr std::uint64_t fnFlag = 0x800000;

// Mac key codes of the letters and digits, and the left arrow.
constexpr std::uint16_t letterCodes[] = {0x00, 0x0B, 0x08, 0x02, 0x0E, 0x03, 0x05, 0x04, 0x22,
                                         0x26, 0x28, 0x25, 0x2E, 0x2D, 0x1F, 0x23, 0x0C, 0x0F,
                                         0x01, 0x11, 0x20, 0x09, 0x0D, 0x07, 0x10, 0x06};
constexpr std::uint16_t arrowLeft = 0x7B;

// A small deterministic generator, so every run sees the same stream.
struct Random {
  std::uint64_t state = 0x2545F4914F6CDD1Dull;
  std::uint32_t next(std::uint32_t bound) {
    state = state * 6364136223846793005ull + 1442695040888963407ull;
    return static_cast<std::uint32_t>((state >> 33) % bound);
  }
};

// 64 layers on chords of two or three modifiers with mixed sides, each
// assigning a dozen keys; the first is the right command with right shift
// layer the stream below uses.
std::vector<LayerRoute> sixtyFourRoutes() {
  std::vector<LayerRoute> routes;
  Random random;
  for (std::uint8_t i = 0; i < 64; ++i) {
    LayerRoute route;
    route.id = UUID({i, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, i});
    std::vector<TriggerPart> parts;
    if (i == 0) {
      parts = {{TriggerModifier::command, Side::right}, {TriggerModifier::shift, Side::right}};
    } else {
      const std::uint32_t count = 2 + random.next(2);
      for (std::uint32_t p = 0; p < count; ++p) {
        parts.emplace_back(static_cast<TriggerModifier>(random.next(5)),
                           static_cast<Side>(random.next(3)));
      }
    }
    route.trigger = LayerTrigger(parts);
    route.holdDelay = 0.2;
    for (int k = 0; k < 12; ++k) route.keyCodes.insert(letterCodes[random.next(26)]);
    route.keyCodes.insert(arrowLeft);
    routes.push_back(std::move(route));
  }
  return routes;
}

struct Event {
  std::uint32_t type;
  std::uint16_t code;
  std::uint64_t flags;
  bool repeat;
  std::uint64_t at;  // nanoseconds from the stream's start
};

// A stream of what hands do: plain typing, shortcuts, layer use, a chord
// spoiled by an early key, auto-repeat, and arrows (which carry the function
// flag by themselves).
struct Stream {
  std::vector<Event> events;
  std::uint64_t length = 0;  // nanoseconds the stream lasts
};

Stream handsAtWork() {
  Stream stream;
  Random random;
  std::uint64_t t = 0;
  auto add = [&](std::uint32_t type, std::uint16_t code, std::uint64_t flags, std::uint64_t after,
                 bool repeat = false) {
    t += after;
    stream.events.push_back({type, code, flags, repeat, t});
  };
  auto tap = [&](std::uint16_t code, std::uint64_t flags) {
    add(LayerGate::keyDown, code, flags, 80 * ms);
    add(LayerGate::keyUp, code, flags, 40 * ms);
  };
  auto letter = [&] { return letterCodes[random.next(26)]; };
  while (stream.events.size() < 4000) {
    switch (random.next(6)) {
      case 0:
      case 1:  // typing
        for (int i = 0; i < 8; ++i) tap(letter(), 0);
        break;
      case 2:  // a shortcut
        add(LayerGate::flagsChanged, 0, leftCommand, 100 * ms);
        tap(letter(), leftCommand);
        add(LayerGate::flagsChanged, 0, 0, 60 * ms);
        break;
      case 3:  // a layer held long enough, three of its keys
        add(LayerGate::flagsChanged, 0, rightCommand, 100 * ms);
        add(LayerGate::flagsChanged, 0, rightCommand | rightShift, 30 * ms);
        add(LayerGate::keyDown, 0x00, rightCommand | rightShift, 300 * ms);
        add(LayerGate::keyUp, 0x00, rightCommand | rightShift, 50 * ms);
        tap(letter(), rightCommand | rightShift);
        tap(arrowLeft, rightCommand | rightShift | fnFlag);
        add(LayerGate::flagsChanged, 0, rightCommand, 60 * ms);
        add(LayerGate::flagsChanged, 0, 0, 30 * ms);
        break;
      case 4:  // a chord spoiled by an early key, then auto-repeat
        add(LayerGate::flagsChanged, 0, leftControl, 100 * ms);
        add(LayerGate::flagsChanged, 0, leftControl | leftOption, 20 * ms);
        tap(letter(), leftControl | leftOption);
        add(LayerGate::flagsChanged, 0, 0, 60 * ms);
        add(LayerGate::keyDown, 0x0E, 0, 100 * ms);
        for (int i = 0; i < 8; ++i) add(LayerGate::keyDown, 0x0E, 0, 33 * ms, true);
        add(LayerGate::keyUp, 0x0E, 0, 20 * ms);
        break;
      default:  // arrows
        for (int i = 0; i < 4; ++i) tap(arrowLeft, fnFlag);
        break;
    }
  }
  stream.length = t + 100 * ms;
  return stream;
}

void layerGateDecide(benchmark::State& state) {
  const std::vector<LayerRoute> routes = sixtyFourRoutes();
  const Stream stream = handsAtWork();
  LayerGate gate(routes, 0x51554C4E);
  std::uint64_t offset = 0;
  std::size_t next = 0;
  std::uint64_t ran = 0;
  auto feed = [&] {
    const Event& e = stream.events[next];
    const GateDecision decision = gate.decide(e.type, e.code, e.flags, e.repeat, offset + e.at, 0);
    ran += decision.isRun() ? 1 : 0;
    benchmark::DoNotOptimize(decision);
    if (++next == stream.events.size()) {
      next = 0;
      offset += stream.length;
    }
  };
  // Warm up over the whole stream once.
  for (std::size_t i = 0; i < stream.events.size(); ++i) feed();
  ran = 0;

  const std::uint64_t allocationsBefore = allocationCount();
  for (auto _ : state) feed();
  const std::uint64_t allocations = allocationCount() - allocationsBefore;
  state.counters["allocs/event"] =
      benchmark::Counter(static_cast<double>(allocations), benchmark::Counter::kAvgIterations);
  // The share of events a layer ran, to show the stream exercises the layers.
  state.counters["runShare"] =
      benchmark::Counter(static_cast<double>(ran), benchmark::Counter::kAvgIterations);
}
BENCHMARK(layerGateDecide)->Repetitions(9)->ReportAggregatesOnly(true);

void backlightWaveOnANSI(benchmark::State& state) {
  const KeyboardGeometry& geometry = KeyboardGeometry::macBookANSI();
  const auto caps = geometry.caps();
  std::size_t next = 0;
  std::size_t lit = 0;
  const std::uint64_t allocationsBefore = allocationCount();
  for (auto _ : state) {
    const auto steps = BacklightWave::neighbours(caps[next].key, geometry);
    lit += steps.size();
    benchmark::DoNotOptimize(steps.data());
    next = (next + 1) % caps.size();
  }
  // A call allocates its working list and its result.
  state.counters["allocs/key"] =
      benchmark::Counter(static_cast<double>(allocationCount() - allocationsBefore),
                         benchmark::Counter::kAvgIterations);
  state.counters["keysLit"] =
      benchmark::Counter(static_cast<double>(lit), benchmark::Counter::kAvgIterations);
}
BENCHMARK(backlightWaveOnANSI)->Repetitions(5)->ReportAggregatesOnly(true);

}  // namespace
}  // namespace corvel
