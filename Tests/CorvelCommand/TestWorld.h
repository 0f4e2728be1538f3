// A ToolWorld held in memory for tests: a small file system (folders, files
// with their times, files that cannot be read), the app's preferences, a
// settable app and hand-over report. It records what the driver did, and
// fails the test loudly when the driver reaches for something the test did
// not expect it to use.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "CorvelCommand/ToolWorld.h"

namespace corvel {

struct TestWorld {
  struct File {
    std::string bytes;
    std::optional<std::filesystem::file_time_type> modified;
    bool unreadable = false;  // there, but it cannot be read (a FIFO, no permission)
  };

  // What the test sets up.
  std::optional<std::string> app;          // where the app is; none = not installed
  std::optional<HandOver> handOverResult;  // none = the driver must not hand over
  std::optional<AppResolver> resolver;     // none = the driver must not resolve app names
  std::map<std::string, JSONValue, std::less<>> preferences;
  std::string currentDirectory = "/work/here";
  std::string homeFolder = "/home/u";
  std::string supportFolder = "/home/u/Support/Quillon";
  std::vector<std::pair<std::string, File>> files;  // in the order folders list them
  std::set<std::string, std::less<>> folders{
      "/", "/work", "/work/here", "/home", "/home/u", "/home/u/Support", "/home/u/Support/Quillon"};
  bool writesFail = false;  // a full disk

  // What the driver did.
  std::string out;
  std::string err;
  std::vector<std::pair<std::string, std::string>> handOvers;  // (link, app)

  // Puts a file at `path`, and its folder (with the folders above it).
  void put(const std::string& path, std::string bytes,
           std::optional<std::filesystem::file_time_type> modified = std::nullopt) {
    addFolder(path.substr(0, path.rfind('/')));
    files.emplace_back(path, File{std::move(bytes), modified});
  }
  void addFolder(std::string path) {
    while (!path.empty()) {
      folders.insert(path);
      path = path.substr(0, path.rfind('/'));
    }
  }
  [[nodiscard]] const File* find(std::string_view path) const {
    const auto found = std::find_if(files.begin(), files.end(),
                                    [&](const auto& entry) { return entry.first == path; });
    return found == files.end() ? nullptr : &found->second;
  }

  ToolWorld world() {
    ToolWorld world;
    world.currentDirectory = currentDirectory;
    world.homeFolder = homeFolder;
    world.supportFolder = supportFolder;
    world.preference = [this](std::string_view key) -> std::optional<JSONValue> {
      const auto found = preferences.find(key);
      if (found == preferences.end()) return std::nullopt;
      return found->second;
    };
    world.readFile =
        [this](const std::string& path,
               std::size_t maxBytes) -> std::expected<std::string, ToolWorld::ReadProblem> {
      if (const File* file = find(path)) {
        if (file->unreadable || file->bytes.size() > maxBytes) {
          return std::unexpected(ToolWorld::ReadProblem::unreadable);
        }
        return file->bytes;
      }
      if (folders.contains(path)) return std::unexpected(ToolWorld::ReadProblem::unreadable);
      return std::unexpected(ToolWorld::ReadProblem::missing);
    };
    world.listFolder = [this](const std::string& folder) {
      std::vector<ToolWorld::FolderFile> listed;
      for (const auto& [path, file] : files) {
        if (path.substr(0, path.rfind('/')) == folder) {
          listed.push_back({path.substr(path.rfind('/') + 1), file.modified});
        }
      }
      return listed;
    };
    world.exportChecks.fileExists = [this](const std::string& path) {
      return find(path) != nullptr || folders.contains(path);
    };
    world.exportChecks.isDirectory = [this](const std::string& path) {
      return folders.contains(path.empty() ? "/" : path);
    };
    world.exportChecks.realPath = [](const std::string& path) {
      return std::optional<std::string>(path);
    };
    world.exportChecks.identities = [](const std::string& path) {
      std::vector<FileIdentity> identities;
      for (std::string folder = path; !folder.empty();
           folder = folder.substr(0, folder.rfind('/'))) {
        identities.push_back({1, std::hash<std::string>{}(folder)});
      }
      identities.push_back({1, std::hash<std::string>{}("/")});
      return identities;
    };
    world.writeNew = [this](std::string_view data,
                            const std::string& path) -> std::expected<void, ExportRefusal> {
      if (find(path) != nullptr) return std::unexpected(ExportRefusal::exists);
      if (writesFail || !folders.contains(path.substr(0, path.rfind('/')))) {
        return std::unexpected(ExportRefusal::couldNotWrite);
      }
      files.emplace_back(path, File{std::string(data), std::nullopt});
      return {};
    };
    world.quillonApp = [this] { return app; };
    world.resolveApp = [this](std::string_view name) {
      if (!resolver) {
        ADD_FAILURE() << "the driver resolved an app name it should not have: " << name;
        return AppMatch::none();
      }
      return (*resolver)(name);
    };
    world.handOver = [this](const std::string& link, const std::string& at) {
      handOvers.emplace_back(link, at);
      if (!handOverResult) {
        ADD_FAILURE() << "the driver handed over a link it should not have: " << link;
        return HandOver::failed;
      }
      return *handOverResult;
    };
    world.out = [this](std::string_view text) {
      out += text;
      return ToolWorld::Written::all;
    };
    world.err = [this](std::string_view text) {
      err += text;
      return ToolWorld::Written::all;
    };
    return world;
  }
};

}  // namespace corvel
