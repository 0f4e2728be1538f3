// AutomationParser: turns what arrives from outside (a quillon:// link, a
// notification, a command line, a Shortcuts action) into one command or one
// error. The tool runs it too, before it sends a link, so the tool and the
// app accept exactly the same commands. Parsing stops at the first failure
// and never returns part of a command.
#pragma once

#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "CorvelCore/Automation/AutomationCommand.h"
#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Automation/AutomationParameters.h"

namespace corvel {

struct AutomationParser {
  // A link: at most `maxURLBytes` bytes (else `tooLarge`), scheme "quillon"
  // in any case (else, or when it cannot be split, `unknownVerb` with an
  // empty verb); the verb is the host followed by the path, and the query
  // items are the pairs, read as from the `url` source.
  [[nodiscard]] static std::expected<AutomationCommand, AutomationError> parse(
      std::string_view link);

  // A verb and its (name, value) pairs from `source`. At most
  // `maxParameters` pairs and `maxValueLength` scalars in any name or value
  // (else `tooLarge`); the verb, stripped of "/" at both ends, is found
  // ignoring case, short layer verbs included (else `unknownVerb`); the
  // source must be allowed to send it (else `notAllowed`); the command read
  // from the pairs must fit a link of `maxURLBytes` (else `tooLarge`).
  [[nodiscard]] static std::expected<AutomationCommand, AutomationError> parse(
      std::string_view verb, std::span<const AutomationPair> pairs, AutomationSource source);

  // The verb a notification name stands for, or nothing.
  [[nodiscard]] static std::optional<std::string> verb(std::string_view notificationName) {
    return AutomationCommand::verb(notificationName);
  }
};

}  // namespace corvel
