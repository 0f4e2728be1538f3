// quillon: drives the Quillon app from Terminal and scripts.
#include <string>
#include <vector>

#include "CorvelCommand/LineTool.h"
#include "CorvelCommand/LiveTool.h"

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  return corvel::LineTool::run(arguments, corvel::LiveTool::world());
}
