// Decoding and writing a JSON document of about 16 MiB shaped like the app's
// layers file: thousands of layers, each with a trigger and key actions.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "AllocationCount.h"
#include "CorvelCore/Theme/JSONValue.h"
#include "ReadText.h"

namespace corvel {
namespace {

JSONValue layer(int index) {
  JSONObject keys;
  const char* letters = "abcdefghijklmnopqrstuvwxyz";
  for (int k = 0; k < 12; ++k) {
    JSONObject action{
        {"type", "typeText"},
        {"text", "Text for key " + std::to_string(k) + " of layer " + std::to_string(index)}};
    keys.set(std::string("key") + static_cast<char>(letters[k] - 32),
             JSONObject{{"action", action}, {"caption", "Caption \xE2\x9C\x93 / more"}});
  }
  return JSONObject{
      {"id", "0F8FAD5B-D9CB-469F-A165-" + std::to_string(100000000000 + index)},
      {"name", "Layer number " + std::to_string(index)},
      {"enabled", index % 2 == 0},
      {"kind", "custom"},
      {"holdDelay", 0.2},
      {"appScope", nullptr},
      {"trigger",
       JSONObject{{"parts", JSONArray{JSONObject{{"modifier", "command"}, {"side", "right"}},
                                      JSONObject{{"modifier", "shift"}, {"side", "either"}}}}}},
      {"keys", keys},
  };
}

const std::string& layersDocument() {
  static const std::string text = [] {
    constexpr std::size_t kTarget = 16u << 20;
    JSONArray layers;
    std::string encoded;
    // Grow in steps until the printed document reaches the target size.
    for (int step = 0; encoded.size() < kTarget; ++step) {
      for (int i = 0; i < 500; ++i) layers.push_back(layer(static_cast<int>(layers.size())));
      encoded = JSONValue(JSONObject{{"version", 1}, {"layers", layers}}).encoded().value_or("");
    }
    return readText(std::move(encoded));
  }();
  return text;
}

void BM_DecodeLayersDocument(benchmark::State& state) {
  const std::string& text = layersDocument();
  const std::uint64_t allocationsBefore = allocationCount();
  for (auto _ : state) {
    auto value = JSONValue::decode(text, text.capacity());
    benchmark::DoNotOptimize(value);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
  state.counters["MiB"] = static_cast<double>(text.size()) / (1 << 20);
  state.counters["allocs"] =
      benchmark::Counter(static_cast<double>(allocationCount() - allocationsBefore),
                         benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_DecodeLayersDocument)->Unit(benchmark::kMillisecond);

void BM_EncodeLayersDocument(benchmark::State& state) {
  const std::string& text = layersDocument();
  const JSONValue value = JSONValue::decode(text).value_or(JSONValue());
  for (auto _ : state) {
    auto written = value.encoded();
    benchmark::DoNotOptimize(written);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_EncodeLayersDocument)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace corvel
