#include "CorvelCommand/EnclosingApp.h"

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "CorvelCore/Brand/Brand.h"

namespace corvel {
namespace {

std::optional<std::string> realPath(const std::string& path) {
  // With a null buffer realpath allocates one of the right size.
  std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr),
                                                       &std::free);
  if (!resolved) return std::nullopt;
  return std::string(resolved.get());
}

}  // namespace

std::optional<std::string> EnclosingApp::find(const std::string& executablePath,
                                              const BundleIdentifier& bundleIdentifier) {
  if (executablePath.empty() || executablePath.find('\0') != std::string::npos) {
    return std::nullopt;
  }
  const std::optional<std::string> resolved = realPath(executablePath);
  if (!resolved) return std::nullopt;

  // The executable, its "MacOS" folder and the bundle's "Contents" folder.
  std::filesystem::path bundle(*resolved);
  for (int component = 0; component < 3; ++component) bundle = bundle.parent_path();
  if (bundle.extension() != ".app") return std::nullopt;

  const std::optional<std::string> identifier = bundleIdentifier(bundle.string());
  if (!identifier || *identifier != Brand::bundleID) return std::nullopt;
  return bundle.string();
}

ToolWorld::Version EnclosingApp::version(const std::optional<std::string>& app,
                                         const InfoString& infoString) {
  if (!app) return {};
  return {infoString(*app, shortVersionKey), infoString(*app, buildKey)};
}

}  // namespace corvel
