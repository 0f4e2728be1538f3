// Reading and writing one theme file, and a theme with every key overridden:
// the work of listing the user's themes and of saving one from the editor.
#include <benchmark/benchmark.h>

#include <string>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Theme/BuiltInThemes.h"
#include "CorvelCore/Theme/ThemeCodec.h"

namespace corvel {
namespace {

const Theme& overriddenTheme() {
  static const Theme theme = [] {
    Theme built = *BuiltInThemes::theme("synthwave");
    for (const KeyInfo& key : allKeys()) {
      built.overrides[key.id] =
          KeyOverride{BuiltInThemes::dish(0x3451C6), ThemeColor::fromRGB(0xFFFFFF), {}};
    }
    return built;
  }();
  return theme;
}

void decodeBuiltIn(benchmark::State& state) {
  const std::string text = ThemeCodec::encode(*BuiltInThemes::theme("synthwave"));
  for (auto _ : state) benchmark::DoNotOptimize(ThemeCodec::decode(text));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(decodeBuiltIn);

void encodeBuiltIn(benchmark::State& state) {
  const Theme& theme = *BuiltInThemes::theme("synthwave");
  for (auto _ : state) benchmark::DoNotOptimize(ThemeCodec::encode(theme));
}
BENCHMARK(encodeBuiltIn);

void decodeEveryKeyOverridden(benchmark::State& state) {
  const std::string text = ThemeCodec::encode(overriddenTheme());
  for (auto _ : state) benchmark::DoNotOptimize(ThemeCodec::decode(text));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(decodeEveryKeyOverridden);

void encodeEveryKeyOverridden(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(ThemeCodec::encode(overriddenTheme()));
}
BENCHMARK(encodeEveryKeyOverridden);

}  // namespace
}  // namespace corvel
