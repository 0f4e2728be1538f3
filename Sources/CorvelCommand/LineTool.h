// LineTool: the driver. One command line becomes one action and one exit
// status: help and the version line are printed, listings and exports read
// the app's files, and every other command is handed to the app as a link.
// Every effect goes through the world it is given.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "CorvelCommand/ToolWorld.h"

namespace corvel {

struct LineTool {
  // Runs one command line (without the program's own path) and returns the
  // exit status: 0 done, 1 bad arguments, 2 not installed, 3 a file problem,
  // 5 not delivered.
  [[nodiscard]] static std::int32_t run(std::span<const std::string> arguments,
                                        const ToolWorld& world);
};

}  // namespace corvel
