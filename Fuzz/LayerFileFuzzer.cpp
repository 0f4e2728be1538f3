// The layers file: reading never fails badly, and reading loses nothing:
// what was read, written back and read again is the same file, and a fresh
// file of the layers read reads back as those layers. The summaries a
// listing reads are those of the layers the full reader keeps.
//
// Two things a layer holds report what one reading found and are not
// written as read, so files are compared with them set aside:
// - its counts of removed characters and left-out keys, written only for a
//   layer that needs review (a second reading of a layer that does not sees
//   a clean file and counts nothing);
// - a "name" or "appScope" of the wrong type kept in its extras, in whose
//   place writing always puts the layer's own name and scope.
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

std::vector<Layer> withoutWhatOneReadingFound(std::vector<Layer> layers) {
  for (Layer& layer : layers) {
    layer.extras.erase("name");
    layer.extras.erase("appScope");
    if (layer.needsReview) continue;
    layer.removedCharacters = 0;
    layer.leftOutKeys = 0;
  }
  return layers;
}

LayerFile withoutWhatOneReadingFound(LayerFile file) {
  file.layers = withoutWhatOneReadingFound(std::move(file.layers));
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
  require(withoutWhatOneReadingFound(*reread) == withoutWhatOneReadingFound(*file),
          "decode, encode, decode gives the same file", written);
  // What was set aside never reaches the file: written again, it is the same text.
  require(LayerCodec::encode(*reread) == written, "a file read back writes the same text", written);

  const std::string fresh = LayerCodec::encode(file->layers);
  const auto freshRead = LayerCodec::decodeFile(fresh);
  require(freshRead.has_value() &&
              withoutWhatOneReadingFound(freshRead->layers) ==
                  withoutWhatOneReadingFound(file->layers) &&
              freshRead->unparsed.empty() && freshRead->extras.empty() &&
              freshRead->version == LayerCodec::currentVersion,
          "a fresh file of the layers read reads back as those layers", fresh);
  return 0;
}
