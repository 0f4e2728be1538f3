#include "Tools/Completions/CompletionModel.h"

#include <algorithm>
#include <optional>

#include "CorvelCore/Automation/DocumentFiles.h"
#include "CorvelCore/Automation/KeyName.h"
#include "CorvelCore/Automation/ShowOptions.h"
#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Layers/FillMode.h"
#include "CorvelCore/Support/ASCIIText.h"

namespace corvel {
namespace {

bool isPlainWord(std::string_view word) {
  return !word.empty() && std::all_of(word.begin(), word.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
  });
}

// The word a shell offers for a key: its key name when that is a plain word,
// else another spelling the parser reads as the same key ("equal" for "=",
// "plus" for the keypad's "+"), so that no offered word needs quoting or
// holds the "=" that ends a key's name.
std::optional<std::string> completedKeyName(const KeyInfo& key) {
  const auto canonical = KeyName::canonical(key.name);
  if (!canonical) return std::nullopt;
  for (const std::string& spelling :
       {std::string(key.name), *canonical, ASCIIText::lowercased(key.identifier)}) {
    if (isPlainWord(spelling) && KeyName::canonical(spelling) == canonical) return spelling;
  }
  return std::nullopt;
}

}  // namespace

CompletionModel CompletionModel::make() {
  CompletionModel model;
  model.commands = CommandGrammar::commands();
  for (const auto& entry : namedPositionNames) model.positions.emplace_back(entry.raw);
  for (const auto& entry : fillModeNames) model.fills.emplace_back(entry.raw);
  for (const auto topic : CommandGrammar::helpTopics()) model.topics.emplace_back(topic);
  for (const auto& key : allKeys()) {
    // A layer never takes over a modifier or caps lock, so those are not offered.
    if (key.group == KeyGroup::modifier || key.group == KeyGroup::inert) continue;
    if (auto word = completedKeyName(key)) model.keys.push_back(std::move(*word));
  }
  return model;
}

std::vector<std::string> CompletionModel::firstWords() const {
  std::vector<std::string> words;
  for (const auto& command : commands) {
    if (std::find(words.begin(), words.end(), command.first) == words.end()) {
      words.emplace_back(command.first);
    }
  }
  return words;
}

std::vector<std::string> CompletionModel::subcommands(std::string_view first) const {
  std::vector<std::string> words;
  for (const auto& command : commands) {
    if (command.first == first && !command.sub.empty()) words.emplace_back(command.sub);
  }
  return words;
}

std::string_view CompletionModel::summary(std::string_view first) const {
  for (const auto& group : CommandGrammar::groups()) {
    if (group.first == first) return group.summary;
  }
  for (const auto& command : commands) {
    if (command.first == first) return command.summary;
  }
  return {};
}

std::vector<std::string> CompletionModel::extensions(const CommandSpec& command) {
  if (!command.fileKind) return {};
  std::span<const std::string_view> found;
  if (command.plain != nullptr && command.plain->completion == ValueKind::importFile) {
    found = DocumentFiles::imported(*command.fileKind);
  }
  for (const auto& use : command.options) {
    if (use.definition->completion == ValueKind::exportFile) {
      found = DocumentFiles::exported(*command.fileKind);
    }
  }
  return {found.begin(), found.end()};
}

}  // namespace corvel
