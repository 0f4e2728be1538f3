#include "CorvelCore/Automation/AutomationError.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

const std::string commandList =
    " The commands are show, hide, toggle, profile, theme, layer/show, layer/reset, layer/store, "
    "layer/edit, layer/remove, export and import.";

TEST(AutomationErrorTest, MessagesAreExact) {
  struct Case {
    AutomationError error;
    std::string message;
  };
  const Case cases[] = {
      {AutomationError::unknownVerb("shwo"), "shwo is not a Quillon command." + commandList},
      {AutomationError::unknownVerb("layer/shwo"),
       "layer/shwo is not a Quillon command." + commandList},
      {AutomationError::unknownVerb(""), "That is not a Quillon command." + commandList},
      {AutomationError::unknownVerb(std::string(33, 'a')),
       "That is not a Quillon command." + commandList},
      {AutomationError::unknownVerb(std::string(32, 'a')),
       std::string(32, 'a') + " is not a Quillon command." + commandList},
      {AutomationError::unknownVerb("show2"), "That is not a Quillon command." + commandList},
      {AutomationError::unknownVerb("sh%77"), "That is not a Quillon command." + commandList},
      {AutomationError::unknownVerb("sh\xC3\xA9w"), "That is not a Quillon command." + commandList},
      {AutomationError::unknownVerb("/show"), "That is not a Quillon command." + commandList},
      {AutomationError::unknownVerb("a b"), "That is not a Quillon command." + commandList},
      {AutomationError::unknownVerb("Z/"), "Z/ is not a Quillon command." + commandList},
      {AutomationError::missing("modifiers"),
       "modifiers is missing. Every Quillon layer is held on modifier keys, so give them, such as "
       "rcmd-rshift or hyper; for layer/edit and layer/remove the layer's name will do."},
      {AutomationError::missing("file"),
       "file is missing. It must be an absolute path that starts with /."},
      {AutomationError::missing("app"),
       "app is missing. It must be a bundle id such as com.apple.Safari."},
      {AutomationError::missing("name"),
       "name is missing. It must be the name of a layer, a theme or a profile, not empty."},
      {AutomationError::missing("on"), "on is missing. It must be 1 or 0."},
      {AutomationError::missing("colour"), "A parameter is missing."},
      {AutomationError::badValue("width"),
       "width must be a number of points, at least 300. More than 4000 reads as 4000."},
      {AutomationError::badValue("position"),
       "position must be one of top, bottom, left, right, center, topLeft, topRight, bottomLeft, "
       "bottomRight, or x:y in points from the top left of the screen's usable area, the part "
       "the menu bar and the Dock leave free."},
      {AutomationError::badValue("x:y"),
       "x:y must be two numbers written x:y, in points from the top left of the screen's usable "
       "area, the part the menu bar and the Dock leave free."},
      {AutomationError::badValue("screen"),
       "screen must be a display's number or part of its name. With no such display, the board "
       "stays on its own."},
      {AutomationError::badValue("theme"), "theme must be a theme's name or id."},
      {AutomationError::badValue("fill"), "fill must be visible, dimmed or blank."},
      {AutomationError::badValue("blank"), "blank must be 1 or 0."},
      {AutomationError::badValue("hideAfterMS"),
       "hideAfterMS must be a whole number of milliseconds, 0 or more. More than 3600000 reads as "
       "3600000."},
      {AutomationError::badValue("fadeOutMS"),
       "fadeOutMS must be a whole number of milliseconds, 0 or more. More than 10000 reads as "
       "10000."},
      {AutomationError::badValue("modifiers"),
       "modifiers must be modifier keys such as rcmd-rshift, lcmd, ctrl-opt or hyper."},
      {AutomationError::badValue("holdDelay"),
       "holdDelay must be a number of seconds, 0 or more. More than 5 reads as 5."},
      {AutomationError::badValue("what"), "what must be layers, theme or sheet."},
      {AutomationError::badValue("escape"),
       "The key escape must be given once, as text, s:symbol, a:bundle.id or s:symbol|text, with "
       "at most 120 characters of text."},
      {AutomationError::badValue("a"),
       "The key a must be given once, as text, s:symbol, a:bundle.id or s:symbol|text, with at "
       "most 120 characters of text."},
      // Only a key name already in its canonical form is taken as a key.
      {AutomationError::badValue("Esc"), "A parameter has a value that does not fit."},
      {AutomationError::badValue("colour"), "A parameter has a value that does not fit."},
      {AutomationError::notAllowed("clickToType"),
       "clickToType works only from the Shortcuts app."},
      {AutomationError::notAllowed("export"),
       "export works only from a quillon:// link or the command-line tool, never from a "
       "notification."},
      {AutomationError::notAllowed("import"),
       "import works only from a quillon:// link or the command-line tool, never from a "
       "notification."},
      {AutomationError::notAllowed("layer/store"), "layer/store is not available from here."},
      {AutomationError::notAllowed("show-2"), "That command is not available from here."},
      {AutomationError::badArgument("Something else went wrong."), "Something else went wrong."},
      {AutomationError::tooLarge(),
       "The command is too large. Send at most 16384 bytes, 200 parameters, 80 keys and 2000 "
       "characters in a value."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.message);
    EXPECT_EQ(c.error.message(), c.message);
  }
}

}  // namespace
}  // namespace corvel
