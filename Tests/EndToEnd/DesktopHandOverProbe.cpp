// Runs the live desktop functions once, for the end-to-end script that sets
// up a throw-away desktop around it:
//   DesktopHandOverProbe quillonApp          prints where the app is (status 1: nowhere)
//   DesktopHandOverProbe handOver LINK APP   prints how the hand-over ended
//   DesktopHandOverProbe app NAME            prints "one ID", "none" or "several"
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>

#include "CorvelCommand/LiveTool.h"

namespace {

std::string_view caseName(corvel::HandOver outcome) {
  switch (outcome) {
    case corvel::HandOver::delivered:
      return "delivered";
    case corvel::HandOver::failed:
      return "failed";
    case corvel::HandOver::timedOut:
      return "timedOut";
  }
  return "unknown";
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view command = argc > 1 ? argv[1] : "";
  if (command == "quillonApp" && argc == 2) {
    const std::optional<std::string> app = corvel::LiveTool::quillonApp();
    if (!app) return 1;
    std::printf("%s\n", app->c_str());
    return 0;
  }
  if (command == "handOver" && argc == 4) {
    const auto start = std::chrono::steady_clock::now();
    const corvel::HandOver outcome = corvel::LiveTool::handOver(argv[2], argv[3]);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    std::printf("%s %.2f\n", std::string(caseName(outcome)).c_str(), elapsed.count());
    return 0;
  }
  if (command == "app" && argc == 3) {
    const corvel::AppMatch match = corvel::LiveTool::app(argv[2]);
    if (const std::string* bundleID = match.bundleID()) {
      std::printf("one %s\n", bundleID->c_str());
    } else {
      std::printf("%s\n", match.isSeveral() ? "several" : "none");
    }
    return 0;
  }
  std::fprintf(stderr, "usage: DesktopHandOverProbe quillonApp | handOver LINK APP | app NAME\n");
  return 2;
}
