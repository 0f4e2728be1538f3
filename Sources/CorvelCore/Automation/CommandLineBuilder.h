// CommandLineBuilder: turns what a command line said into its action. A
// changing command goes through the link parser exactly as a link from
// outside would, so the tool applies the app's own rules and limits;
// listings, exports, help and the version line are the tool's own.
#pragma once

#include <expected>

#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Automation/CommandLineAction.h"
#include "CorvelCore/Automation/CommandLineReader.h"

namespace corvel {

struct CommandLineBuilder {
  // The action, or the first problem: a missing or repeated value, a plain
  // word the command does not take, or the link parser's refusal in the
  // command line's words.
  [[nodiscard]] static std::expected<CommandLineAction, AutomationError> build(
      const CommandLineReading& reading);
};

}  // namespace corvel
