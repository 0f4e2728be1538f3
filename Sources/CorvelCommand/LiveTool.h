// LiveTool: the tool's world bound to the real system, and the only code that
// touches it. The portable parts (assembling the world, reading files and
// folders, writing the output) live in LiveTool.cpp; the platform glue finds
// the app, hands links to it, resolves app names and reads the app's
// preferences (GIO and a JSON file on Linux; AppKit, CoreServices and
// CoreFoundation on macOS).
#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCommand/ToolWorld.h"

namespace corvel {

struct LiveTool {
  // The world of this process: every field bound to the real system.
  [[nodiscard]] static ToolWorld world();

  // The bytes of the regular file at `path` when it holds at most `maxBytes`.
  // Opened without blocking, so a FIFO or a device never makes the tool
  // wait: anything but a regular file (after following links) is
  // `unreadable`. `missing` only when nothing at all is at the path. The
  // bytes come with JSONValue::readPadding of room after them, so JSON is
  // read in place.
  [[nodiscard]] static std::expected<std::string, ToolWorld::ReadProblem> readFile(
      const std::string& path, std::size_t maxBytes);
  // The regular files of a folder in its own order, each with its
  // modification time (entries whose kind cannot be read are kept, with no
  // time, so that reading them fails later); none without the folder.
  [[nodiscard]] static std::vector<ToolWorld::FolderFile> listFolder(const std::string& folder);

  // The app's support folder (see Locations; on the Mac as the file manager
  // gives the user's application-support folder).
  [[nodiscard]] static std::string supportFolder();
  // One value of the app's preferences (on Linux the member of the JSON
  // object in Locations::preferencesFile), or nothing.
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
