// Locations: where the app keeps its files and settings on this platform,
// worked out from the home folder and the environment. The live world and
// the end-to-end tests both ask here, so they agree on every platform.
#pragma once

#include <optional>
#include <string>

namespace corvel {

struct Locations {
  // What the locations depend on.
  struct Environment {
    std::string home;                          // the user's home folder
    std::optional<std::string> xdgDataHome;    // $XDG_DATA_HOME
    std::optional<std::string> xdgConfigHome;  // $XDG_CONFIG_HOME
  };

  // This process's environment: $HOME when it is absolute, else the home
  // folder the user database gives, else "/".
  [[nodiscard]] static Environment current();

  // The app's support folder: on the Mac "Library/Application Support/Quillon"
  // in the home folder; elsewhere "Quillon" in $XDG_DATA_HOME when that is
  // absolute, else in "~/.local/share".
  [[nodiscard]] static std::string supportFolder(const Environment& environment);
  // The file of the app's preferences where they are a file of their own:
  // on Linux "Quillon/Preferences.json" in $XDG_CONFIG_HOME (absolute) or
  // "~/.config". Nothing on the Mac, whose preferences are a defaults domain.
  [[nodiscard]] static std::optional<std::string> preferencesFile(const Environment& environment);
};

}  // namespace corvel
