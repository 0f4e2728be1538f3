// The product's fixed names: what the app is called, how the system knows it,
// and where it keeps its files. Every message and path takes them from here.
#pragma once

#include <string_view>

namespace corvel {

struct Brand {
  // The app's name as users see it in messages.
  static constexpr std::string_view productName = "Quillon";
  // The command-line tool's name.
  static constexpr std::string_view toolName = "quillon";
  // The app's bundle identifier; also the prefix of its notification names.
  static constexpr std::string_view bundleID = "app.quillon.Quillon";
  // The bundle identifier the app had under its earlier codename; legacy file types use it.
  static constexpr std::string_view earlierBundleID = "app.corvel.Corvel";
  // The product's web site, named where the app is not installed.
  static constexpr std::string_view webHost = "quillon.app";
  // The folder inside the user's application-support folder that holds the app's files.
  static constexpr std::string_view supportFolderName = "Quillon";
  // The scheme of the links that carry commands to the app.
  static constexpr std::string_view linkScheme = "quillon";
};

}  // namespace corvel
