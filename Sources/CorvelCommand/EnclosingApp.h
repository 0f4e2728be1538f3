// EnclosingApp: finds the app bundle the running tool ships in, and reads its
// version. The tool lives at "<App>.app/Contents/MacOS/quillon" inside the
// app; users often link it into a folder on their PATH, so the path is
// resolved before the bundle is looked for. The bundle's own questions
// (identifier, information dictionary) are asked through functions, so the
// path rules are the same on every platform.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "CorvelCommand/ToolWorld.h"

namespace corvel {

struct EnclosingApp {
  // The information-dictionary keys of the version texts.
  static constexpr std::string_view shortVersionKey = "CFBundleShortVersionString";
  static constexpr std::string_view buildKey = "CFBundleVersion";

  // The bundle identifier of the bundle at a path; nothing when there is no
  // bundle there or it has no identifier.
  using BundleIdentifier = std::function<std::optional<std::string>(const std::string& bundle)>;
  // One text value of a bundle's information dictionary; nothing when the
  // bundle has no dictionary, the key is absent or its value is not text.
  using InfoString =
      std::function<std::optional<std::string>(const std::string& bundle, std::string_view key)>;

  // The app bundle holding the executable at `executablePath`: its real path
  // (links resolved) without the last three components, when that ends in
  // ".app" and the bundle there has the app's bundle identifier. Nothing in
  // every other case, including a path that does not resolve.
  [[nodiscard]] static std::optional<std::string> find(const std::string& executablePath,
                                                       const BundleIdentifier& bundleIdentifier);

  // The short version and build of `app`; both absent without an app.
  [[nodiscard]] static ToolWorld::Version version(const std::optional<std::string>& app,
                                                  const InfoString& infoString);
};

}  // namespace corvel
