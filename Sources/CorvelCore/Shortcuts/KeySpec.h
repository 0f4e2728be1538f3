// KeySpec: the text form of a shortcut, as cheatsheet files store it and as
// key names are read everywhere: modifier words and a key name joined with
// "+" (cmd+shift+k), and a two-step shortcut as two such steps separated by
// one space (ctrl+k ctrl+s).
//
// Reading takes the modifier words "cmd", "shift", "opt", "alt", "ctrl" and
// "fn" and any key name without regard to case. A key is named by its key
// name ("a", "f5", "left", "pageup"), by its identifier ("keyA",
// "arrowLeft"), or, for the keypad's "+", by "plus". Writing gives one
// canonical text: the modifiers in the order ctrl, opt, shift, cmd, fn, then
// the key name, with "+" written "plus"; so equivalent spellings
// (Alt+Cmd+K, cmd+opt+k) end up as one text.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Shortcuts/KeyCombo.h"

namespace corvel {

struct KeySpec {
  // A shortcut has one step or two.
  static constexpr std::size_t maxSteps = 2;

  // The steps of a shortcut text, or nothing. Each step is modifier words
  // and one key name joined by "+", with no empty piece and the key last;
  // steps are separated by exactly one U+0020 space, with none at either
  // end. A repeated modifier word counts once.
  [[nodiscard]] static std::optional<std::vector<KeyCombo>> parse(std::string_view text);

  // The canonical text of the steps, joined by one space (empty for none).
  [[nodiscard]] static std::string format(std::span<const KeyCombo> steps);
  // The canonical text of one step.
  [[nodiscard]] static std::string format(const KeyCombo& step);

  // The key a shortcut text names by `name`, without regard to case: a key
  // name, an identifier, or "plus"; never a modifier word.
  [[nodiscard]] static std::optional<KeyID> key(std::string_view name);
  // How a key is written in a shortcut text: its key name, "plus" for "+",
  // "?" for a value outside the enumeration.
  [[nodiscard]] static std::string_view name(KeyID key);
  // The modifier a (lower-case) word of a shortcut text stands for.
  [[nodiscard]] static std::optional<KeyModifier> modifierWord(std::string_view word);
};

}  // namespace corvel
