// LayerCodec: reads and writes the layers file, the one format in which
// layers are kept, exported and imported: a JSON object (UTF-8) with an
// integer "version" and a "layers" array of layer objects (Layer's JSON
// form). It never loses data: unknown members and layers it cannot read are
// carried through a read and written back by the next write.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Layers/Layer.h"
#include "CorvelCore/Layers/LayerError.h"
#include "CorvelCore/Layers/LayerFile.h"
#include "CorvelCore/Layers/LayerSummary.h"

namespace corvel {

struct LayerCodec {
  // The version this code writes; files of a higher version are read as far as they go.
  static constexpr std::int64_t currentVersion = 1;
  static constexpr std::string_view fileExtension = "quillonlayer";
  static constexpr std::string_view documentTypeName = "Quillon Layers";
  static constexpr std::string_view typeIdentifier = "app.quillon.Quillon.layer";
  // Files saved under the app's earlier name, still opened.
  static constexpr std::string_view legacyFileExtension = "corvellayer";
  static constexpr std::string_view legacyDocumentTypeName = "Corvel Layers";
  static constexpr std::string_view legacyTypeIdentifier = "app.corvel.Corvel.layer";
  // Every extension a layers file is opened from, the current one first.
  static constexpr std::array<std::string_view, 2> readableExtensions{fileExtension,
                                                                      legacyFileExtension};
  // The largest file read, in bytes (16 MiB).
  static constexpr std::size_t maxFileBytes = 16'777'216;

  struct Decoded {
    std::vector<Layer> layers;
    // How many elements of "layers" were not loaded (unreadable or repeated).
    std::size_t skipped = 0;
  };

  // The file in `data`. Fails with tooLarge beyond `maxFileBytes` (nothing
  // parsed), notJSON unless the root is a JSON object, unsupportedVersion
  // for a "version" below 1 (read as a whole number, default 1), and
  // notLayers when "layers" is missing or not an array. A layer that cannot
  // be read, or repeats an earlier id, is kept unchanged in `unparsed`.
  [[nodiscard]] static std::expected<LayerFile, LayerError> decodeFile(std::string_view data);

  // What `decodeFile` would keep of each layer, summarized, in file order,
  // or the error it would give: the file is read once, without building
  // its layers or holding it as JSON. `data` whose storage holds
  // JSONValue::readPadding bytes more than its text (as LineTool::read
  // leaves them) is read where it lies instead of copied first.
  [[nodiscard]] static std::expected<std::vector<LayerSummary>, LayerError> summaries(
      const std::string& data);

  // The layers of `decodeFile` and the number of elements left unparsed.
  [[nodiscard]] static std::expected<Decoded, LayerError> decode(std::string_view data);

  // A fresh file of the current version holding just these layers.
  [[nodiscard]] static std::string encode(std::span<const Layer> layers);

  // The file written back: its extras, its version, then "layers" with each
  // layer's JSON form followed by the unparsed elements. Pretty-printed with
  // sorted keys and "/" unescaped. A number JSON cannot hold (set by code,
  // never read) is written as null.
  [[nodiscard]] static std::string encode(const LayerFile& file);
};

}  // namespace corvel
