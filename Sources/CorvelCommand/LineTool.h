// LineTool: the driver. One command line becomes one action and one exit
// status; every effect goes through the world it is given.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "CorvelCommand/ToolWorld.h"

namespace corvel {

struct LineTool {
  // Runs one command line (without the program's own path) and returns the
  // exit status: 0 done, 1 bad arguments, 2 not installed, 3 a file problem,
  // 5 not delivered.
  [[nodiscard]] static std::int32_t run(std::span<const std::string> arguments,
                                        const ToolWorld& world);

  // The bytes of the regular file at `path`, or nothing when it is not a
  // regular file, cannot be opened or read, or holds more than `max` bytes.
  // `followLinks` false refuses a final symbolic link. The bytes come with
  // JSONValue::readPadding of room after them, so JSON is read in place.
  [[nodiscard]] static std::optional<std::string> read(const std::string& path, std::size_t max,
                                                       bool followLinks);
};

}  // namespace corvel
