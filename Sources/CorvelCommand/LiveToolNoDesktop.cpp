// Builds on Linux without GIO: there is no desktop to ask for the app, so no
// app is found and changing commands report that the app is not installed.
#if !defined(__APPLE__) && !defined(QUILLON_HAVE_GIO)

#include "CorvelCommand/LiveTool.h"

namespace corvel {

std::optional<std::string> LiveTool::enclosingApp() { return std::nullopt; }

std::optional<std::string> LiveTool::quillonApp() { return std::nullopt; }

HandOver LiveTool::handOver(const std::string&, const std::string&) { return HandOver::failed; }

AppMatch LiveTool::app(std::string_view) { return AppMatch::none(); }

ToolWorld::Version LiveTool::version() { return {}; }

}  // namespace corvel

#endif
