#include "CorvelCore/Automation/ExportPath.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>

#include "CorvelCore/Automation/DocumentFiles.h"
#include "CorvelCore/Support/FileName.h"

namespace corvel {
namespace {

// File systems on the Mac compare names without regard to case, so folders
// are compared in lower case, by Unicode's rules.
std::string lowercased(std::string_view text) {
  std::string out;
  icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())))
      .toLower(icu::Locale::getRoot())
      .toUTF8String(out);
  return out;
}

std::string joined(std::span<const std::string> components) {
  std::string path;
  for (const auto& component : components) path.append("/").append(component);
  return path.empty() ? "/" : path;
}

// A folder as compared: standardised, lower case, with a trailing "/".
std::optional<std::string> comparable(std::string_view path) {
  auto components = ExportPath::standardised(path);
  if (!components) return std::nullopt;
  std::string text = lowercased(joined(*components));
  if (text.back() != '/') text.push_back('/');
  return text;
}

}  // namespace

std::span<const std::string_view> ExportPath::extensions(ExportKind kind) {
  return DocumentFiles::exported(kind);
}

bool ExportPath::hasExtension(std::string_view name, ExportKind kind) {
  return FileName::hasExtension(name, extensions(kind));
}

std::optional<std::vector<std::string>> ExportPath::standardised(std::string_view path) {
  std::vector<std::string> components;
  std::size_t start = 0;
  while (start <= path.size()) {
    std::size_t slash = path.find('/', start);
    if (slash == std::string_view::npos) slash = path.size();
    const std::string_view piece = path.substr(start, slash - start);
    if (piece == "..") {
      // The top folder ("/Users" in "/Users/a/../../x") is as high as a path
      // may climb back to; taking it away too climbs above it.
      if (components.size() < 2) return std::nullopt;
      components.pop_back();
    } else if (!piece.empty() && piece != ".") {
      components.emplace_back(piece);
    }
    start = slash + 1;
  }
  return components;
}

std::expected<std::string, ExportRefusal> ExportPath::check(
    std::string_view path, ExportKind kind, const std::optional<std::string>& appBundle,
    const std::string& supportFolder, const FileQuestions& files) {
  if (!path.starts_with('/')) return std::unexpected(ExportRefusal::notAbsolute);
  const auto components = standardised(path);
  if (!components) return std::unexpected(ExportRefusal::notAbsolute);
  if (path.ends_with('/') || components->empty()) {
    return std::unexpected(ExportRefusal::wrongExtension);
  }
  if (!hasExtension(components->back(), kind)) {
    return std::unexpected(ExportRefusal::wrongExtension);
  }
  const std::string top = lowercased(components->front());
  if (std::find(std::begin(networkFolders), std::end(networkFolders), top) !=
      std::end(networkFolders)) {
    return std::unexpected(ExportRefusal::onNetwork);
  }

  const std::string folder = joined(std::span(*components).first(components->size() - 1));
  const std::string file = joined(*components);

  // The protected folders, as given and as resolved.
  std::vector<std::string> protectedFolders;
  std::vector<std::string> protectedPaths{supportFolder};
  if (appBundle) protectedPaths.push_back(*appBundle);
  for (const auto& given : protectedPaths) {
    if (auto text = comparable(given)) protectedFolders.push_back(*text);
    if (auto real = files.realPath(given)) {
      if (auto text = comparable(*real)) protectedFolders.push_back(*text);
    }
  }
  std::vector<std::string> targetForms;
  if (auto text = comparable(folder)) targetForms.push_back(*text);
  if (auto real = files.realPath(folder)) {
    if (auto text = comparable(*real)) targetForms.push_back(*text);
  }
  for (const auto& target : targetForms) {
    for (const auto& guarded : protectedFolders) {
      if (target.starts_with(guarded)) return std::unexpected(ExportRefusal::insideQuillon);
    }
  }
  // Identities catch what spelling cannot: links, other names, hard links.
  std::vector<FileIdentity> guardedIdentities;
  for (const auto& given : protectedPaths) {
    const auto chain = files.identities(given);
    if (!chain.empty()) guardedIdentities.push_back(chain.front());
  }
  for (const auto& identity : files.identities(folder)) {
    if (std::find(guardedIdentities.begin(), guardedIdentities.end(), identity) !=
        guardedIdentities.end()) {
      return std::unexpected(ExportRefusal::insideQuillon);
    }
  }

  if (!files.isDirectory(folder)) return std::unexpected(ExportRefusal::noFolder);
  if (files.fileExists(file)) return std::unexpected(ExportRefusal::exists);
  return file;
}

}  // namespace corvel
