#include "CorvelCommand/AppFinder.h"

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <limits>

#include "CorvelCore/Layers/LayerNames.h"

namespace corvel {
namespace {

// Unicode's compatibility caseless form, NFKD(fold(NFKD(fold(NFD(text))))):
// two texts with the same form differ only in case and in compatibility
// variants such as full-width and half-width letters. Nothing when ICU
// cannot build it, so the caller falls back to comparing bytes.
std::optional<icu::UnicodeString> caselessForm(std::string_view text) {
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
    return std::nullopt;
  }
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
  const icu::Normalizer2* nfkd = icu::Normalizer2::getNFKDInstance(status);
  if (U_FAILURE(status)) return std::nullopt;
  icu::UnicodeString form =
      nfd->normalize(icu::UnicodeString::fromUTF8(
                         icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size()))),
                     status);
  for (int round = 0; round < 2 && U_SUCCESS(status); ++round) {
    form.foldCase(U_FOLD_CASE_DEFAULT);
    form = nfkd->normalize(form, status);
  }
  if (U_FAILURE(status) || form.isBogus()) return std::nullopt;
  return form;
}

// Only a name that can be a file name is looked for as "<name>.app".
bool canBeFileName(std::string_view name) {
  return !name.empty() && name.find('/') == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

void add(std::set<std::string>& found, const std::optional<std::string>& bundleID) {
  if (bundleID && !bundleID->empty()) found.insert(*bundleID);
}

}  // namespace

bool AppFinder::sameName(std::string_view a, std::string_view b) {
  if (a == b) return true;
  const std::optional<icu::UnicodeString> formA = caselessForm(a);
  const std::optional<icu::UnicodeString> formB = caselessForm(b);
  return formA && formB && *formA == *formB;
}

AppMatch AppFinder::find(std::string_view name, const Catalogue& catalogue) {
  const std::string text(name);
  if (LayerNames::isBundleID(name) && catalogue.knowsBundleID && catalogue.knowsBundleID(text)) {
    return AppMatch::one(text);
  }

  // A set, so that one app found in several places counts once.
  std::set<std::string> found;
  if (catalogue.listedApps) {
    for (const ListedApp& app : catalogue.listedApps()) {
      if (sameName(app.name, name)) add(found, app.bundleID);
    }
  }
  if (canBeFileName(name) && catalogue.applicationFolders && catalogue.bundleIdentifier) {
    for (std::string folder : catalogue.applicationFolders()) {
      if (!folder.ends_with('/')) folder += '/';
      add(found, catalogue.bundleIdentifier(folder + text + ".app"));
    }
  }
  // The file index is slow; it is the last resort.
  if (found.empty() && catalogue.indexedApps) {
    for (const std::string& bundleID : catalogue.indexedApps(name)) add(found, bundleID);
  }

  if (found.empty()) return AppMatch::none();
  if (found.size() > 1) return AppMatch::several();
  return AppMatch::one(*found.begin());
}

std::string AppFinder::spotlightQuery(std::string_view name) {
  // Inside the query's single-quoted strings a backslash escapes the next
  // character, and "*" is a wildcard; each is escaped so the name matches
  // only itself.
  std::string escaped;
  escaped.reserve(name.size());
  for (const char c : name) {
    if (c == '\\' || c == '\'' || c == '"' || c == '*') escaped += '\\';
    escaped += c;
  }
  return "kMDItemContentType == 'com.apple.application-bundle' && (kMDItemDisplayName == '" +
         escaped + "'cd || kMDItemFSName == '" + escaped + ".app'cd)";
}

}  // namespace corvel
