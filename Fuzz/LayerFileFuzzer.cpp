// The layers file: reading never fails badly, and reading loses nothing:
// what was read, written back and read again is the same file, and a fresh
// file of the layers read reads back as those layers. The summaries a
// listing reads are those of the layers the full reader keeps.
//
// A layer's counts of removed characters and left-out keys report what one
// reading did; they are written only for a layer that needs review, so a
// second reading of a layer that does not sees a clean file and counts
// nothing. Files are compared with those counts set aside.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "CorvelCore/Layers/LayerCodec.h"
#include "FuzzSupport.h"

using corvel::Layer;
using corvel::LayerCodec;
using corvel::LayerFile;
using corvel::LayerSummary;
using corvel::fuzz::require;

namespace {

std::vector<Layer> withoutReadingCounts(std::vector<Layer> layers) {
  for (Layer& layer : layers) {
    if (layer.needsReview) continue;
    layer.removedCharacters = 0;
    layer.leftOutKeys = 0;
  }
  return layers;
}

LayerFile withoutReadingCounts(LayerFile file) {
  file.layers = withoutReadingCounts(std::move(file.layers));
  return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto input = corvel::fuzz::text(data, size);
  const auto file = LayerCodec::decodeFile(input);
  const auto decoded = LayerCodec::decode(input);
  const auto summaries = LayerCodec::summaries(std::string(input));
  require(file.has_value() == decoded.has_value(), "decode agrees with decodeFile");
  require(file.has_value() == summaries.has_value(), "summaries agree with decodeFile");
  if (!file) {
    require(decoded.error() == file.error(), "decode fails as decodeFile does");
    require(summaries.error() == file.error(), "summaries fail as decodeFile does");
    return 0;
  }
  require(decoded->layers == file->layers && decoded->skipped == file->unparsed.size(),
          "decode gives the layers and the count of unparsed elements");
  std::vector<LayerSummary> expected;
  for (const Layer& layer : file->layers) expected.push_back(LayerSummary::of(layer));
  require(*summaries == expected, "summaries are those of the layers decodeFile reads");

  const std::string written = LayerCodec::encode(*file);
  // Pretty printing may take a file near the limit past it.
  if (written.size() > LayerCodec::maxFileBytes) return 0;
  const auto reread = LayerCodec::decodeFile(written);
  require(reread.has_value(), "a written file reads", written);
  require(withoutReadingCounts(*reread) == withoutReadingCounts(*file),
          "decode, encode, decode gives the same file", written);

  const std::string fresh = LayerCodec::encode(file->layers);
  const auto freshRead = LayerCodec::decodeFile(fresh);
  require(freshRead.has_value() &&
              withoutReadingCounts(freshRead->layers) == withoutReadingCounts(file->layers) &&
              freshRead->unparsed.empty() && freshRead->extras.empty() &&
              freshRead->version == LayerCodec::currentVersion,
          "a fresh file of the layers read reads back as those layers", fresh);
  return 0;
}
