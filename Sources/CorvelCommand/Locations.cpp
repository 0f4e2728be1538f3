#include "CorvelCommand/Locations.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "CorvelCore/Brand/Brand.h"

namespace corvel {
namespace {

std::optional<std::string> variable(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  return std::string(value);
}

// An XDG folder variable counts only when it holds an absolute path.
std::string xdgFolder(const std::optional<std::string>& value, const std::string& home,
                      const char* fallbackInHome) {
  if (value && value->starts_with('/')) return *value;
  return (home.ends_with('/') ? home : home + "/") + fallbackInHome;
}

}  // namespace

Locations::Environment Locations::current() {
  Environment environment{"/", variable("XDG_DATA_HOME"), variable("XDG_CONFIG_HOME")};
  if (auto home = variable("HOME"); home && home->starts_with('/')) {
    environment.home = std::move(*home);
  } else if (const passwd* entry = ::getpwuid(::getuid());
             entry != nullptr && entry->pw_dir != nullptr && entry->pw_dir[0] == '/') {
    environment.home = entry->pw_dir;
  }
  return environment;
}

std::string Locations::supportFolder(const Environment& environment) {
#if defined(__APPLE__)
  const std::string base = xdgFolder(std::nullopt, environment.home, "Library/Application Support");
#else
  const std::string base = xdgFolder(environment.xdgDataHome, environment.home, ".local/share");
#endif
  return base + "/" + std::string(Brand::supportFolderName);
}

std::optional<std::string> Locations::preferencesFile(const Environment& environment) {
#if defined(__APPLE__)
  (void)environment;
  return std::nullopt;
#else
  return xdgFolder(environment.xdgConfigHome, environment.home, ".config") + "/" +
         std::string(Brand::supportFolderName) + "/Preferences.json";
#endif
}

}  // namespace corvel
