// CommandLineHelp: the texts the tool prints about its own use: the usage
// text, the help of each command, the version line, and the parts the manual
// page is made of. The synopses come from the command grammar; the prose
// around them lives here.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Automation/CommandGrammar.h"

namespace corvel {

struct CommandLineHelp {
  // An exit status and what it means: "3", "a file problem".
  struct ExitCode {
    std::int32_t status;
    std::string_view meaning;
  };

  // The full usage text, without a final line break.
  [[nodiscard]] static const std::string& usage();
  // The help of a topic (compared in lower case); the usage text for none or
  // an unknown topic. No final line break.
  [[nodiscard]] static std::string help(std::optional<std::string_view> topic);
  // "quillon 1.2 (45)", "quillon 1.2", "quillon, build 45" or
  // "quillon, a development build".
  [[nodiscard]] static std::string versionLine(const std::optional<std::string>& shortVersion,
                                               const std::optional<std::string>& build);

  // What the tool does, after its name: "controls Quillon, …" (no full stop).
  [[nodiscard]] static std::string_view purpose();
  // A command's options and plain word as the usage text shows them:
  // "[--name N] -f FILE".
  [[nodiscard]] static std::string synopsis(const CommandSpec& command);
  // Each command line of the usage text as the pieces it is laid out in,
  // without its indent; a piece is never broken across lines:
  // {"quillon", "layers list", "[--json]", "| store", "--modifiers M", …}.
  [[nodiscard]] static std::vector<std::vector<std::string>> synopsisLines();
  // The KEYS block: its title, the forms of the key options, and its notes.
  [[nodiscard]] static std::string_view keysTitle();
  [[nodiscard]] static std::string keyForms();
  [[nodiscard]] static std::span<const std::string_view> keyNotes();
  // The notes after KEYS, line by line as the usage text breaks them.
  [[nodiscard]] static std::span<const std::string_view> notes();
  [[nodiscard]] static std::span<const ExitCode> exitCodes();
};

}  // namespace corvel
