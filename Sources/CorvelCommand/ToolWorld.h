// ToolWorld: every effect the tool has on the world outside it, as plain
// values and functions. The driver touches the outside only through it, so a
// test can bind each field to a fake that records calls, runs a settable
// clock or fails on demand, and `LiveTool::world` binds them to the system.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "CorvelCommand/HandOver.h"
#include "CorvelCore/Automation/AppMatch.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct ToolWorld {
  using Clock = std::chrono::system_clock;

  // The enclosing app's version texts; both absent outside the app's bundle.
  struct Version {
    std::optional<std::string> shortVersion;
    std::optional<std::string> build;
  };

  // The process's current directory, read once at start.
  std::string currentDirectory;
  // The app's support folder (which holds "Layers.json", "Themes", "Sheets").
  std::string supportFolder;
  // One value of the app's preferences, or nothing when absent.
  std::function<std::optional<JSONValue>(std::string_view key)> preference;
  // Where the installed app is, or nothing when it is not installed.
  std::function<std::optional<std::string>()> quillonApp;
  // Finds an app named on the command line, by name or bundle identifier.
  std::function<AppMatch(std::string_view name)> resolveApp;
  // Hands one link to the app at the given location and waits for the report.
  std::function<HandOver(const std::string& link, const std::string& app)> handOver;
  // The current date and time.
  std::function<Clock::time_point()> now;
  Version version;
  // How one write to standard output or error went: all of it written, the
  // reader went away (a pipe closed early, as `| head -1` does), or it
  // failed (a full disk, a stream that cannot be written).
  enum class Written { all, readerGone, failed };
  // Standard output and standard error; each call writes its text as it is
  // and makes it reach the stream before it returns.
  std::function<Written(std::string_view)> out;
  std::function<Written(std::string_view)> err;
};

}  // namespace corvel
