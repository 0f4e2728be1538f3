// ToolWorld: every effect the tool has on the world outside it, as plain
// values and functions: the folders it starts from, the files it reads and
// writes, the app's preferences, finding the app and apps by name, handing a
// link over, and standard output and error. The driver touches the outside
// only through it, so a test binds each field to an in-memory fake that
// records calls and fails on demand, and `LiveTool::world` binds them to the
// system.
#pragma once

#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCommand/HandOver.h"
#include "CorvelCore/Automation/AppMatch.h"
#include "CorvelCore/Automation/ExportPath.h"
#include "CorvelCore/Automation/ExportRefusal.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

struct ToolWorld {
  // The enclosing app's version texts; both absent outside the app's bundle.
  struct Version {
    std::optional<std::string> shortVersion;
    std::optional<std::string> build;
  };

  // Why a file's bytes did not come: nothing is at the path, or something
  // is but it is no regular file, cannot be read or is too large.
  enum class ReadProblem { missing, unreadable };

  // A file in a folder listing: its name and, when it can be read, when it
  // was last changed.
  struct FolderFile {
    std::string name;
    std::optional<std::filesystem::file_time_type> modified;
  };

  // How one write to standard output or error went: all of it written, the
  // reader went away (a pipe closed early, as `| head -1` does), or it
  // failed (a full disk, a stream that cannot be written).
  enum class Written { all, readerGone, failed };

  // The process's current directory, read once at start.
  std::string currentDirectory;
  // The user's home folder, where "~" leads.
  std::string homeFolder;
  // The app's support folder (which holds "Layers.json", "Themes", "Sheets").
  std::string supportFolder;
  // One value of the app's preferences, or nothing when absent.
  std::function<std::optional<JSONValue>(std::string_view key)> preference;

  // The bytes of the regular file at `path` (links followed) when it holds
  // at most `maxBytes`. Never waits: a FIFO or a device is unreadable.
  std::function<std::expected<std::string, ReadProblem>(const std::string& path,
                                                        std::size_t maxBytes)>
      readFile;
  // The regular files of a folder, in the folder's own order (and entries
  // whose kind cannot be read, which then fail to read); none when there is
  // no such folder.
  std::function<std::vector<FolderFile>(const std::string& folder)> listFolder;
  // The questions an export's target is checked with.
  FileQuestions exportChecks;
  // Writes a new file, complete, never over another one.
  std::function<std::expected<void, ExportRefusal>(std::string_view data, const std::string& path)>
      writeNew;

  // Where the installed app is, or nothing when it is not installed.
  std::function<std::optional<std::string>()> quillonApp;
  // Finds an app named on the command line, by name or bundle identifier.
  AppResolver resolveApp;
  // Hands one link to the app at the given location and waits for the report.
  std::function<HandOver(const std::string& link, const std::string& app)> handOver;
  Version version;

  // Standard output and standard error; each call writes its text as it is
  // and makes it reach the stream before it returns.
  std::function<Written(std::string_view)> out;
  std::function<Written(std::string_view)> err;
};

}  // namespace corvel
