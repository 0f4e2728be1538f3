// The floor under listing a layers file: the file read and parsed with
// simdjson's On-Demand reader and its layers counted, nothing more. The
// tool's listing reads the same bytes and checks and summarizes every
// layer; its time is held against this one's.
//
//   layers-floor FILE     prints the number of layers
#include <simdjson.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: layers-floor FILE\n");
    return 2;
  }
  simdjson::padded_string text;
  if (simdjson::padded_string::load(argv[1]).get(text) != simdjson::SUCCESS) return 3;
  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document;
  simdjson::ondemand::array layers;
  if (parser.iterate(text).get(document) != simdjson::SUCCESS ||
      document["layers"].get_array().get(layers) != simdjson::SUCCESS) {
    return 1;
  }
  std::size_t count = 0;
  for (auto layer : layers) {
    simdjson::ondemand::object members;
    if (layer.get_object().get(members) != simdjson::SUCCESS) return 1;
    ++count;
  }
  std::printf("%zu\n", count);
  return 0;
}
