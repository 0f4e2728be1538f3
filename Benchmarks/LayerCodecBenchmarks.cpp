// Reading and writing a layers file at its largest (16 MiB): thousands of
// layers, each with a trigger and a dozen keys of every action and face.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "CorvelCore/Layers/LayerCodec.h"
#include "ReadText.h"

namespace corvel {
namespace {

std::string uuidText(int index) {
  char text[37];
  std::snprintf(text, sizeof text, "%08X-D9CB-469F-A165-%012X", index, index * 7919);
  return text;
}

JSONValue keyEntry(int layer, int key) {
  const std::string tag = std::to_string(layer) + "." + std::to_string(key);
  switch (key % 4) {
    case 0:
      return JSONObject{
          {"action",
           JSONObject{{"type", "typeText"}, {"text", "Kind regards,\nMaria \xE2\x80\x94 " + tag}}},
          {"caption", "Sign-off " + tag}};
    case 1:
      return JSONObject{
          {"action", JSONObject{{"type", "openApp"},
                                {"bundleID", "com.example.app" + std::to_string(key)},
                                {"name", "Example App " + tag}}},
          {"display",
           JSONObject{{"type", "appIcon"}, {"bundleID", "com.example.app" + std::to_string(key)}}}};
    case 2:
      return JSONObject{
          {"action", JSONObject{{"type", "sendShortcut"},
                                {"modifiers", JSONArray{"shift", "command"}},
                                {"key", "keyK"}}},
          {"display", JSONObject{{"type", "label"}, {"text", "Clean up \xE2\x9C\x93 " + tag}}}};
    default:
      return JSONObject{
          {"action",
           JSONObject{{"type", "showSymbol"}, {"name", "star.fill"}, {"caption", "Stars " + tag}}},
          {"display",
           JSONObject{
               {"type", "symbolCaption"}, {"symbol", "star.fill"}, {"caption", "Stars / more"}}}};
  }
}

JSONValue layerJSON(int index) {
  static constexpr const char* keyNames[] = {"keyA", "keyS", "keyD", "keyF",   "keyG", "keyH",
                                             "keyJ", "keyK", "keyL", "digit1", "f5",   "arrowUp"};
  JSONObject keys;
  for (int key = 0; key < 12; ++key) keys.set(keyNames[key], keyEntry(index, key));
  return JSONObject{
      {"id", uuidText(index)},
      {"name", "Layer number " + std::to_string(index)},
      {"enabled", index % 2 == 0},
      {"kind", "custom"},
      {"holdDelay", 0.25},
      {"appScope", index % 3 == 0 ? JSONValue("com.apple.Safari") : JSONValue()},
      {"fill", "dimmed"},
      {"trigger",
       JSONObject{{"parts", JSONArray{JSONObject{{"modifier", "shift"}, {"side", "right"}},
                                      JSONObject{{"modifier", "command"}, {"side", "right"}}}}}},
      {"keys", keys},
  };
}

// A layers file of just under 16 MiB.
const std::string& layersFile() {
  static const std::string text = [] {
    JSONArray layers;
    std::string encoded;
    std::size_t layerBytes = 0;
    while (encoded.size() + layerBytes < LayerCodec::maxFileBytes) {
      const std::size_t before = encoded.size();
      for (int i = 0; i < 200; ++i) layers.push_back(layerJSON(static_cast<int>(layers.size())));
      encoded = JSONValue(JSONObject{{"version", 1}, {"layers", layers}}).encoded().value_or("");
      layerBytes = (encoded.size() - before) / 200 * 200;
    }
    return readText(std::move(encoded));
  }();
  return text;
}

void BM_DecodeLayersFile(benchmark::State& state) {
  const std::string& text = layersFile();
  std::size_t layers = 0;
  for (auto _ : state) {
    auto file = LayerCodec::decodeFile(text);
    layers = file ? file->layers.size() : 0;
    benchmark::DoNotOptimize(file);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
  state.counters["MiB"] = static_cast<double>(text.size()) / (1 << 20);
  state.counters["layers"] = static_cast<double>(layers);
}
BENCHMARK(BM_DecodeLayersFile)->Unit(benchmark::kMillisecond);

// The JSON parse alone, the floor under reading the file.
void BM_ParseLayersFileJSON(benchmark::State& state) {
  const std::string& text = layersFile();
  for (auto _ : state) {
    auto value = JSONValue::decode(text, text.capacity());
    benchmark::DoNotOptimize(value);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_ParseLayersFileJSON)->Unit(benchmark::kMillisecond);

void BM_EncodeLayersFile(benchmark::State& state) {
  const std::string& text = layersFile();
  const auto file = LayerCodec::decodeFile(text);
  if (!file) {
    state.SkipWithError("the generated file does not decode");
    return;
  }
  for (auto _ : state) {
    std::string written = LayerCodec::encode(*file);
    benchmark::DoNotOptimize(written);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_EncodeLayersFile)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace corvel
