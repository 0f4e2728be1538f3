// LayerError: why layers could not be read. The first four cases concern a
// whole layers file, the last three one layer, key or action inside it; a
// file never fails for a bad layer, it keeps the layer's JSON instead. The
// tool turns each case into its own message.
#pragma once

#include <cstdint>
#include <variant>

namespace corvel {

struct LayerError {
  // "version" is below 1.
  struct UnsupportedVersion {
    std::int64_t version = 0;
    friend bool operator==(const UnsupportedVersion&, const UnsupportedVersion&) = default;
  };
  // Not JSON, or the root is not an object.
  struct NotJSON {
    friend bool operator==(const NotJSON&, const NotJSON&) = default;
  };
  // "layers" is missing or not an array.
  struct NotLayers {
    friend bool operator==(const NotLayers&, const NotLayers&) = default;
  };
  // The file is longer than the largest layers file read.
  struct TooLarge {
    friend bool operator==(const TooLarge&, const TooLarge&) = default;
  };
  // A layer object that cannot be used (no id, no trigger, a bad app scope).
  struct BadLayer {
    friend bool operator==(const BadLayer&, const BadLayer&) = default;
  };
  // A key entry that is not an object or whose face is invalid.
  struct BadKey {
    friend bool operator==(const BadKey&, const BadKey&) = default;
  };
  // An action that is missing or invalid.
  struct BadAction {
    friend bool operator==(const BadAction&, const BadAction&) = default;
  };

  std::variant<UnsupportedVersion, NotJSON, NotLayers, TooLarge, BadLayer, BadKey, BadAction> value;

  [[nodiscard]] static LayerError unsupportedVersion(std::int64_t version) {
    return {UnsupportedVersion{version}};
  }
  [[nodiscard]] static LayerError notJSON() { return {NotJSON{}}; }
  [[nodiscard]] static LayerError notLayers() { return {NotLayers{}}; }
  [[nodiscard]] static LayerError tooLarge() { return {TooLarge{}}; }
  [[nodiscard]] static LayerError badLayer() { return {BadLayer{}}; }
  [[nodiscard]] static LayerError badKey() { return {BadKey{}}; }
  [[nodiscard]] static LayerError badAction() { return {BadAction{}}; }

  [[nodiscard]] const UnsupportedVersion* asUnsupportedVersion() const {
    return std::get_if<UnsupportedVersion>(&value);
  }

  friend bool operator==(const LayerError&, const LayerError&) = default;
};

}  // namespace corvel
