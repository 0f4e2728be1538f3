#include "CorvelCommand/AppFinder.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace corvel {
namespace {

// A Mac with a few apps: some running, some in application folders, some
// only in the file index. Records what the index was asked.
struct FakeMac {
  std::set<std::string> known;
  std::vector<AppFinder::ListedApp> running;
  std::vector<std::string> folders = {"/Applications", "/Users/me/Applications/"};
  std::map<std::string, std::string> bundles;  // bundle path -> identifier
  std::map<std::string, std::set<std::string>> indexed;
  std::vector<std::string> indexAsked;

  AppFinder::Catalogue catalogue() {
    AppFinder::Catalogue catalogue;
    catalogue.knowsBundleID = [this](const std::string& id) { return known.contains(id); };
    catalogue.listedApps = [this] { return running; };
    catalogue.applicationFolders = [this] { return folders; };
    catalogue.bundleIdentifier = [this](const std::string& path) -> std::optional<std::string> {
      const auto found = bundles.find(path);
      if (found == bundles.end()) return std::nullopt;
      return found->second;
    };
    catalogue.indexedApps = [this](std::string_view name) {
      indexAsked.emplace_back(name);
      const auto found = indexed.find(std::string(name));
      return found == indexed.end() ? std::set<std::string>{} : found->second;
    };
    return catalogue;
  }
};

TEST(AppFinderTest, FindsAppsByIdentifierAndName) {
  FakeMac mac;
  mac.known = {"com.apple.Safari", "com.apple.Notes"};
  mac.running = {{"Safari", "com.apple.Safari"},
                 {"Ｔｅｒｍｉｎａｌ", "com.apple.Terminal"},
                 {"Helper", std::nullopt},
                 {"Twin", "com.example.TwinA"},
                 {"Notes", ""}};
  mac.bundles = {{"/Applications/Safari.app", "com.apple.Safari"},
                 {"/Users/me/Applications/Safari.app", "com.apple.Safari"},
                 {"/Applications/Twin.app", "com.example.TwinB"},
                 {"/Applications/Mail.app", "com.apple.mail"},
                 {"/Applications/Straße.app", "com.example.Street"},
                 {"/Applications/Helper.app", ""}};
  mac.indexed = {{"Pages", {"com.apple.iWork.Pages"}},
                 {"Keynote", {"com.apple.iWork.Keynote", "com.apple.Keynote.old"}},
                 {"Mail", {"com.example.OtherMail"}}};

  struct Case {
    const char* name;
    AppMatch expected;
    bool asksIndex;
  };
  const Case cases[] = {
      {"com.apple.Notes", AppMatch::one("com.apple.Notes"), false},
      {"Safari", AppMatch::one("com.apple.Safari"), false},  // running and in two folders
      {"SAFARI", AppMatch::one("com.apple.Safari"), false},
      {"terminal", AppMatch::one("com.apple.Terminal"), false},  // full-width running name
      {"Twin", AppMatch::several(), false},
      {"Mail", AppMatch::one("com.apple.mail"), false},  // the index is not asked
      {"Straße", AppMatch::one("com.example.Street"), false},
      {"Pages", AppMatch::one("com.apple.iWork.Pages"), true},
      {"Keynote", AppMatch::several(), true},
      {"Helper", AppMatch::none(), true},  // no bundle identifier anywhere
      {"Notes", AppMatch::none(), true},   // an empty identifier is none
      {"com.example.Missing", AppMatch::none(), true},
      {"Safari.app", AppMatch::none(), true},
      {"../Applications/Safari", AppMatch::none(), true},
      {"", AppMatch::none(), true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    mac.indexAsked.clear();
    EXPECT_EQ(AppFinder::find(c.name, mac.catalogue()), c.expected);
    EXPECT_EQ(mac.indexAsked.size(), c.asksIndex ? 1U : 0U);
  }
}

TEST(AppFinderTest, MissingSourcesContributeNothing) {
  AppFinder::Catalogue empty;
  EXPECT_EQ(AppFinder::find("Safari", empty), AppMatch::none());
  EXPECT_EQ(AppFinder::find("com.apple.Safari", empty), AppMatch::none());
}

TEST(AppFinderTest, ComparesNamesIgnoringCaseAndWidthOnly) {
  struct Case {
    std::string a;
    std::string b;
    bool same;
  };
  const Case cases[] = {
      {"Safari", "safari", true},
      {"Ｓａｆａｒｉ", "SAFARI", true},       // full-width letters
      {"ﾃｷｽﾄ", "テキスト", true},             // half-width katakana
      {"Straße", "STRASSE", true},            // full case folding
      {"Cafe\xCC\x81", "CAF\xC3\x89", true},  // decomposed and composed é
      {"Café", "Cafe", false},                // accents count
      {"Safari", "Safari ", false},
      {"Safari", "Safar", false},
      {"\xFF\xFE", "\xEF\xBF\xBD\xEF\xBF\xBD", true},  // bytes that are not UTF-8
      {"", "", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.a + " / " + c.b);
    EXPECT_EQ(AppFinder::sameName(c.a, c.b), c.same);
    EXPECT_EQ(AppFinder::sameName(c.b, c.a), c.same);
  }
}

TEST(AppFinderTest, EscapesNamesInTheSpotlightQuery) {
  struct Case {
    std::string name;
    std::string escaped;
  };
  const Case cases[] = {
      {"Safari", "Safari"},
      {"O'Brien", "O\\'Brien"},
      {"a\\b", "a\\\\b"},
      {"say \"hi\"", "say \\\"hi\\\""},
      {"*", "\\*"},
      {"\\'", "\\\\\\'"},
      {"", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(AppFinder::spotlightQuery(c.name),
              "kMDItemContentType == 'com.apple.application-bundle' && "
              "(kMDItemDisplayName == '" +
                  c.escaped + "'cd || kMDItemFSName == '" + c.escaped + ".app'cd)");
  }
}

}  // namespace
}  // namespace corvel
