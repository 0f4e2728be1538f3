// CompletionModel: the command-line grammar seen from a shell's completion:
// the commands of CommandGrammar grouped by their first word, the files each
// reads or writes, and the fixed words values are completed from (positions,
// fill modes, help topics, key names).
//
// Every command, option, menu text and value kind is the grammar's own; the
// grammar refuses to build with a row the scripts could not offer.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Automation/CommandGrammar.h"

namespace corvel {

struct CompletionModel {
  std::span<const CommandSpec> commands;  // in the order of the usage text
  std::vector<std::string> positions;     // the named positions
  std::vector<std::string> fills;         // the fill modes
  std::vector<std::string> topics;        // the help topics
  std::vector<std::string> keys;          // key names to complete, each a plain word

  [[nodiscard]] static CompletionModel make();

  // The first words, each once, in order.
  [[nodiscard]] std::vector<std::string> firstWords() const;
  // The subcommand words of a first word, in order; empty for a command
  // without subcommands.
  [[nodiscard]] std::vector<std::string> subcommands(std::string_view first) const;
  // The menu text of a first word (of its group when it has subcommands).
  [[nodiscard]] std::string_view summary(std::string_view first) const;
  // The extensions of the files a command reads (its plain word) or writes
  // (its file option); empty for a command without files.
  [[nodiscard]] static std::vector<std::string> extensions(const CommandSpec& command);
};

}  // namespace corvel
