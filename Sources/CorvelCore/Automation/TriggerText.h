// TriggerText: the text form of a layer trigger used on the command line and
// in links: modifier words joined by "-" or "+", each optionally sided by a
// leading "l" or "r" (rcmd-rshift, lcmd, ctrl-opt, Cmd+Shift), or "hyper".
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "CorvelCore/Faces/LayerTrigger.h"

namespace corvel {

struct TriggerText {
  // Longest text read, in Unicode scalars after trimming.
  static constexpr std::size_t maxScalars = 64;

  // The trigger a text names, or nothing. The text is trimmed of blanks and
  // read without regard to case; "hyper" is the hyper trigger; otherwise
  // every piece between "-" and "+" must be a modifier word ("cmd",
  // "command", "opt", "option", "alt", "ctrl", "control", "shift", "fn"),
  // possibly after "l" or "r" for one side (fn has no sides). An empty
  // piece fails; a repeated part counts once.
  [[nodiscard]] static std::optional<LayerTrigger> parse(std::string_view text);

  // "hyper" for the hyper trigger; otherwise the parts, fn first and then by
  // modifier and side, each as "l" or "r" for a side and the short word
  // ("ctrl", "opt", "shift", "cmd", "fn"), joined by "-". Empty for a
  // trigger without parts.
  [[nodiscard]] static std::string format(const LayerTrigger& trigger);
};

}  // namespace corvel
