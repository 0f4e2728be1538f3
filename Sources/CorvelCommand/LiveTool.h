// LiveTool: the tool's world bound to the real system. The portable parts
// (how the world is assembled, where the support folder is, how the app's
// preferences are read on Linux) live beside the platform glue that finds the
// app, hands links to it and resolves app names (GIO on Linux, AppKit and
// CoreServices on macOS).
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "CorvelCommand/ToolWorld.h"

namespace corvel {

struct LiveTool {
  // The world of this process: every field bound to the real system.
  [[nodiscard]] static ToolWorld world();

  // The app's support folder: the user's application-support folder (on
  // Linux `$XDG_DATA_HOME` when absolute, else ~/.local/share) + "Quillon".
  [[nodiscard]] static std::string supportFolder();
  // One value of the app's preferences (on Linux the member of the JSON
  // object in `$XDG_CONFIG_HOME`/Quillon/Preferences.json), or nothing.
  [[nodiscard]] static std::optional<JSONValue> preference(std::string_view key);

  // The app bundle that contains the running tool, if any.
  [[nodiscard]] static std::optional<std::string> enclosingApp();
  // Where the installed app is: the enclosing app, else the one the system
  // knows by its bundle identifier (on Linux, the desktop's handler of
  // quillon:// links); nothing when it is not installed.
  [[nodiscard]] static std::optional<std::string> quillonApp();
  // Hands one link to the app without bringing it forward and waits at most
  // `CommandLineInterface::handOverSeconds` (plus one 0.05 s slice).
  [[nodiscard]] static HandOver handOver(const std::string& link, const std::string& app);
  // Finds an app on this machine by name or bundle identifier.
  [[nodiscard]] static AppMatch app(std::string_view name);
  // The enclosing app's version texts; both absent outside an app bundle.
  [[nodiscard]] static ToolWorld::Version version();
};

}  // namespace corvel
