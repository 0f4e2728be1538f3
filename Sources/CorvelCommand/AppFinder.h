// AppFinder: finds the app a user names on the command line (by bundle
// identifier or by name) among the apps this machine knows, so that links,
// which carry only bundle identifiers, can be built from names. Where the
// machine keeps its apps is asked through a `Catalogue` of functions; the
// order of the sources and how names compare are the same everywhere.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Automation/AppMatch.h"

namespace corvel {

struct AppFinder {
  // An app the system lists by name (the running apps on macOS, the
  // installed desktop entries on Linux).
  struct ListedApp {
    std::string name;
    std::optional<std::string> bundleID;
  };

  // The machine's answers. A missing function contributes nothing.
  struct Catalogue {
    // Whether the system knows an app with this bundle identifier.
    std::function<bool(const std::string& bundleID)> knowsBundleID;
    std::function<std::vector<ListedApp>()> listedApps;
    // The folders that hold apps, in the order they are searched.
    std::function<std::vector<std::string>()> applicationFolders;
    // The bundle identifier of the bundle at a path, when there is one.
    std::function<std::optional<std::string>(const std::string& bundle)> bundleIdentifier;
    // The bundle identifiers the file index finds for a name.
    std::function<std::set<std::string>(std::string_view name)> indexedApps;
  };

  // Searched after the system's own application folders, in this order.
  static constexpr std::array<std::string_view, 4> moreApplicationFolders = {
      "/System/Applications", "/System/Applications/Utilities", "/Applications/Utilities",
      "/System/Library/CoreServices"};

  // Which app `name` means: a bundle identifier the system knows stands for
  // itself; otherwise every listed app whose name matches (`sameName`) and
  // every "<name>.app" bundle in the application folders adds its identifier,
  // and the file index is asked only when these found nothing. One distinct
  // identifier is `one`, more are `several`, none is `none`.
  [[nodiscard]] static AppMatch find(std::string_view name, const Catalogue& catalogue);

  // Whether two names are the same up to letter case and character width
  // (full-width "Ｓａｆａｒｉ" is "safari"); accents still count.
  [[nodiscard]] static bool sameName(std::string_view a, std::string_view b);

  // The Spotlight query for application bundles whose display name is `name`
  // or whose file name is `name` + ".app", both compared without regard to
  // case and diacritics; `name` is escaped for the query's quoted strings.
  [[nodiscard]] static std::string spotlightQuery(std::string_view name);
};

}  // namespace corvel
