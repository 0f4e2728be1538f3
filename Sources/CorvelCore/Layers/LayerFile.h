// LayerFile: the content of a layers file (the app's own file, an export or
// a file to import): the layers that could be read and everything else the
// file held, so that writing it back loses nothing.
#pragma once

#include <cstdint>
#include <vector>

#include "CorvelCore/Layers/Layer.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct LayerFile {
  // The file's format version as read; 1 when the file names none.
  std::int64_t version = 1;
  // The layers read, in file order, the first of each id only.
  std::vector<Layer> layers;
  // The elements of "layers" that could not be read or repeat an earlier
  // id, unchanged and in file order; written back after `layers`.
  JSONArray unparsed;
  // Top-level members other than "version" and "layers".
  JSONObject extras;
  // How many elements went to `unparsed` for being unreadable while the
  // file's version was not the current one.
  std::int64_t unparsedFromNewer = 0;

  friend bool operator==(const LayerFile&, const LayerFile&) = default;
};

}  // namespace corvel
