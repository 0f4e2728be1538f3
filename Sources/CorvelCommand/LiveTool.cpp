#include "CorvelCommand/LiveTool.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace corvel {
namespace {

ToolWorld::Written write(std::FILE* stream, std::string_view text) {
  const std::size_t written = std::fwrite(text.data(), 1, text.size(), stream);
  if (std::fflush(stream) == 0 && written == text.size()) return ToolWorld::Written::all;
  const bool readerGone = errno == EPIPE;
  std::clearerr(stream);
  return readerGone ? ToolWorld::Written::readerGone : ToolWorld::Written::failed;
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
  world.out = [](std::string_view text) { return write(stdout, text); };
  world.err = [](std::string_view text) { return write(stderr, text); };
  return world;
}

}  // namespace corvel
