#include "CorvelCommand/SupportFiles.h"

#include <algorithm>

#include "CorvelCore/Automation/DocumentFiles.h"
#include "CorvelCore/Layers/LayerCodec.h"
#include "CorvelCore/Sheets/SheetCodec.h"
#include "CorvelCore/Support/FileName.h"
#include "CorvelCore/Theme/ThemeCodec.h"

namespace corvel {
namespace {

// The overlay settings record in the app's preferences; the tool needs only
// its theme.
constexpr std::string_view kOverlaySettingsKey = "overlay.v1";
constexpr std::string_view kLayersFile = "Layers.json";
constexpr std::string_view kThemesFolder = "Themes";
constexpr std::string_view kSheetsFolder = "Sheets";

std::string inFolder(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (path.empty() || path.back() != '/') path.push_back('/');
  return path.append(name);
}

// The files of one of the support folder's folders that hold documents of
// the kind, in the folder's order.
std::vector<ToolWorld::FolderFile> documents(const ToolWorld& world, std::string_view folder,
                                             ExportKind kind) {
  std::vector<ToolWorld::FolderFile> files =
      world.listFolder(inFolder(world.supportFolder, folder));
  std::erase_if(files, [&](const ToolWorld::FolderFile& file) {
    return !FileName::hasExtension(file.name, DocumentFiles::kept(kind));
  });
  return files;
}

}  // namespace

std::expected<std::string, ToolWorld::ReadProblem> SupportFiles::layersFile(
    const ToolWorld& world) {
  return world.readFile(inFolder(world.supportFolder, kLayersFile),
                        DocumentFiles::maxBytes(ExportKind::layers));
}

std::optional<std::vector<Layer>> SupportFiles::layers(const ToolWorld& world) {
  auto data = layersFile(world);
  if (!data) {
    if (data.error() == ToolWorld::ReadProblem::missing) return std::vector<Layer>{};
    return std::nullopt;
  }
  auto file = LayerCodec::decodeFile(*data);
  if (!file) return std::nullopt;
  return std::move(file->layers);
}

std::vector<Theme> SupportFiles::ownThemes(const ToolWorld& world) {
  auto files = documents(world, kThemesFolder, ExportKind::theme);
  std::stable_sort(files.begin(), files.end(), [](const auto& a, const auto& b) {
    if (!b.modified) return a.modified.has_value();
    return a.modified && *a.modified > *b.modified;
  });
  const std::string folder = inFolder(world.supportFolder, kThemesFolder);
  std::vector<Theme> themes;
  for (const auto& file : files) {
    auto data = world.readFile(inFolder(folder, file.name), ThemeCodec::maxFileBytes);
    if (!data) continue;
    if (auto theme = ThemeCodec::decode(*data)) themes.push_back(std::move(*theme));
  }
  return themes;
}

std::vector<SheetOverrides> SupportFiles::sheets(const ToolWorld& world) {
  auto files = documents(world, kSheetsFolder, ExportKind::sheet);
  const auto current = [](const ToolWorld::FolderFile& file) {
    return FileName::extension(file.name) == DocumentFiles::current(ExportKind::sheet);
  };
  std::sort(files.begin(), files.end(), [&](const auto& a, const auto& b) {
    if (current(a) != current(b)) return current(a);
    return a.name < b.name;
  });
  const std::string folder = inFolder(world.supportFolder, kSheetsFolder);
  std::vector<SheetOverrides> sheets;
  for (const auto& file : files) {
    auto data = world.readFile(inFolder(folder, file.name), SheetCodec::maxFileBytes);
    if (!data) continue;
    auto sheet = SheetCodec::decode(*data);
    if (!sheet || sheet->isEmpty()) continue;
    const bool seen = std::any_of(sheets.begin(), sheets.end(), [&](const SheetOverrides& other) {
      return other.bundleID == sheet->bundleID;
    });
    if (!seen) sheets.push_back(std::move(*sheet));
  }
  std::stable_sort(sheets.begin(), sheets.end(),
                   [](const auto& a, const auto& b) { return a.appName < b.appName; });
  return sheets;
}

std::optional<std::string> SupportFiles::themeInUse(const ToolWorld& world) {
  std::optional<JSONValue> settings = world.preference(kOverlaySettingsKey);
  if (!settings) return std::nullopt;
  if (const JSONString* text = settings->asString()) {
    auto decoded = JSONValue::decode(*text);
    if (!decoded) return std::nullopt;
    settings = std::move(*decoded);
  }
  const JSONObject* object = settings->asObject();
  if (object == nullptr) return std::nullopt;
  const JSONValue* id = object->find("themeID");
  if (id == nullptr || id->asString() == nullptr) return std::nullopt;
  return std::string(*id->asString());
}

}  // namespace corvel
