#include "CorvelCore/Layers/LayerGate.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

// System modifier flags, general bit with the key's side bit.
constexpr std::uint64_t rightCommand = 0x100000 | 0x10;
constexpr std::uint64_t leftCommand = 0x100000 | 0x8;
constexpr std::uint64_t rightShift = 0x20000 | 0x4;
constexpr std::uint64_t leftShift = 0x20000 | 0x2;
constexpr std::uint64_t leftControl = 0x40000 | 0x1;
constexpr std::uint64_t fnFlag = 0x800000;

// Mac key codes.
constexpr std::uint16_t codeA = 0x00;
constexpr std::uint16_t codeS = 0x01;
constexpr std::uint16_t codeJ = 0x26;
constexpr std::uint16_t codeLeft = 0x7B;
constexpr std::uint16_t codeUnknown = 0x7F;

constexpr std::int64_t ownTag = 0x51554C4E;

UUID layerID(std::uint8_t n) { return UUID({n, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, n}); }

LayerTrigger chord(const std::vector<TriggerPart>& parts) { return LayerTrigger(parts); }

// What one event must come to: run by the layer at `layer`, pass or swallow.
struct Expect {
  enum Kind { run, pass, swallow } kind;
  int layer = 0;
  KeyID key = KeyID::keyA;
};
constexpr Expect passes{Expect::pass};
constexpr Expect swallowed{Expect::swallow};
Expect runs(int layer, KeyID key) { return {Expect::run, layer, key}; }

// One event of the user's hands, with seconds as time.
struct Event {
  std::uint32_t type;
  std::uint16_t code;
  std::uint64_t flags;
  double seconds;
  Expect expect;
  bool repeat = false;
  std::int64_t userData = 0;
};

Event hold(std::uint64_t flags, double t) { return {LayerGate::flagsChanged, 0, flags, t, passes}; }
Event down(std::uint16_t code, std::uint64_t flags, double t, Expect e) {
  return {LayerGate::keyDown, code, flags, t, e};
}
Event repeatDown(std::uint16_t code, std::uint64_t flags, double t, Expect e) {
  return {LayerGate::keyDown, code, flags, t, e, true};
}
Event up(std::uint16_t code, std::uint64_t flags, double t, Expect e) {
  return {LayerGate::keyUp, code, flags, t, e};
}

std::uint64_t nanoseconds(double seconds) { return static_cast<std::uint64_t>(seconds * 1e9); }

void play(LayerGate& gate, const std::vector<LayerRoute>& routes,
          const std::vector<Event>& events) {
  for (std::size_t i = 0; i < events.size(); ++i) {
    SCOPED_TRACE("event " + std::to_string(i));
    const Event& e = events[i];
    const GateDecision decision =
        gate.decide(e.type, e.code, e.flags, e.repeat, nanoseconds(e.seconds), e.userData);
    switch (e.expect.kind) {
      case Expect::run:
        EXPECT_EQ(decision, GateDecision::run(routes[e.expect.layer].id, e.expect.key));
        break;
      case Expect::pass:
        EXPECT_EQ(decision, GateDecision::pass());
        break;
      case Expect::swallow:
        EXPECT_EQ(decision, GateDecision::swallow());
        break;
    }
  }
}

// A layer on right command with right shift, held 0.2 s, assigning A and S.
LayerRoute commandShiftLayer() {
  return {layerID(1),
          chord({{TriggerModifier::command, Side::right}, {TriggerModifier::shift, Side::right}}),
          0.2,
          {codeA, codeS}};
}

TEST(LayerGateTest, OneLayerScenarios) {
  const std::uint64_t chordFlags = rightCommand | rightShift;
  const struct {
    std::string name;
    std::vector<Event> events;
  } cases[] = {
      {"held 0.1 s then a key: an ordinary shortcut, and the chord stays spoiled",
       {hold(rightCommand, 0), hold(chordFlags, 0.01), down(codeA, chordFlags, 0.11, passes),
        up(codeA, chordFlags, 0.15, passes), down(codeA, chordFlags, 0.6, passes),
        up(codeA, chordFlags, 0.65, passes)}},
      {"taking the chord up anew arms it again",
       {hold(chordFlags, 0), down(codeA, chordFlags, 0.1, passes), hold(rightShift, 0.7),
        hold(chordFlags, 0.8), down(codeA, chordFlags, 1.0, runs(0, KeyID::keyA)),
        up(codeA, chordFlags, 1.05, swallowed)}},
      {"held 0.3 s then a layer key: run, and its key-up swallowed",
       {hold(chordFlags, 0), down(codeA, chordFlags, 0.3, runs(0, KeyID::keyA)),
        up(codeA, chordFlags, 0.4, swallowed), down(codeS, chordFlags, 0.5, runs(0, KeyID::keyS)),
        up(codeS, 0, 0.6, swallowed)}},
      {"held exactly the delay arms",
       {hold(chordFlags, 1), down(codeA, chordFlags, 1.2, runs(0, KeyID::keyA)),
        up(codeA, chordFlags, 1.3, swallowed)}},
      {"a key-up more than 5 s later passes; one at exactly 5 s is swallowed",
       {hold(chordFlags, 0), down(codeA, chordFlags, 0.3, runs(0, KeyID::keyA)),
        down(codeS, chordFlags, 0.3, runs(0, KeyID::keyS)), up(codeA, 0, 5.3, swallowed),
        up(codeS, 0, 5.31, passes)}},
      {"a key the layer does not assign passes and leaves the layer armed",
       {hold(chordFlags, 0), down(codeJ, chordFlags, 0.3, passes),
        up(codeJ, chordFlags, 0.35, passes), down(codeA, chordFlags, 0.4, runs(0, KeyID::keyA)),
        up(codeA, 0, 0.5, swallowed)}},
      {"another modifier held too: no match, the key passes",
       {hold(chordFlags | leftControl, 0), down(codeA, chordFlags | leftControl, 0.5, passes)}},
      {"the left keys of a right-sided chord do not arm it",
       {hold(leftCommand | leftShift, 0), down(codeA, leftCommand | leftShift, 0.5, passes)}},
      {"key-downs carry the chord even without a flags event",
       {down(codeA, chordFlags, 0, passes), down(codeS, chordFlags, 0.3, passes)}},
      {"repeats neither arm nor spoil; repeats of a run key are swallowed",
       {hold(chordFlags, 0), down(codeJ, chordFlags, 0.05, passes),
        repeatDown(codeJ, chordFlags, 0.1, passes), hold(rightShift, 0.15), hold(chordFlags, 0.2),
        repeatDown(codeJ, chordFlags, 0.25, passes),
        down(codeA, chordFlags, 0.45, runs(0, KeyID::keyA)),
        repeatDown(codeA, chordFlags, 0.9, swallowed),
        repeatDown(codeA, chordFlags, 5.5, swallowed), up(codeA, chordFlags, 6.0, swallowed)}},
      {"the app's own events pass and leave the hold clean",
       {hold(chordFlags, 0),
        {LayerGate::keyDown, codeA, chordFlags, 0.1, passes, false, ownTag},
        {LayerGate::keyUp, codeA, chordFlags, 0.12, passes, false, ownTag},
        down(codeA, chordFlags, 0.3, runs(0, KeyID::keyA)),
        {LayerGate::keyUp, codeA, chordFlags, 0.35, passes, false, ownTag},
        up(codeA, chordFlags, 0.4, swallowed)}},
      {"unknown key codes and event types pass",
       {hold(chordFlags, 0),
        down(codeUnknown, chordFlags, 0.3, passes),
        {22, codeA, chordFlags, 0.35, passes},
        down(codeA, chordFlags, 0.4, runs(0, KeyID::keyA)),
        up(codeA, chordFlags, 0.5, swallowed)}},
      {"a key-up with no key-down taken passes", {up(codeA, chordFlags, 0.1, passes)}},
  };
  const std::vector<LayerRoute> routes{commandShiftLayer()};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    LayerGate gate(routes, ownTag);
    play(gate, routes, c.events);
    EXPECT_TRUE(gate.swallowed().empty());
  }
}

TEST(LayerGateTest, FunctionFlagOfArrowsIsNotAHeldFn) {
  const std::vector<LayerRoute> routes{
      {layerID(1), chord({{TriggerModifier::fn}}), 0, {codeLeft, codeA}},
      {layerID(2), chord({{TriggerModifier::command, Side::right}}), 0, {codeLeft}},
  };
  const struct {
    std::string name;
    std::vector<Event> events;
  } cases[] = {
      {"an arrow alone carries the function flag: no fn layer",
       {down(codeLeft, fnFlag, 0.5, passes), up(codeLeft, fnFlag, 0.6, passes)}},
      {"an arrow under right command stays with the command layer",
       {hold(rightCommand, 0),
        down(codeLeft, rightCommand | fnFlag, 0.5, runs(1, KeyID::arrowLeft)),
        up(codeLeft, rightCommand | fnFlag, 0.6, swallowed)}},
      {"with fn really held the arrow belongs to the fn layer",
       {hold(fnFlag, 0), down(codeLeft, fnFlag, 0.5, runs(0, KeyID::arrowLeft)),
        up(codeLeft, fnFlag, 0.6, swallowed)}},
      {"fn let go: the flag on an arrow no longer counts",
       {hold(fnFlag, 0), hold(0, 0.2), down(codeLeft, fnFlag, 0.5, passes),
        down(codeA, 0, 0.6, passes)}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    LayerGate gate(routes, ownTag);
    play(gate, routes, c.events);
  }
}

TEST(LayerGateTest, OverlappingChordsTheMoreSpecificWins) {
  const std::vector<LayerRoute> routes{
      {layerID(1), chord({{TriggerModifier::command}, {TriggerModifier::shift}}), 0.2, {codeA}},
      {layerID(2),
       chord({{TriggerModifier::command, Side::right}, {TriggerModifier::shift, Side::right}}),
       0.2,
       {codeA}},
      {layerID(3),
       chord({{TriggerModifier::command, Side::right}, {TriggerModifier::shift, Side::right}}),
       0.2,
       {codeA}},
  };
  const struct {
    std::string name;
    std::vector<Event> events;
  } cases[] = {
      {"right keys: the sided chord wins over either, the earlier of two equals",
       {hold(rightCommand | rightShift, 0),
        down(codeA, rightCommand | rightShift, 0.3, runs(1, KeyID::keyA))}},
      {"left keys: only the general chord matches",
       {hold(leftCommand | leftShift, 0),
        down(codeA, leftCommand | leftShift, 0.3, runs(0, KeyID::keyA))}},
      {"a key pressed too early spoils only the winner",
       {hold(rightCommand | rightShift, 0), down(codeA, rightCommand | rightShift, 0.1, passes),
        down(codeA, rightCommand | rightShift, 0.3, passes)}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    LayerGate gate(routes, ownTag);
    play(gate, routes, c.events);
  }
}

TEST(LayerGateTest, UpdateKeepsTimingAndPendingKeyUps) {
  LayerRoute route = commandShiftLayer();
  std::vector<LayerRoute> routes{route};
  LayerGate gate(routes, ownTag);
  const std::uint64_t flags = rightCommand | rightShift;
  play(gate, routes, {hold(flags, 0), down(codeA, flags, 0.3, runs(0, KeyID::keyA))});

  // The layer gains a key: same layer and chord, so it stays armed.
  route.keyCodes.insert(codeJ);
  routes = {route};
  gate.update(routes);
  EXPECT_EQ(gate.swallowed(), std::vector<std::uint16_t>{codeA});
  play(gate, routes,
       {down(codeJ, flags, 0.4, runs(0, KeyID::keyJ)), up(codeA, flags, 0.5, swallowed)});

  // A new chord starts afresh: nothing is held as far as it knows.
  route.trigger = chord({{TriggerModifier::command, Side::right}});
  routes = {route};
  gate.update(routes);
  play(gate, routes,
       {down(codeA, flags, 0.6, passes), hold(rightCommand, 0.7),
        down(codeA, rightCommand, 0.95, runs(0, KeyID::keyA))});
}

TEST(LayerGateTest, ResetAndReleaseAndFreshKeyDowns) {
  const std::vector<LayerRoute> routes{commandShiftLayer()};
  LayerGate gate(routes, ownTag);
  const std::uint64_t flags = rightCommand | rightShift;
  play(gate, routes,
       {hold(flags, 0), down(codeA, flags, 0.3, runs(0, KeyID::keyA)),
        down(codeS, flags, 0.3, runs(0, KeyID::keyS))});
  EXPECT_EQ(gate.swallowed(), (std::vector<std::uint16_t>{codeA, codeS}));

  gate.reset();
  EXPECT_EQ(gate.holds().held(), 0);
  EXPECT_EQ(gate.holds().active(), std::nullopt);
  gate.release(codeS);
  EXPECT_EQ(gate.swallowed(), std::vector<std::uint16_t>{codeA});
  play(gate, routes, {up(codeS, flags, 0.4, passes)});

  // A's key-up went missing; its next key-down passes (the chord timing
  // restarted with the reset), so its key-up must pass too.
  play(gate, routes, {down(codeA, flags, 0.5, passes), up(codeA, flags, 0.55, passes)});
  EXPECT_TRUE(gate.swallowed().empty());
}

// Past the entries the gate holds without allocating, every key-down it ran
// still has its key-up swallowed, whichever order the keys come up in.
TEST(LayerGateTest, EveryPendingKeyUpIsSwallowedHoweverMany) {
  LayerRoute route = commandShiftLayer();
  std::vector<std::uint16_t> codes;
  for (std::uint16_t code = 0; code < 0x32; ++code) {
    if (keyIDForMacCode(code)) codes.push_back(code);
  }
  ASSERT_GT(codes.size(), LayerGate::swallowReserve + 8);
  route.keyCodes.insert(codes.begin(), codes.end());
  const std::vector<LayerRoute> routes{route};
  LayerGate gate(routes, ownTag);
  const std::uint64_t flags = rightCommand | rightShift;
  gate.decide(LayerGate::flagsChanged, 0, flags, false, 0, 0);
  for (std::uint16_t code : codes) {
    SCOPED_TRACE(code);
    EXPECT_TRUE(gate.decide(LayerGate::keyDown, code, flags, false, nanoseconds(1), 0).isRun());
  }
  EXPECT_EQ(gate.swallowed(), codes);

  // The first keys up make room among the fixed entries while later ones
  // are still pending; one is let go by hand.
  gate.release(codes[3]);
  for (std::size_t index = 0; index < codes.size(); ++index) {
    SCOPED_TRACE(codes[index]);
    const GateDecision decision =
        gate.decide(LayerGate::keyUp, codes[index], flags, false, nanoseconds(2), 0);
    EXPECT_EQ(decision, index == 3 ? GateDecision::pass() : GateDecision::swallow());
  }
  EXPECT_TRUE(gate.swallowed().empty());
}

}  // namespace
}  // namespace corvel
