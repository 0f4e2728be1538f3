#include "CorvelCommand/LiveTool.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace corvel {
namespace {

void write(std::FILE* stream, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

}  // namespace

ToolWorld LiveTool::world() {
  ToolWorld world;
  std::error_code error;
  world.currentDirectory = std::filesystem::current_path(error).string();
  world.supportFolder = supportFolder();
  world.preference = &LiveTool::preference;
  world.quillonApp = &LiveTool::quillonApp;
  world.resolveApp = &LiveTool::app;
  world.handOver = &LiveTool::handOver;
  world.now = [] { return ToolWorld::Clock::now(); };
  world.version = version();
  world.out = [](std::string_view text) { write(stdout, text); };
  world.err = [](std::string_view text) { write(stderr, text); };
  return world;
}

}  // namespace corvel
