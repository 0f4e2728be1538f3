// A ToolWorld for tests: records what the driver asked of the world, keeps a
// settable clock, fails on demand, and fails the test loudly when the driver
// touches a field the test did not expect it to use.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "CorvelCommand/ToolWorld.h"

namespace corvel {

struct TestWorld {
  // What the test sets up.
  std::optional<std::string> app;          // where the app is; none = not installed
  std::optional<HandOver> handOverResult;  // none = the driver must not hand over
  std::optional<std::function<AppMatch(std::string_view)>> resolver;  // none = must not resolve
  std::optional<JSONValue> overlaySettings;
  ToolWorld::Clock::time_point clock{};
  std::string supportFolder = "/nonexistent/support";
  ToolWorld::Written outWritten = ToolWorld::Written::all;  // how writes to standard output go

  // What the driver did.
  std::string out;
  std::string err;
  std::vector<std::pair<std::string, std::string>> handOvers;  // (link, app)

  ToolWorld world() {
    ToolWorld world;
    world.currentDirectory = "/work/here";
    world.supportFolder = supportFolder;
    world.preference = [this](std::string_view key) -> std::optional<JSONValue> {
      if (key == "overlay.v1") return overlaySettings;
      ADD_FAILURE() << "unexpected preference " << key;
      return std::nullopt;
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
    world.now = [this] { return clock; };
    world.out = [this](std::string_view text) {
      if (outWritten == ToolWorld::Written::all) out += text;
      return outWritten;
    };
    world.err = [this](std::string_view text) {
      err += text;
      return ToolWorld::Written::all;
    };
    return world;
  }
};

}  // namespace corvel
