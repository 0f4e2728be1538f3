#include "CorvelCore/Automation/AutomationParser.h"
#include "CorvelCore/Automation/CommandLineInterface.h"

#include <gtest/gtest.h>

namespace corvel {
namespace {

// Apps this imaginary Mac has: one Google Chrome, one Safari and two copies
// of Sticky Notes. Dotted bundle identifiers are never looked up.
AppMatch resolve(std::string_view name) {
  if (name.find('.') != std::string_view::npos && !name.ends_with(".app")) {
    ADD_FAILURE() << "looked up " << name;
  }
  if (name == "Google Chrome" || name == "Safari.app") return AppMatch::one("com.google.Chrome");
  if (name == "Safari") return AppMatch::one("com.apple.Safari");
  if (name == "Sticky Notes") return AppMatch::several();
  return AppMatch::none();
}

std::expected<CommandLineAction, AutomationError> parse(const std::vector<std::string>& words) {
  return CommandLineInterface::parse(words, {"/work/here", "/home/u", resolve});
}

std::string refusal(const std::vector<std::string>& words) {
  auto action = parse(words);
  if (action) return "(accepted)";
  return CommandLineInterface::message(action.error());
}

TEST(CommandLineInterfaceTest, RefusalsSayExactlyWhatWasWrong) {
  struct Case {
    std::vector<std::string> words;
    std::string message;
  };
  const std::string longWord(60, 'x');
  const Case cases[] = {
      {{"shwo"},
       "\u201Cshwo\u201D is not a quillon command. Run quillon help to see the commands."},
      {{longWord},
       "\u201C" + std::string(39, 'x') +
           "\u2026\u201D is not a quillon command. Run quillon help to see the "
           "commands."},
      {{"\x01\x02"}, "That is not a quillon command. Run quillon help to see the commands."},
      {{"hide", "--width", "500"},
       "quillon hide does not take the option \u201C--width\u201D. Run quillon help hide to see "
       "what it takes."},
      {{"show", "extra"},
       "quillon show does not take \u201Cextra\u201D. Run quillon help show to see what it "
       "takes."},
      {{"help", "show", "more"},
       "quillon help does not take \u201Cmore\u201D. Run quillon help help to see what it "
       "takes."},
      {{"help", "version"},
       "\u201Cversion\u201D is not a quillon command. Run quillon help to see the commands."},
      {{"themes"}, "quillon themes needs one of list, export or import. Run quillon help themes."},
      {{"layers", "add"},
       "quillon layers takes list, store, edit, remove, export or import, not \u201Cadd\u201D. "
       "Run quillon help layers."},
      {{"layer"}, "quillon layer needs one of show or reset. Run quillon help layer."},
      {{"show", "--width"}, "--width needs a value. Run quillon help show to see what it takes."},
      {{"show", "--text", "q"}, "--text takes KEY=VALUE, such as q=Quit"},
      {{"show", "--symbol", "h"}, "--symbol takes KEY=VALUE, such as h=arrow.left"},
      {{"show", "--text", "nokey=Hi"},
       "\u201Cnokey\u201D is not the name of a key. Name keys as a, 1, f5, esc or left, such as "
       "--text q=Quit."},
      {{"layers", "edit", "--name", "W", "--unset-key", "zz"},
       "\u201Czz\u201D is not the name of a key. Name keys as a, 1, f5, esc or left, such as "
       "--unset-key q."},
      {{"show", "--app", "s=Sticky Notes"},
       "More than one app on this Mac is named \u201CSticky Notes\u201D. Give --app its bundle id, "
       "such "
       "as com.apple.Safari."},
      {{"layers", "store", "--modifiers", "rcmd", "--for-app", "No Such App"},
       "Quillon could not find an app named \u201CNo Such App\u201D on this Mac. Give --for-app "
       "its "
       "bundle id, such as com.apple.Safari."},
      {{"layers", "store", "--modifiers", "rcmd", "--for-app", "a.b", "--for-app", "c.d"},
       "--for-app must be an app's bundle id, such as com.apple.Safari, or its name."},
      {{"show", "-k", "s=a:No Such.app"},
       "Quillon could not find an app named \u201CNo Such.app\u201D on this Mac. Give -k its "
       "bundle "
       "id, such as com.apple.Safari."},
      {{"show", "--width", "299"},
       "--width must be a number of points, at least 300. More than 4000 reads as 4000."},
      {{"layers", "store", "--modifiers", "rcmd", "--hold-delay", "-1"},
       "--hold-delay must be a number of seconds, 0 or more. More than 5 reads as 5."},
      {{"show", "--text", "a=x", "--text", "A=y"},
       "The key a must be given once, with --text, --symbol, --app or --symtext, with at most 120 "
       "characters of text."},
      {{"layers", "store", "--name", "Work"},
       "--modifiers is missing. Every Quillon layer is held on modifier keys, so give them, such "
       "as --modifiers rcmd-rshift or --modifiers hyper; for edit and remove, --name will do."},
      {{"layers", "remove"},
       "--modifiers is missing. Every Quillon layer is held on modifier keys, so give them, such "
       "as --modifiers rcmd-rshift or --modifiers hyper; for edit and remove, --name will do."},
      {{"layers", "store", "--modifiers", "cmd--shift"},
       "--modifiers must be modifier keys such as rcmd-rshift, lcmd, ctrl-opt or hyper."},
      {{"layers", "remove", "--name", "W", "--fill", "dimmed"},
       "quillon layers remove does not take the option \u201C--fill\u201D. Run quillon help layers "
       "to see what it takes."},
      {{"theme"}, "NAME is missing. It must be the name or the id of a profile or a theme."},
      {{"theme", "a", "b"},
       "quillon theme does not take \u201Cb\u201D. Run quillon help theme to see what it takes."},
      {{"layers", "import"},
       "quillon layers import takes one FILE. Put quotes around a name with "
       "spaces."},
      {{"themes", "import", "a.quillonlayer"}, "quillon themes import takes a .quillontheme file."},
      {{"layers", "export"},
       "-f is missing. It must be the file to write, such as "
       "layers.quillonlayer."},
      {{"sheets", "export", "-f", "x.quillonsheet"},
       "--app is missing. It must be an app's bundle id, such as com.apple.Safari, or its name."},
      {{"layers", "list", "--json=yes"},
       "quillon layers list does not take the option \u201C--json=yes\u201D. Run quillon help "
       "layers to see what it takes."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.words));
    EXPECT_EQ(refusal(c.words), c.message);
  }
}

TEST(CommandLineInterfaceTest, ReadsCommandsIntoActions) {
  struct Case {
    std::vector<std::string> words;
    CommandLineAction action;
  };
  const auto sent = [](std::string_view link) {
    auto command = AutomationParser::parse(link);
    EXPECT_TRUE(command.has_value()) << link;
    return CommandLineAction(CommandLineAction::Send{*command});
  };
  const Case cases[] = {
      {{}, CommandLineAction::Help{}},
      {{"HELP", "HIDE"}, CommandLineAction::Help{"hide"}},
      {{"layers", "store", "-h"}, CommandLineAction::Help{"layers"}},
      {{"bogus", "--help"}, CommandLineAction::Help{"bogus"}},
      {{"--version"}, CommandLineAction::Version{}},
      {{"Layers", "LIST", "--json"}, CommandLineAction::ListLayers{true}},
      {{"themes", "list"}, CommandLineAction::ListThemes{false}},
      {{"theme", "--", "-dark"}, sent("quillon://theme?name=-dark")},
      {{"hide", "--fade-out-ms", "300"}, sent("quillon://hide?fadeOutMS=300")},
      {{"toggle", "--screen", std::string("0\x02")}, sent("quillon://toggle?screen=0")},
      {{"layers", "store", "--name=Work", "--modifiers", "rcmd"},
       sent("quillon://layer/store?modifiers=rcmd&name=Work")},
      {{"show", "--position", "Bottom Right", "--width", "5000", "--text", "a=Hi & bye"},
       sent("quillon://show?position=bottomRight&width=4000&a=Hi%20%26%20bye")},
      {{"show", "--app", "s=Google Chrome", "-k", "h=app:Safari.app", "--app", "c=Camino",
        "--symtext", "f=magnifyingglass|Find"},
       sent("quillon://show?c=a:Camino&f=s:magnifyingglass%7CFind&h=a:com.google.Chrome&s=a:com."
            "google.Chrome")},
      {{"show", "--app", "s=Safari", "-k", "t=a:Safari", "-k", "a=A:com.x.y"},
       sent("quillon://show?a=A:com.x.y&s=a:com.apple.Safari&t=a:com.apple.Safari")},
      {{"layers", "store", "--modifiers", "rcmd", "--for-app", "org.example.App"},
       sent("quillon://layer/store?app=org.example.App&modifiers=rcmd")},
      {{"layers", "edit", "--name", "W", "--unset-key", "Esc"},
       sent("quillon://layer/edit?name=W&escape=-")},
      {{"layers", "import", "x.QUILLONLAYER"},
       sent("quillon://import?file=/work/here/x.QUILLONLAYER")},
      {{"sheets", "import", "~/a.corvelsheet"},
       sent("quillon://import?file=/home/u/a.corvelsheet")},
      {{"layers", "export", "--name", "Work", "-f", "out.json"},
       CommandLineAction::ExportLayers{"Work", "/work/here/out.json"}},
      {{"themes", "export", "--file", "/tmp/t.quillontheme"},
       CommandLineAction::ExportTheme{std::nullopt, "/tmp/t.quillontheme"}},
      {{"sheets", "export", "--app", "Google Chrome", "-f", "~"},
       CommandLineAction::ExportSheet{"com.google.Chrome", "/home/u"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.words));
    auto action = parse(c.words);
    ASSERT_TRUE(action.has_value()) << CommandLineInterface::message(action.error());
    EXPECT_EQ(*action, c.action);
  }
}

TEST(CommandLineInterfaceTest, AtMostEightApps) {
  std::vector<std::string> words{"show"};
  for (int i = 0; i < 9; ++i) {
    words.push_back("--app");
    words.push_back(std::string(1, static_cast<char>('a' + i)) + "=com.example.app" +
                    std::to_string(i));
  }
  EXPECT_EQ(refusal(words), "A command may name at most 8 apps. Name fewer.");
  for (std::size_t i = 2; i < words.size(); i += 2) words[i] = words[i].substr(0, 2) + "com.same";
  EXPECT_TRUE(parse(words).has_value());
}

TEST(CommandLineInterfaceTest, HelpTexts) {
  EXPECT_EQ(CommandLineInterface::help("HIDE"),
            "Usage:\n"
            "  quillon show|hide|toggle [--position NAME|X:Y] [--width N] [--screen ID|NAME] "
            "[--theme NAME]\n"
            "      [--fill visible|dimmed|blank] [--hide-after-ms N] [--fade-out-ms N] [--name N] "
            "[KEYS]\n\n"
            "Run quillon help to see every command.");
  const std::string layer = CommandLineInterface::help("layer");
  EXPECT_TRUE(
      layer.starts_with("Usage:\n  quillon layer show [the show options] [KEYS] | layer "
                        "reset\n\nKEYS put words, symbols or apps on keys:\n"));
  EXPECT_EQ(CommandLineInterface::help("nope"), CommandLineInterface::usage());
  EXPECT_EQ(CommandLineInterface::help(std::nullopt), CommandLineInterface::usage());
}

TEST(CommandLineInterfaceTest, VersionLines) {
  EXPECT_EQ(CommandLineInterface::versionLine("1.2", "45"), "quillon 1.2 (45)");
  EXPECT_EQ(CommandLineInterface::versionLine("1.2", std::nullopt), "quillon 1.2");
  EXPECT_EQ(CommandLineInterface::versionLine(std::nullopt, "45"), "quillon, build 45");
  EXPECT_EQ(CommandLineInterface::versionLine(std::nullopt, std::nullopt),
            "quillon, a development build");
}

TEST(CommandLineInterfaceTest, ShownWordsAreCleanedAndQuoted) {
  EXPECT_EQ(CommandLineInterface::shown("a\u2028b\u200Bc"), "\u201Cabc\u201D");
  EXPECT_EQ(CommandLineInterface::shown(std::string(40, 'y')),
            "\u201C" + std::string(40, 'y') + "\u201D");
}

}  // namespace
}  // namespace corvel
