#include "CorvelCore/Shortcuts/KeySpec.h"

#include <array>

#include "CorvelCore/Support/UnicodeText.h"

namespace corvel {
namespace {

struct ModifierWord {
  std::string_view word;
  KeyModifier modifier;
};

// The words read as modifiers; "opt" and "alt" both mean option.
constexpr std::array<ModifierWord, 6> modifierWords{{
    {"cmd", KeyModifier::command},
    {"shift", KeyModifier::shift},
    {"opt", KeyModifier::option},
    {"alt", KeyModifier::option},
    {"ctrl", KeyModifier::control},
    {"fn", KeyModifier::fn},
}};

// The words written, in the order they are written.
constexpr std::array<ModifierWord, 5> writtenModifiers{{
    {"ctrl", KeyModifier::control},
    {"opt", KeyModifier::option},
    {"shift", KeyModifier::shift},
    {"cmd", KeyModifier::command},
    {"fn", KeyModifier::fn},
}};

// "+" separates the pieces of a step, so the key it names is written as a word.
constexpr std::string_view plusKeyName = "+";
constexpr std::string_view plusWord = "plus";

// Identifiers are ASCII; `lowered` is already in lower case.
bool equalsIgnoringASCIICase(std::string_view identifier, std::string_view lowered) {
  if (identifier.size() != lowered.size()) return false;
  for (std::size_t index = 0; index < identifier.size(); ++index) {
    char byte = identifier[index];
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    if (byte != lowered[index]) return false;
  }
  return true;
}

std::optional<KeyID> keyForLowered(std::string_view lowered) {
  if (lowered == plusWord) return keyIDForSpecName(plusKeyName);
  for (const KeyInfo& info : allKeys()) {
    if (info.name == lowered || equalsIgnoringASCIICase(info.identifier, lowered)) return info.id;
  }
  return std::nullopt;
}

std::optional<KeyCombo> parseStep(std::string_view step) {
  KeyModifiers modifiers;
  std::size_t start = 0;
  while (true) {
    const std::size_t plus = step.find('+', start);
    const std::string_view piece = step.substr(start, plus - start);
    if (piece.empty()) return std::nullopt;
    const std::string lowered = UnicodeText::lowercased(piece);
    if (plus == std::string_view::npos) {
      const auto key = keyForLowered(lowered);
      if (!key) return std::nullopt;
      return KeyCombo{modifiers, *key};
    }
    const auto modifier = KeySpec::modifierWord(lowered);
    if (!modifier) return std::nullopt;
    modifiers.insert(*modifier);
    start = plus + 1;
  }
}

}  // namespace

std::optional<std::vector<KeyCombo>> KeySpec::parse(std::string_view text) {
  std::vector<KeyCombo> steps;
  std::size_t start = 0;
  while (true) {
    if (steps.size() == maxSteps) return std::nullopt;
    const std::size_t space = text.find(' ', start);
    auto step = parseStep(text.substr(start, space - start));
    if (!step) return std::nullopt;
    steps.push_back(*step);
    if (space == std::string_view::npos) return steps;
    start = space + 1;
  }
}

std::string KeySpec::format(const KeyCombo& step) {
  std::string text;
  for (const ModifierWord& written : writtenModifiers) {
    if (step.modifiers.contains(written.modifier)) {
      text += written.word;
      text += '+';
    }
  }
  text += name(step.key);
  return text;
}

std::string KeySpec::format(std::span<const KeyCombo> steps) {
  std::string text;
  for (const KeyCombo& step : steps) {
    if (!text.empty()) text += ' ';
    text += format(step);
  }
  return text;
}

std::optional<KeyID> KeySpec::key(std::string_view name) {
  return keyForLowered(UnicodeText::lowercased(name));
}

std::string_view KeySpec::name(KeyID key) {
  const std::string_view written = keyInfo(key).name;
  return written == plusKeyName ? plusWord : written;
}

std::optional<KeyModifier> KeySpec::modifierWord(std::string_view word) {
  for (const ModifierWord& entry : modifierWords) {
    if (entry.word == word) return entry.modifier;
  }
  return std::nullopt;
}

}  // namespace corvel
