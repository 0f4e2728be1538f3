#include "CorvelCore/Automation/CommandGrammar.h"

#include <algorithm>
#include <array>
#include <string>

#include "CorvelCore/Automation/AutomationError.h"
#include "CorvelCore/Layers/LayerCodec.h"

namespace corvel {
namespace {

using Value = CommandOption::Value;
using Key = CommandOption::Key;
using App = CommandOption::App;
constexpr std::string_view kAnApp = "an app's bundle id, such as com.apple.Safari, or its name";

// ---- Options ----

constexpr OptionSpec kPosition{.word = "--position",
                               .option = {Value{"position"}},
                               .placeholder = "NAME|X:Y",
                               .summary = "where the board goes",
                               .completion = ValueKind::position};
constexpr OptionSpec kWidth{.word = "--width",
                            .option = {Value{"width"}},
                            .placeholder = "N",
                            .summary = "the board's width in points"};
constexpr OptionSpec kScreen{.word = "--screen",
                             .option = {Value{"screen"}},
                             .placeholder = "ID|NAME",
                             .summary = "the display to show it on"};
constexpr OptionSpec kTheme{.word = "--theme",
                            .option = {Value{"theme"}},
                            .placeholder = "NAME",
                            .summary = "the theme to show it in",
                            .completion = ValueKind::theme};
constexpr OptionSpec kFill{.word = "--fill",
                           .option = {Value{"fill"}},
                           .placeholder = "visible|dimmed|blank",
                           .summary = "how keys without a label look",
                           .completion = ValueKind::fill};
constexpr OptionSpec kHideAfter{.word = "--hide-after-ms",
                                .option = {Value{"hideAfterMS"}},
                                .placeholder = "N",
                                .summary = "hide it again after this many milliseconds"};
constexpr OptionSpec kFadeOut{.word = "--fade-out-ms",
                              .option = {Value{"fadeOutMS"}},
                              .placeholder = "N",
                              .summary = "how many milliseconds hiding fades"};
constexpr OptionSpec kShownName{.word = "--name",
                                .option = {Value{"name"}},
                                .placeholder = "N",
                                .summary = "the name of the layer shown"};

// In the order KEYS lists them.
constexpr std::array kKeyOptions{
    OptionSpec{.word = "--text",
               .option = {Key{"text:"}},
               .placeholder = "KEY=TEXT",
               .summary = "put a text on a key",
               .example = "q=Quit",
               .completion = ValueKind::keyAssignment},
    OptionSpec{.word = "--symbol",
               .option = {Key{"s:"}},
               .placeholder = "KEY=NAME",
               .summary = "put a symbol on a key",
               .example = "h=arrow.left",
               .completion = ValueKind::keyAssignment},
    OptionSpec{.word = "--app",
               .option = {CommandOption::AppKey{}},
               .placeholder = "KEY=APP",
               .summary = "make a key open an app",
               .example = "s=Safari",
               .completion = ValueKind::keyAssignment},
    OptionSpec{.word = "--symtext",
               .option = {Key{"symtext:"}},
               .placeholder = "KEY=SYMBOL|TEXT",
               .summary = "put a symbol and a text on a key",
               .example = "f=magnifyingglass|Find",
               .completion = ValueKind::keyAssignment},
    OptionSpec{.word = "-k",
               .option = {CommandOption::RawKey{}},
               .placeholder = "KEY=VALUE",
               .summary = "give a key a value as a link writes it",
               .example = "h=s:arrow.left",
               .completion = ValueKind::keyAssignment},
    OptionSpec{.word = "--key",
               .option = {CommandOption::RawKey{}},
               .placeholder = "KEY=VALUE",
               .summary = "give a key a value as a link writes it",
               .example = "h=s:arrow.left",
               .completion = ValueKind::keyAssignment,
               .aliasOf = "-k"},
};

constexpr OptionSpec kModifiers{.word = "--modifiers",
                                .option = {Value{"modifiers"}},
                                .placeholder = "M",
                                .summary = "the modifier keys that hold the layer"};
constexpr OptionSpec kLayerName{.word = "--name",
                                .option = {Value{"name"}},
                                .placeholder = "N",
                                .summary = "the layer's name",
                                .completion = ValueKind::layer};
constexpr OptionSpec kForApp{.word = "--for-app",
                             .option = {App{"app"}},
                             .placeholder = "APP",
                             .summary = "the app the layer works in",
                             .description = kAnApp};
constexpr OptionSpec kHoldDelay{.word = "--hold-delay",
                                .option = {Value{"holdDelay"}},
                                .placeholder = "S",
                                .summary = "seconds to hold the keys before the layer shows"};
constexpr OptionSpec kUnsetKey{.word = "--unset-key",
                               .option = {CommandOption::UnsetKey{}},
                               .placeholder = "KEY",
                               .summary = "take away a key's assignment",
                               .example = "q",
                               .completion = ValueKind::keyName};
constexpr OptionSpec kJSON{.word = "--json",
                           .option = {CommandOption::JSON{}},
                           .summary = "print JSON",
                           .completion = ValueKind::none};
constexpr OptionSpec kThemeName{.word = "--name",
                                .option = {Value{"name"}},
                                .placeholder = "N",
                                .summary = "the theme's name or id",
                                .completion = ValueKind::theme};
constexpr OptionSpec kSheetApp{.word = "--app",
                               .option = {App{"app"}},
                               .placeholder = "APP",
                               .summary = "the app whose cheatsheet to write",
                               .description = kAnApp,
                               .completion = ValueKind::sheetApp};
constexpr OptionSpec kTarget{.word = "-f",
                             .option = {CommandOption::File{}},
                             .placeholder = "FILE",
                             .summary = "the new file to write",
                             .description = "the file to write, such as layers.quillonlayer",
                             .completion = ValueKind::exportFile};
constexpr OptionSpec kTargetLong{.word = "--file",
                                 .option = {CommandOption::File{}},
                                 .placeholder = "FILE",
                                 .summary = kTarget.summary,
                                 .description = kTarget.description,
                                 .completion = ValueKind::exportFile,
                                 .aliasOf = "-f"};
static_assert(kTarget.description.ends_with(LayerCodec::fileExtension),
              "-f's example names a layers file");

// ---- Plain words ----

constexpr PlainWordSpec kTopic{
    .word = "COMMAND", .completion = ValueKind::helpTopic, .optional = true};
constexpr PlainWordSpec kProfileName{.word = "NAME",
                                     .parameter = "name",
                                     .description = "the name or the id of a profile or a theme"};
constexpr PlainWordSpec kThemeWord{.word = "NAME",
                                   .parameter = "name",
                                   .description = kProfileName.description,
                                   .completion = ValueKind::theme};
constexpr PlainWordSpec kImportFile{.word = "FILE",
                                    .parameter = "file",
                                    .description = "the file to import",
                                    .completion = ValueKind::importFile};

// ---- What each command takes ----

using S = Shown;
// The key options, shown together as [KEYS].
constexpr auto keys() {
  std::array<OptionUse, kKeyOptions.size()> uses{};
  for (std::size_t i = 0; i < kKeyOptions.size(); ++i) {
    uses.at(i) = {&kKeyOptions.at(i), kKeyOptions.at(i).aliasOf.empty() ? S::inKeys : S::hidden};
  }
  return uses;
}
template <std::size_t A, std::size_t B>
constexpr std::array<OptionUse, A + B> joined(const std::array<OptionUse, A>& a,
                                              const std::array<OptionUse, B>& b) {
  std::array<OptionUse, A + B> out{};
  std::copy(a.begin(), a.end(), out.begin());
  std::copy(b.begin(), b.end(), out.begin() + A);
  return out;
}
constexpr std::array<OptionUse, 8> showOptions(S shown) {
  return {{{&kPosition, shown},
           {&kWidth, shown},
           {&kScreen, shown},
           {&kTheme, shown},
           {&kFill, shown},
           {&kHideAfter, shown},
           {&kFadeOut, shown},
           {&kShownName, shown}}};
}

constexpr auto kShowUses = joined(showOptions(S::optional), keys());
constexpr auto kLayerShowUses = joined(showOptions(S::inShowOptions), keys());
constexpr std::array kHideUses{OptionUse{&kFadeOut}};
constexpr auto kStoreUses = joined(
    std::array{OptionUse{&kModifiers, S::required}, OptionUse{&kLayerName}, OptionUse{&kForApp},
               OptionUse{&kHoldDelay}, OptionUse{&kFill, S::optional, "F"}},
    keys());
constexpr auto kEditUses =
    joined(joined(std::array{OptionUse{&kModifiers, S::either}, OptionUse{&kLayerName, S::either},
                             OptionUse{&kForApp}},
                  keys()),
           std::array{OptionUse{&kUnsetKey}});
constexpr std::array kRemoveUses{OptionUse{&kModifiers, S::either},
                                 OptionUse{&kLayerName, S::either}, OptionUse{&kForApp}};
constexpr std::array kListUses{OptionUse{&kJSON}};
constexpr std::array kLayersExportUses{OptionUse{&kLayerName}, OptionUse{&kTarget, S::required},
                                       OptionUse{&kTargetLong, S::hidden}};
constexpr std::array kThemesExportUses{OptionUse{&kThemeName}, OptionUse{&kTarget, S::required},
                                       OptionUse{&kTargetLong, S::hidden}};
constexpr std::array kSheetsExportUses{OptionUse{&kSheetApp, S::required},
                                       OptionUse{&kTarget, S::required},
                                       OptionUse{&kTargetLong, S::hidden}};

// ---- Commands ----

using N = CommandName;
constexpr std::array kCommands{
    CommandSpec{.first = "help",
                .name = N::help,
                .plain = &kTopic,
                .summary = "print the usage, or the help of a command",
                .exampleWords = "help layers",
                .exampleMeaning = "Print how the layers commands are used."},
    CommandSpec{.first = "version",
                .name = N::version,
                .summary = "print the tool's version",
                .exampleWords = "version",
                .exampleMeaning = "Print the tool's version."},
    CommandSpec{.first = "--version",
                .name = N::version,
                .summary = "print the tool's version",
                .aliasOf = "version"},
    CommandSpec{
        .first = "show",
        .name = N::show,
        .verb = "show",
        .options = kShowUses,
        .summary = "show the overlay",
        .exampleWords = "show --position bottom --width 900 --hide-after-ms 4000",
        .exampleMeaning =
            "Show the board at the bottom of the screen, 900 points wide, for four seconds."},
    CommandSpec{
        .first = "toggle",
        .name = N::toggle,
        .verb = "toggle",
        .options = kShowUses,
        .summary = "show the overlay, or hide it when it shows",
        .exampleWords = "toggle --theme space-black",
        .exampleMeaning = "Show the board in the theme space-black, or hide it when it shows."},
    CommandSpec{.first = "hide",
                .name = N::hide,
                .verb = "hide",
                .options = kHideUses,
                .summary = "hide the overlay",
                .exampleWords = "hide --fade-out-ms 300",
                .exampleMeaning = "Hide the board, fading it out over 300 milliseconds."},
    CommandSpec{.first = "profile",
                .name = N::profile,
                .verb = "profile",
                .plain = &kProfileName,
                .summary = "switch to a profile",
                .exampleWords = "profile Presenting",
                .exampleMeaning = "Switch to the profile named Presenting."},
    CommandSpec{.first = "theme",
                .name = N::theme,
                .verb = "theme",
                .plain = &kThemeWord,
                .summary = "switch to a theme",
                .exampleWords = "theme space-black",
                .exampleMeaning = "Switch to the theme whose id is space-black."},
    CommandSpec{
        .first = "layer",
        .sub = "show",
        .name = N::layerShow,
        .verb = "layer/show",
        .options = kLayerShowUses,
        .summary = "show a layer that is not stored",
        .exampleWords = "layer show --text c=Copy --symbol v=doc.on.clipboard --symtext "
                        "'f=magnifyingglass|Find'",
        .exampleMeaning =
            "Show a layer for now: a word on C, a symbol on V, and a symbol with a word on F."},
    CommandSpec{.first = "layer",
                .sub = "reset",
                .name = N::layerReset,
                .verb = "layer/reset",
                .summary = "take away the layer shown for now",
                .exampleWords = "layer reset",
                .exampleMeaning = "Take the layer shown for now away again."},
    CommandSpec{.first = "layers",
                .sub = "list",
                .name = N::layersList,
                .options = kListUses,
                .fileKind = ExportKind::layers,
                .summary = "list the stored layers",
                .exampleWords = "layers list --json",
                .exampleMeaning = "List the stored layers as JSON."},
    CommandSpec{.first = "layers",
                .sub = "store",
                .name = N::layersStore,
                .verb = "layer/store",
                .options = kStoreUses,
                .fileKind = ExportKind::layers,
                .summary = "store a layer held on modifier keys",
                .exampleWords = "layers store --modifiers rcmd-rshift --name Apps --app s=Safari "
                                "--app t=com.apple.Terminal",
                .exampleMeaning =
                    "Store a layer named Apps, held on the right command and shift keys, whose S "
                    "and T keys open Safari and Terminal. It stays off until you turn it on."},
    CommandSpec{.first = "layers",
                .sub = "edit",
                .name = N::layersEdit,
                .verb = "layer/edit",
                .options = kEditUses,
                .fileKind = ExportKind::layers,
                .summary = "change a stored layer",
                .exampleWords = "layers edit --name Apps --text n=Notes --unset-key t",
                .exampleMeaning =
                    "Put the word Notes on N in the layer named Apps, and take away what T does."},
    CommandSpec{.first = "layers",
                .sub = "remove",
                .name = N::layersRemove,
                .verb = "layer/remove",
                .options = kRemoveUses,
                .fileKind = ExportKind::layers,
                .summary = "remove a stored layer",
                .exampleWords = "layers remove --modifiers rcmd-rshift",
                .exampleMeaning = "Remove the layer held on the right command and shift keys."},
    CommandSpec{.first = "layers",
                .sub = "export",
                .name = N::layersExport,
                .options = kLayersExportUses,
                .fileKind = ExportKind::layers,
                .summary = "write layers to a new file",
                .exampleWords = "layers export --name Apps -f ~/Desktop/Apps.quillonlayer",
                .exampleMeaning = "Write the layer named Apps to a new file on the desktop."},
    CommandSpec{.first = "layers",
                .sub = "import",
                .name = N::layersImport,
                .verb = "import",
                .plain = &kImportFile,
                .fileKind = ExportKind::layers,
                .summary = "bring in a layers file",
                .exampleWords = "layers import ~/Downloads/Apps.quillonlayer",
                .exampleMeaning = "Bring the layers of a file into Quillon."},
    CommandSpec{
        .first = "themes",
        .sub = "list",
        .name = N::themesList,
        .options = kListUses,
        .fileKind = ExportKind::theme,
        .summary = "list the themes",
        .exampleWords = "themes list",
        .exampleMeaning = "List the built-in themes and your own; a * marks the theme in use."},
    CommandSpec{
        .first = "themes",
        .sub = "export",
        .name = N::themesExport,
        .options = kThemesExportUses,
        .fileKind = ExportKind::theme,
        .summary = "write a theme to a new file",
        .exampleWords = "themes export --name space-black -f ~/Desktop/space-black.quillontheme",
        .exampleMeaning = "Write the theme whose id is space-black to a new file."},
    CommandSpec{.first = "themes",
                .sub = "import",
                .name = N::themesImport,
                .verb = "import",
                .plain = &kImportFile,
                .fileKind = ExportKind::theme,
                .summary = "bring in a theme file",
                .exampleWords = "themes import ~/Downloads/Night.quillontheme",
                .exampleMeaning = "Bring a theme file into Quillon."},
    CommandSpec{.first = "sheets",
                .sub = "list",
                .name = N::sheetsList,
                .options = kListUses,
                .fileKind = ExportKind::sheet,
                .summary = "list the changed cheatsheets",
                .exampleWords = "sheets list",
                .exampleMeaning = "List the apps whose cheatsheets you changed."},
    CommandSpec{
        .first = "sheets",
        .sub = "export",
        .name = N::sheetsExport,
        .options = kSheetsExportUses,
        .fileKind = ExportKind::sheet,
        .summary = "write an app's changed cheatsheet to a new file",
        .exampleWords = "sheets export --app com.apple.Safari -f ~/Desktop/Safari.quillonsheet",
        .exampleMeaning = "Write the changes you made to Safari's cheatsheet to a new file."},
    CommandSpec{.first = "sheets",
                .sub = "import",
                .name = N::sheetsImport,
                .verb = "import",
                .plain = &kImportFile,
                .fileKind = ExportKind::sheet,
                .summary = "bring in a cheatsheet file",
                .exampleWords = "sheets import ~/Downloads/Safari.quillonsheet",
                .exampleMeaning = "Bring a cheatsheet file into Quillon."},
};

constexpr std::array kGroups{
    CommandGroup{"layer", "show a layer for now, or reset it"},
    CommandGroup{"layers", "list, store, edit, remove, export or import layers"},
    CommandGroup{"themes", "list, export or import themes"},
    CommandGroup{"sheets", "list, export or import changed cheatsheets"},
};

// ---- What the shell completions and the manual page need ----
//
// Both are written from these tables alone, so a row they could not present
// does not build: a new command cannot ship without its completion.

template <typename Holds>
constexpr bool everyCommand(Holds holds) {
  for (const auto& command : kCommands) {
    if (!holds(command)) return false;
  }
  return true;
}
template <typename Holds>
constexpr bool everyOption(Holds holds) {
  return everyCommand([&](const CommandSpec& command) {
    for (const auto& use : command.options) {
      if (!holds(command, *use.definition)) return false;
    }
    return true;
  });
}
constexpr bool isFile(ValueKind kind) {
  return kind == ValueKind::importFile || kind == ValueKind::exportFile;
}

static_assert(everyCommand([](const CommandSpec& command) { return !command.summary.empty(); }),
              "every command has a menu text");
static_assert(everyCommand([](const CommandSpec& command) {
                return command.sub.empty() ||
                       std::any_of(kGroups.begin(), kGroups.end(), [&](const CommandGroup& group) {
                         return group.first == command.first && !group.summary.empty();
                       });
              }),
              "every first word with subcommands has a menu text");
static_assert(everyCommand([](const CommandSpec& command) {
                if (command.aliasOf.empty()) {
                  return !command.exampleWords.empty() && !command.exampleMeaning.empty();
                }
                return std::any_of(kCommands.begin(), kCommands.end(), [&](const CommandSpec& c) {
                  return c.first == command.aliasOf && c.aliasOf.empty();
                });
              }),
              "every command has an example, and another spelling names its command");
static_assert(everyCommand([](const CommandSpec& command) {
                return command.plain == nullptr || (!command.plain->word.empty() &&
                                                    command.plain->completion != ValueKind::none);
              }),
              "every plain word has a placeholder and is completed");
static_assert(everyOption([](const CommandSpec&, const OptionSpec& option) {
                const bool flag = std::holds_alternative<CommandOption::JSON>(option.option.kind);
                return !option.summary.empty() && flag == option.placeholder.empty() &&
                       flag == (option.completion == ValueKind::none);
              }),
              "every option has a menu text, and a placeholder and a completion when it takes a "
              "value");
static_assert(everyOption([](const CommandSpec& command, const OptionSpec& option) {
                return option.aliasOf.empty() ||
                       std::any_of(command.options.begin(), command.options.end(),
                                   [&](const OptionUse& use) {
                                     return use.definition->word == option.aliasOf &&
                                            use.definition->aliasOf.empty();
                                   });
              }),
              "another spelling of an option goes with the option it spells");
static_assert(everyOption([](const CommandSpec& command, const OptionSpec& option) {
                return !isFile(option.completion) || command.fileKind.has_value();
              }) &&
                  everyCommand([](const CommandSpec& command) {
                    return command.plain == nullptr || !isFile(command.plain->completion) ||
                           command.fileKind.has_value();
                  }),
              "a command that completes files says what its files hold");

// ---- The usage text's lines ----

constexpr std::array kShowLine{UsageEntry{"show"}, UsageEntry{"hide"}, UsageEntry{"toggle"}};
constexpr std::array kProfileLine{UsageEntry{"profile"}, UsageEntry{"theme"}};
constexpr std::array kLayerLine{UsageEntry{"layer show"}, UsageEntry{"layer reset"}};
constexpr std::array kLayersLine{
    UsageEntry{"layers list"},         UsageEntry{"layers store", true},
    UsageEntry{"layers edit", true},   UsageEntry{"layers remove", true},
    UsageEntry{"layers export", true}, UsageEntry{"layers import"}};
constexpr std::array kThemesLine{UsageEntry{"themes list"}, UsageEntry{"themes export"},
                                 UsageEntry{"themes import"}};
constexpr std::array kSheetsLine{UsageEntry{"sheets list"}, UsageEntry{"sheets export"},
                                 UsageEntry{"sheets import"}};
constexpr std::array kHelpLine{UsageEntry{"help"}, UsageEntry{"version"}};
constexpr std::array kUsageLines{
    UsageLine{kShowLine, UsageJoin::merged},      UsageLine{kProfileLine, UsageJoin::fullNames},
    UsageLine{kLayerLine, UsageJoin::fullNames},  UsageLine{kLayersLine, UsageJoin::sameFirst},
    UsageLine{kThemesLine, UsageJoin::sameFirst}, UsageLine{kSheetsLine, UsageJoin::sameFirst},
    UsageLine{kHelpLine, UsageJoin::fullNames},
};

// The topics `help` takes: every first word but those of help and version.
constexpr auto kHelpTopics = [] {
  std::array<std::string_view, 9> topics{};
  std::size_t count = 0;
  for (const auto& command : kCommands) {
    if (command.name == N::help || command.name == N::version) continue;
    if (std::find(topics.begin(), topics.begin() + count, command.first) !=
        topics.begin() + count) {
      continue;
    }
    topics.at(count++) = command.first;
  }
  return topics;
}();
static_assert(kHelpTopics.back() == "sheets", "every topic has its place");

}  // namespace

std::span<const CommandSpec> CommandGrammar::commands() { return kCommands; }

std::span<const CommandGroup> CommandGrammar::groups() { return kGroups; }

std::span<const UsageLine> CommandGrammar::usageLines() { return kUsageLines; }

std::span<const OptionSpec> CommandGrammar::keyOptions() { return kKeyOptions; }

std::span<const std::string_view> CommandGrammar::helpTopics() { return kHelpTopics; }

std::span<const CommandSpec> CommandGrammar::withFirst(std::string_view first) {
  const auto begin =
      std::find_if(kCommands.begin(), kCommands.end(),
                   [&](const CommandSpec& command) { return command.first == first; });
  const auto end = std::find_if(begin, kCommands.end(),
                                [&](const CommandSpec& command) { return command.first != first; });
  return {begin, end};
}

const CommandSpec* CommandGrammar::named(std::string_view name) {
  for (const auto& command : kCommands) {
    if (CommandGrammar::name(command) == name) return &command;
  }
  return nullptr;
}

const OptionSpec* CommandGrammar::option(const CommandSpec& command, std::string_view word) {
  for (const auto& use : command.options) {
    if (use.definition->word == word) return use.definition;
  }
  return nullptr;
}

const OptionSpec* CommandGrammar::optionFor(const CommandSpec& command,
                                            std::string_view parameter) {
  for (const auto& use : command.options) {
    if (use.shown != Shown::hidden && use.definition->option.parameter() == parameter)
      return use.definition;
  }
  return nullptr;
}

const OptionSpec* CommandGrammar::optionFor(std::string_view parameter) {
  for (const auto& command : kCommands) {
    if (const OptionSpec* found = optionFor(command, parameter)) return found;
  }
  return nullptr;
}

std::string_view CommandGrammar::description(const OptionSpec& option) {
  if (!option.description.empty()) return option.description;
  return AutomationError::expectation(option.option.parameter()).value_or(option.summary);
}

std::string CommandGrammar::name(const CommandSpec& command) {
  std::string text(command.first);
  if (!command.sub.empty()) text.append(" ").append(command.sub);
  return text;
}

}  // namespace corvel
