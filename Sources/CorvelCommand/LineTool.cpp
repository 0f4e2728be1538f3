#include "CorvelCommand/LineTool.h"

#include <algorithm>

#include "CorvelCommand/SupportFiles.h"
#include "CorvelCore/Automation/AutomationListings.h"
#include "CorvelCore/Automation/CommandLineInterface.h"
#include "CorvelCore/Automation/CommandLineMessages.h"
#include "CorvelCore/Automation/DocumentFiles.h"
#include "CorvelCore/Layers/LayerCodec.h"
#include "CorvelCore/Sheets/SheetCodec.h"
#include "CorvelCore/Theme/BuiltInThemes.h"
#include "CorvelCore/Theme/ThemeCodec.h"

namespace corvel {
namespace {

using Exit = CommandLineInterface::Exit;
using Status = std::int32_t;

constexpr Status status(Exit exit) { return static_cast<Status>(exit); }

std::string withLineBreak(std::string_view text) { return std::string(text) + "\n"; }

// One command line run against the world: each case of the action is one
// function, and each returns the exit status.
struct Driver {
  const ToolWorld& world;

  // Prints one result; a script must learn when it did not arrive, while a
  // reader that stopped reading (`| head -1`) is answered quietly.
  Status say(std::string_view text) const {
    switch (world.out(withLineBreak(text))) {
      case ToolWorld::Written::all:
        return status(Exit::done);
      case ToolWorld::Written::readerGone:
        return status(Exit::fileProblem);
      case ToolWorld::Written::failed:
        return refuse(CommandLineMessages::text(ToolMessage::outputUnwritable), Exit::fileProblem);
    }
    return status(Exit::fileProblem);
  }

  Status refuse(std::string_view message, Exit exit) const {
    (void)world.err(withLineBreak(message));
    return status(exit);
  }

  Status operator()(const CommandLineAction::Version&) const {
    return say(CommandLineInterface::versionLine(world.version.shortVersion, world.version.build));
  }

  Status operator()(const CommandLineAction::Help& help) const {
    return say(CommandLineInterface::help(help.topic));
  }

  Status operator()(const CommandLineAction::ListLayers& list) const {
    // The rows are made while the file is read: a listing never holds all
    // the layers of a large file.
    auto data = SupportFiles::layersFile(world);
    std::expected<std::vector<LayerRow>, LayerError> rows;
    if (data) {
      rows = AutomationListings::layerRows(*data);
    } else if (data.error() == ToolWorld::ReadProblem::unreadable) {
      rows = std::unexpected(LayerError::notJSON());
    }
    if (!rows)
      return refuse(CommandLineMessages::text(ToolMessage::layersUnreadable), Exit::fileProblem);
    return say(list.json ? AutomationListings::json(*rows) : AutomationListings::text(*rows));
  }

  Status operator()(const CommandLineAction::ListThemes& list) const {
    const auto rows = AutomationListings::themes(
        BuiltInThemes::all(), SupportFiles::ownThemes(world), SupportFiles::themeInUse(world));
    return say(list.json ? AutomationListings::json(rows) : AutomationListings::text(rows));
  }

  Status operator()(const CommandLineAction::ListSheets& list) const {
    const auto rows = AutomationListings::rows(SupportFiles::sheets(world));
    return say(list.json ? AutomationListings::json(rows) : AutomationListings::text(rows));
  }

  Status operator()(const CommandLineAction::ExportLayers& request) const {
    const bool named = request.name.has_value();
    const auto layers = [&]() -> std::expected<std::vector<Layer>, std::string> {
      auto all = SupportFiles::layers(world);
      if (!all) return std::unexpected(CommandLineMessages::text(ToolMessage::layersUnreadable));
      return named ? AutomationListings::layers(*all, *request.name) : std::move(*all);
    };
    return exportTo(ExportKind::layers, request.path, named,
                    [&]() -> std::expected<Exported, std::string> {
                      auto found = layers();
                      if (!found) return std::unexpected(found.error());
                      if (found->empty()) return nothingTo(ExportKind::layers, named);
                      const std::size_t count = found->size();
                      return Exported{LayerCodec::encode(*found),
                                      count == 1 ? "1 layer" : std::to_string(count) + " layers"};
                    });
  }

  Status operator()(const CommandLineAction::ExportTheme& request) const {
    const bool named = request.name.has_value();
    return exportTo(ExportKind::theme, request.path, named,
                    [&]() -> std::expected<Exported, std::string> {
                      const std::vector<Theme> mine = SupportFiles::ownThemes(world);
                      const auto find = [&](std::string_view wanted) {
                        return AutomationListings::match(BuiltInThemes::all(), mine, wanted);
                      };
                      // Without a name, the theme the app uses now, else its default.
                      auto theme = named ? find(*request.name) : std::nullopt;
                      if (!named) {
                        const auto inUse = SupportFiles::themeInUse(world);
                        theme = inUse ? find(*inUse) : std::nullopt;
                        if (!theme) theme = find(BuiltInThemes::defaultID);
                      }
                      if (!theme) return nothingTo(ExportKind::theme, named);
                      return Exported{ThemeCodec::encode(*theme), theme->name};
                    });
  }

  Status operator()(const CommandLineAction::ExportSheet& request) const {
    return exportTo(
        ExportKind::sheet, request.path, true, [&]() -> std::expected<Exported, std::string> {
          const auto sheets = SupportFiles::sheets(world);
          const auto sheet =
              std::find_if(sheets.begin(), sheets.end(),
                           [&](const SheetOverrides& s) { return s.bundleID == request.app; });
          if (sheet == sheets.end()) return nothingTo(ExportKind::sheet, true);
          return Exported{SheetCodec::encode(*sheet), sheet->appName};
        });
  }

  Status operator()(const CommandLineAction::Send& send) const {
    if (const auto* import = send.command.as<AutomationCommand::ImportFile>()) {
      if (auto problem = importProblem(import->file)) {
        return refuse(*problem, Exit::fileProblem);
      }
    }
    const std::optional<std::string> app = world.quillonApp();
    if (!app)
      return refuse(CommandLineMessages::text(ToolMessage::notInstalled), Exit::notInstalled);
    if (world.handOver(send.command.link(), *app) != HandOver::delivered) {
      return refuse(CommandLineMessages::text(ToolMessage::notDelivered), Exit::notDelivered);
    }
    return status(Exit::done);
  }

 private:
  // What an export writes, and how its success line names it.
  struct Exported {
    std::string data;
    std::string what;
  };

  static std::unexpected<std::string> nothingTo(ExportKind kind, bool named) {
    return std::unexpected(
        CommandLineMessages::message(ExportRefusal::nothingToExport, kind, named));
  }

  // An export: the target is checked first, then what to export is found,
  // encoded and written as a new file.
  template <class Find>
  Status exportTo(ExportKind kind, const std::string& path, bool named, const Find& find) const {
    auto target =
        ExportPath::check(path, kind, world.quillonApp(), world.supportFolder, world.exportChecks);
    if (!target) {
      return refuse(CommandLineMessages::message(target.error(), kind, named), Exit::fileProblem);
    }
    auto exported = find();
    if (!exported) return refuse(exported.error(), Exit::fileProblem);
    if (auto written = world.writeNew(exported->data, *target); !written) {
      return refuse(CommandLineMessages::message(written.error(), kind, named), Exit::fileProblem);
    }
    return say(CommandLineMessages::exported(kind, exported->what, *target));
  }

  // An import's file must read and decode as its kind before anything is sent.
  std::optional<std::string> importProblem(const std::string& path) const {
    const std::optional<ExportKind> kind = DocumentFiles::importKind(path);
    if (!kind) return CommandLineMessages::text(ToolMessage::unreadableImport);
    auto data = world.readFile(path, DocumentFiles::maxBytes(*kind));
    if (!data) return CommandLineMessages::text(ToolMessage::unreadableImport);
    bool decodes = false;
    switch (*kind) {
      case ExportKind::layers: {
        auto decoded = LayerCodec::decode(*data);
        decodes = decoded && !decoded->layers.empty();
        break;
      }
      case ExportKind::theme:
        decodes = ThemeCodec::decode(*data).has_value();
        break;
      case ExportKind::sheet:
        decodes = SheetCodec::decode(*data).has_value();
        break;
    }
    if (!decodes) return CommandLineMessages::undecodableImport(*kind);
    return std::nullopt;
  }
};

}  // namespace

std::int32_t LineTool::run(std::span<const std::string> arguments, const ToolWorld& world) {
  auto action = CommandLineInterface::parse(
      arguments, {world.currentDirectory, world.homeFolder, world.resolveApp});
  if (!action) {
    (void)world.err(CommandLineInterface::message(action.error()) + "\n\n" +
                    CommandLineInterface::usage() + "\n");
    return status(Exit::badArguments);
  }
  return std::visit(Driver{world}, action->value());
}

}  // namespace corvel
