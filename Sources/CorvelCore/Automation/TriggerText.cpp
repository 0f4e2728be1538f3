#include "CorvelCore/Automation/TriggerText.h"

#include <algorithm>
#include <array>
#include <vector>

#include "CorvelCore/Support/UnicodeText.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

struct ModifierWord {
  std::string_view word;
  TriggerModifier modifier;
};

constexpr std::array<ModifierWord, 9> modifierWords{{
    {"cmd", TriggerModifier::command},
    {"command", TriggerModifier::command},
    {"opt", TriggerModifier::option},
    {"option", TriggerModifier::option},
    {"alt", TriggerModifier::option},
    {"ctrl", TriggerModifier::control},
    {"control", TriggerModifier::control},
    {"shift", TriggerModifier::shift},
    {"fn", TriggerModifier::fn},
}};

// The word each modifier is written with, in the order of TriggerModifier.
constexpr std::array<std::string_view, 5> shortWords{"ctrl", "opt", "shift", "cmd", "fn"};

constexpr std::string_view hyperWord = "hyper";

std::optional<TriggerModifier> modifierNamed(std::string_view word) {
  for (const ModifierWord& entry : modifierWords) {
    if (entry.word == word) return entry.modifier;
  }
  return std::nullopt;
}

std::optional<TriggerPart> partNamed(std::string_view piece) {
  if (const auto modifier = modifierNamed(piece)) return TriggerPart(*modifier);
  if (piece.size() < 2 || (piece.front() != 'l' && piece.front() != 'r')) return std::nullopt;
  const auto modifier = modifierNamed(piece.substr(1));
  if (!modifier || *modifier == TriggerModifier::fn) return std::nullopt;
  return TriggerPart(*modifier, piece.front() == 'l' ? Side::left : Side::right);
}

// The written order: fn first, then by modifier and side.
int weight(const TriggerPart& part) {
  const int base =
      part.modifier == TriggerModifier::fn ? 0 : 3 * (static_cast<int>(part.modifier) + 1);
  return base + static_cast<int>(part.side);
}

}  // namespace

std::optional<LayerTrigger> TriggerText::parse(std::string_view text) {
  const std::string lowered = UnicodeText::lowercased(UnicodeText::trimmingBlanks(text));
  if (lowered.empty() || UTF8::scalarCount(lowered) > maxScalars) return std::nullopt;
  if (lowered == hyperWord) return LayerTrigger::hyper();
  std::vector<TriggerPart> parts;
  std::size_t start = 0;
  while (true) {
    const std::size_t separator = lowered.find_first_of("-+", start);
    const auto part = partNamed(std::string_view(lowered).substr(start, separator - start));
    if (!part) return std::nullopt;
    parts.push_back(*part);
    if (separator == std::string::npos) break;
    start = separator + 1;
  }
  return LayerTrigger(parts);
}

std::string TriggerText::format(const LayerTrigger& trigger) {
  if (trigger.isHyper()) return std::string(hyperWord);
  std::vector<TriggerPart> parts = trigger.parts();
  std::stable_sort(parts.begin(), parts.end(), [](const TriggerPart& a, const TriggerPart& b) {
    return weight(a) < weight(b);
  });
  std::string text;
  for (const TriggerPart& part : parts) {
    if (!text.empty()) text += '-';
    if (part.side == Side::left) text += 'l';
    if (part.side == Side::right) text += 'r';
    text += shortWords[static_cast<std::size_t>(part.modifier)];
  }
  return text;
}

}  // namespace corvel
