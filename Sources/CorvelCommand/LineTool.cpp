#include "CorvelCommand/LineTool.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include "CorvelCore/Automation/AutomationListings.h"
#include "CorvelCore/Automation/CommandLineInterface.h"
#include "CorvelCore/Automation/ExportWriter.h"
#include "CorvelCore/Layers/LayerCodec.h"
#include "CorvelCore/Sheets/SheetCodec.h"
#include "CorvelCore/Theme/BuiltInThemes.h"
#include "CorvelCore/Theme/ThemeCodec.h"

namespace corvel {
namespace {

using Exit = CommandLineInterface::Exit;

constexpr std::int32_t status(Exit exit) { return static_cast<std::int32_t>(exit); }

// The overlay settings record in the app's preferences; the tool needs only
// its theme.
constexpr std::string_view kOverlaySettingsKey = "overlay.v1";

void line(const std::function<void(std::string_view)>& stream, std::string_view text) {
  std::string out(text);
  out.push_back('\n');
  stream(out);
}

std::string inFolder(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (path.empty() || path.back() != '/') path.push_back('/');
  return path.append(name);
}

bool hasExtension(std::string_view name, std::span<const std::string_view> extensions) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return false;
  std::string extension(name.substr(dot + 1));
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

// The regular files of a folder whose names carry one of the extensions, in
// the folder's own order, each with its modification time when it can be read.
struct FolderFile {
  std::string path;
  std::optional<timespec> modified;
};

std::vector<FolderFile> filesIn(const std::string& folder,
                                std::span<const std::string_view> extensions) {
  std::vector<FolderFile> files;
  DIR* directory = ::opendir(folder.c_str());
  if (directory == nullptr) return files;
  while (const dirent* entry = ::readdir(directory)) {
    const std::string_view name = entry->d_name;
    if (!hasExtension(name, extensions)) continue;
    FolderFile file{inFolder(folder, name), std::nullopt};
    struct stat info {};
    if (::stat(file.path.c_str(), &info) != 0) {
      files.push_back(std::move(file));  // read fails later; kept so it is skipped, not lost
      continue;
    }
    if (!S_ISREG(info.st_mode)) continue;
    file.modified = info.st_mtim;
    files.push_back(std::move(file));
  }
  ::closedir(directory);
  return files;
}

// The app's layers file: missing, or its bytes (nothing when it cannot be
// read).
struct LayersData {
  bool missing = false;
  std::optional<std::string> bytes;
};

LayersData layersData(const ToolWorld& world) {
  const std::string path = inFolder(world.supportFolder, "Layers.json");
  struct stat info {};
  if (::lstat(path.c_str(), &info) != 0 && errno == ENOENT) return {true, std::nullopt};
  return {false, LineTool::read(path, LayerCodec::maxFileBytes, true)};
}

struct LayersRead {
  bool unreadable = false;
  std::vector<Layer> layers;
};

// The app's layers: none when there is no file, unreadable when there is one
// that cannot be read or decoded.
LayersRead readLayers(const ToolWorld& world) {
  const LayersData data = layersData(world);
  if (data.missing) return {};
  if (!data.bytes) return {true, {}};
  auto file = LayerCodec::decodeFile(*data.bytes);
  if (!file) return {true, {}};
  return {false, std::move(file->layers)};
}

// The user's own themes, newest first; files that do not read as themes are
// passed over.
std::vector<Theme> readOwnThemes(const ToolWorld& world) {
  std::vector<FolderFile> files =
      filesIn(inFolder(world.supportFolder, "Themes"), ThemeCodec::readableExtensions);
  const auto newer = [](const FolderFile& a, const FolderFile& b) {
    if (!b.modified) return a.modified.has_value();
    if (!a.modified) return false;
    if (a.modified->tv_sec != b.modified->tv_sec) return a.modified->tv_sec > b.modified->tv_sec;
    return a.modified->tv_nsec > b.modified->tv_nsec;
  };
  std::stable_sort(files.begin(), files.end(), newer);
  std::vector<Theme> themes;
  for (const auto& file : files) {
    auto data = LineTool::read(file.path, ThemeCodec::maxFileBytes, true);
    if (!data) continue;
    if (auto theme = ThemeCodec::decode(*data)) themes.push_back(std::move(*theme));
  }
  return themes;
}

// The changed cheatsheets, one per app, ordered by file name; a sheet saved
// under the current extension wins over one of the earlier extension.
std::vector<SheetOverrides> readSheets(const ToolWorld& world) {
  std::vector<FolderFile> files =
      filesIn(inFolder(world.supportFolder, "Sheets"), SheetOverrides::readableExtensions);
  std::sort(files.begin(), files.end(), [](const FolderFile& a, const FolderFile& b) {
    const bool aCurrent =
        hasExtension(a.path, std::span(SheetOverrides::readableExtensions).first(1));
    const bool bCurrent =
        hasExtension(b.path, std::span(SheetOverrides::readableExtensions).first(1));
    if (aCurrent != bCurrent) return aCurrent;
    return a.path < b.path;
  });
  std::vector<SheetOverrides> sheets;
  for (const auto& file : files) {
    auto data = LineTool::read(file.path, SheetCodec::maxFileBytes, true);
    if (!data) continue;
    auto sheet = SheetCodec::decode(*data);
    if (!sheet || sheet->isEmpty()) continue;
    const bool seen = std::any_of(sheets.begin(), sheets.end(), [&](const SheetOverrides& other) {
      return other.bundleID == sheet->bundleID;
    });
    if (!seen) sheets.push_back(std::move(*sheet));
  }
  std::stable_sort(
      sheets.begin(), sheets.end(),
      [](const SheetOverrides& a, const SheetOverrides& b) { return a.appName < b.appName; });
  return sheets;
}

// The id of the theme the app uses now, from its overlay settings (stored as
// an object, or as the text of one).
std::optional<std::string> themeInUse(const ToolWorld& world) {
  if (!world.preference) return std::nullopt;
  std::optional<JSONValue> settings = world.preference(kOverlaySettingsKey);
  if (!settings) return std::nullopt;
  if (const std::string* text = settings->asString()) {
    auto decoded = JSONValue::decode(*text);
    if (!decoded) return std::nullopt;
    settings = std::move(*decoded);
  }
  const JSONObject* object = settings->asObject();
  if (object == nullptr) return std::nullopt;
  const JSONValue* id = object->find("themeID");
  if (id == nullptr || id->asString() == nullptr) return std::nullopt;
  return *id->asString();
}

std::int32_t refuse(const ToolWorld& world, std::string_view message, Exit exit) {
  line(world.err, message);
  return status(exit);
}

std::int32_t writeExport(const ToolWorld& world, ExportKind kind, const std::string& path,
                         std::string_view data, std::string_view what, bool named) {
  if (auto written = ExportWriter::writeNew(data, path); !written) {
    return refuse(world, CommandLineInterface::message(written.error(), kind, named),
                  Exit::fileProblem);
  }
  line(world.out, CommandLineInterface::exported(kind, what, path));
  return status(Exit::done);
}

std::optional<std::string> checkedTarget(const ToolWorld& world, ExportKind kind,
                                         const std::string& path, bool named,
                                         std::int32_t& result) {
  const std::optional<std::string> app = world.quillonApp ? world.quillonApp() : std::nullopt;
  auto target = ExportWriter::check(path, kind, app, world.supportFolder);
  if (!target) {
    result = refuse(world, CommandLineInterface::message(target.error(), kind, named),
                    Exit::fileProblem);
    return std::nullopt;
  }
  return *target;
}

// Asks for the memory to be backed by huge pages where the system gives
// them on request: filling a large buffer a small page at a time takes the
// system longer than reading the file into it.
void adviseHugePages(char* data, std::size_t size) {
#ifdef MADV_HUGEPAGE
  constexpr std::size_t kHugePage = std::size_t{2} << 20;
  if (size < 2 * kHugePage) return;
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  // The whole pages of the buffer.
  const std::size_t skip = (page - reinterpret_cast<std::uintptr_t>(data) % page) % page;
  const std::size_t length = (size - skip) / page * page;
  // Only advice: memory it is refused for is read into all the same.
  if (length > 0) (void)::madvise(data + skip, length, MADV_HUGEPAGE);
#else
  (void)data;
  (void)size;
#endif
}

std::string layerCount(std::size_t count) {
  return count == 1 ? "1 layer" : std::to_string(count) + " layers";
}

struct Driver {
  const ToolWorld& world;

  std::int32_t operator()(const CommandLineAction::Version&) const {
    line(world.out,
         CommandLineInterface::versionLine(world.version.shortVersion, world.version.build));
    return status(Exit::done);
  }

  std::int32_t operator()(const CommandLineAction::Help& help) const {
    line(world.out, CommandLineInterface::help(help.topic));
    return status(Exit::done);
  }

  std::int32_t operator()(const CommandLineAction::ListLayers& list) const {
    // The rows are made while the file is read: a listing never holds all
    // the layers of a large file.
    const LayersData data = layersData(world);
    auto rows = data.missing  ? std::expected<std::vector<LayerRow>, LayerError>()
                : !data.bytes ? std::unexpected(LayerError::notJSON())
                              : AutomationListings::layerRows(*data.bytes);
    if (!rows) return refuse(world, CommandLineInterface::layersUnreadable(), Exit::fileProblem);
    line(world.out, list.json ? AutomationListings::json(*rows) : AutomationListings::text(*rows));
    return status(Exit::done);
  }

  std::int32_t operator()(const CommandLineAction::ListThemes& list) const {
    const auto rows =
        AutomationListings::themes(BuiltInThemes::all(), readOwnThemes(world), themeInUse(world));
    line(world.out, list.json ? AutomationListings::json(rows) : AutomationListings::text(rows));
    return status(Exit::done);
  }

  std::int32_t operator()(const CommandLineAction::ListSheets& list) const {
    const auto rows = AutomationListings::rows(readSheets(world));
    line(world.out, list.json ? AutomationListings::json(rows) : AutomationListings::text(rows));
    return status(Exit::done);
  }

  std::int32_t operator()(const CommandLineAction::ExportLayers& request) const {
    const bool named = request.name.has_value();
    std::int32_t result = 0;
    auto target = checkedTarget(world, ExportKind::layers, request.path, named, result);
    if (!target) return result;
    LayersRead read = readLayers(world);
    if (read.unreadable) {
      return refuse(world, CommandLineInterface::layersUnreadable(), Exit::fileProblem);
    }
    std::vector<Layer> layers =
        named ? AutomationListings::layers(read.layers, *request.name) : std::move(read.layers);
    if (layers.empty()) {
      return refuse(
          world,
          CommandLineInterface::message(ExportRefusal::nothingToExport, ExportKind::layers, named),
          Exit::fileProblem);
    }
    return writeExport(world, ExportKind::layers, *target, LayerCodec::encode(layers),
                       layerCount(layers.size()), named);
  }

  std::int32_t operator()(const CommandLineAction::ExportTheme& request) const {
    const bool named = request.name.has_value();
    std::int32_t result = 0;
    auto target = checkedTarget(world, ExportKind::theme, request.path, named, result);
    if (!target) return result;
    // Without a name, the theme the app uses now (or its default) is exported.
    const std::string wanted =
        request.name.value_or(themeInUse(world).value_or(std::string(BuiltInThemes::defaultID)));
    const std::vector<Theme> mine = readOwnThemes(world);
    auto theme = AutomationListings::match(BuiltInThemes::all(), mine, wanted);
    if (!theme && !named) {
      theme = AutomationListings::match(BuiltInThemes::all(), mine, BuiltInThemes::defaultID);
    }
    if (!theme) {
      return refuse(
          world,
          CommandLineInterface::message(ExportRefusal::nothingToExport, ExportKind::theme, named),
          Exit::fileProblem);
    }
    return writeExport(world, ExportKind::theme, *target, ThemeCodec::encode(*theme), theme->name,
                       named);
  }

  std::int32_t operator()(const CommandLineAction::ExportSheet& request) const {
    std::int32_t result = 0;
    auto target = checkedTarget(world, ExportKind::sheet, request.path, true, result);
    if (!target) return result;
    const std::vector<SheetOverrides> sheets = readSheets(world);
    const auto sheet = std::find_if(sheets.begin(), sheets.end(), [&](const SheetOverrides& s) {
      return s.bundleID == request.app;
    });
    if (sheet == sheets.end()) {
      return refuse(
          world,
          CommandLineInterface::message(ExportRefusal::nothingToExport, ExportKind::sheet, true),
          Exit::fileProblem);
    }
    return writeExport(world, ExportKind::sheet, *target, SheetCodec::encode(*sheet),
                       sheet->appName, true);
  }

  // An import's file must read and decode as its kind before anything is sent.
  std::optional<std::string> importProblem(const std::string& path) const {
    const std::optional<ExportKind> kind = CommandLineInterface::importKind(path);
    const std::size_t limit =
        kind == ExportKind::layers ? LayerCodec::maxFileBytes : ThemeCodec::maxFileBytes;
    auto data = LineTool::read(path, limit, true);
    if (!data || !kind) return CommandLineInterface::unreadableImport();
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
    if (!decodes) return CommandLineInterface::undecodableImport(*kind);
    return std::nullopt;
  }

  std::int32_t operator()(const CommandLineAction::Send& send) const {
    if (const auto* import = send.command.as<AutomationCommand::ImportFile>()) {
      if (auto problem = importProblem(import->file)) {
        return refuse(world, *problem, Exit::fileProblem);
      }
    }
    const std::optional<std::string> app = world.quillonApp ? world.quillonApp() : std::nullopt;
    if (!app) return refuse(world, CommandLineInterface::notInstalled(), Exit::notInstalled);
    const HandOver result = world.handOver(send.command.link(), *app);
    if (result != HandOver::delivered) {
      return refuse(world, CommandLineInterface::notDelivered(), Exit::notDelivered);
    }
    return status(Exit::done);
  }
};

}  // namespace

std::int32_t LineTool::run(std::span<const std::string> arguments, const ToolWorld& world) {
  auto action = CommandLineInterface::parse(arguments, world.currentDirectory, world.resolveApp);
  if (!action) {
    world.err(CommandLineInterface::message(action.error()) + "\n\n" +
              CommandLineInterface::usage() + "\n");
    return status(Exit::badArguments);
  }
  return std::visit(Driver{world}, action->value());
}

std::optional<std::string> LineTool::read(const std::string& path, std::size_t max,
                                          bool followLinks) {
  const int flags = O_RDONLY | O_CLOEXEC | (followLinks ? 0 : O_NOFOLLOW);
  const int fd = ::open(path.c_str(), flags);
  if (fd < 0) return std::nullopt;
  std::optional<std::string> bytes;
  struct stat info {};
  if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) &&
      static_cast<std::uint64_t>(info.st_size) <= max) {
    // Read up to one byte past the limit, so a file that grew since fstat is
    // still caught as too large.
    std::string buffer;
    const std::size_t expected = std::min<std::size_t>(static_cast<std::size_t>(info.st_size), max);
    buffer.reserve(expected + 1 + JSONValue::readPadding);
    adviseHugePages(buffer.data(), buffer.capacity());
    // Room the file's bytes then fill; not cleared first, as they overwrite it.
    const auto grow = [&buffer](std::size_t size) {
      buffer.resize_and_overwrite(size, [](char*, std::size_t room) { return room; });
    };
    grow(expected + 1);
    std::size_t filled = 0;
    bool failed = false;
    while (true) {
      if (filled == buffer.size()) {
        if (buffer.size() > max) break;
        grow(std::min(buffer.size() * 2, max + 1));
      }
      const ssize_t count = ::read(fd, buffer.data() + filled, buffer.size() - filled);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) {
        failed = true;
        break;
      }
      if (count == 0) break;
      filled += static_cast<std::size_t>(count);
    }
    if (!failed && filled <= max) {
      // Zeroed room after the bytes lets the JSON reader read them in place.
      buffer.resize(filled);
      buffer.append(JSONValue::readPadding, '\0');
      buffer.resize(filled);
      bytes = std::move(buffer);
    }
  }
  ::close(fd);
  return bytes;
}

}  // namespace corvel
