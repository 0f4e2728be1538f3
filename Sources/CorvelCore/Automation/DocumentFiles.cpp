#include "CorvelCore/Automation/DocumentFiles.h"

#include <array>

#include "CorvelCore/Layers/LayerCodec.h"
#include "CorvelCore/Sheets/SheetCodec.h"
#include "CorvelCore/Sheets/SheetOverrides.h"
#include "CorvelCore/Support/FileName.h"
#include "CorvelCore/Theme/ThemeCodec.h"

namespace corvel {
namespace {

// A layers file may also be named as the plain JSON it is.
constexpr std::string_view kJSON = "json";

constexpr std::array<std::string_view, 2> kLayerExports{LayerCodec::fileExtension, kJSON};
constexpr std::array<std::string_view, 1> kThemeExports{ThemeCodec::fileExtension};
constexpr std::array<std::string_view, 1> kSheetExports{SheetOverrides::fileExtension};
constexpr std::array<std::string_view, 3> kLayerImports{LayerCodec::fileExtension,
                                                        LayerCodec::legacyFileExtension, kJSON};

constexpr std::array<ExportKind, 3> kKinds{ExportKind::layers, ExportKind::theme,
                                           ExportKind::sheet};

}  // namespace

std::string_view DocumentFiles::current(ExportKind kind) { return kept(kind).front(); }

std::span<const std::string_view> DocumentFiles::kept(ExportKind kind) {
  switch (kind) {
    case ExportKind::layers:
      return LayerCodec::readableExtensions;
    case ExportKind::theme:
      return ThemeCodec::readableExtensions;
    case ExportKind::sheet:
      return SheetOverrides::readableExtensions;
  }
  return {};
}

std::span<const std::string_view> DocumentFiles::exported(ExportKind kind) {
  switch (kind) {
    case ExportKind::layers:
      return kLayerExports;
    case ExportKind::theme:
      return kThemeExports;
    case ExportKind::sheet:
      return kSheetExports;
  }
  return {};
}

std::span<const std::string_view> DocumentFiles::imported(ExportKind kind) {
  return kind == ExportKind::layers ? std::span<const std::string_view>(kLayerImports) : kept(kind);
}

std::optional<ExportKind> DocumentFiles::importKind(std::string_view path) {
  for (const ExportKind kind : kKinds) {
    if (FileName::hasExtension(path, imported(kind))) return kind;
  }
  return std::nullopt;
}

std::size_t DocumentFiles::maxBytes(ExportKind kind) {
  switch (kind) {
    case ExportKind::layers:
      return LayerCodec::maxFileBytes;
    case ExportKind::theme:
      return ThemeCodec::maxFileBytes;
    case ExportKind::sheet:
      return SheetCodec::maxFileBytes;
  }
  return 0;
}

}  // namespace corvel
