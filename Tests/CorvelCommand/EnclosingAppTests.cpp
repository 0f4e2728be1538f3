#include "CorvelCommand/EnclosingApp.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <vector>

#include "CorvelCore/Brand/Brand.h"

namespace corvel {
namespace {

namespace fs = std::filesystem;

// A throw-away folder holding bundles laid out as on a Mac, with links to the
// tools inside them.
class EnclosingAppTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "enclosing-app-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    // The temporary folder may itself sit behind a link (/tmp on macOS).
    root_ = fs::canonical(pattern);
  }
  void TearDown() override { fs::remove_all(root_); }

  // Creates the file `relative` (and its folders) and returns its path.
  std::string makeFile(const std::string& relative) {
    const fs::path path = root_ / relative;
    fs::create_directories(path.parent_path());
    std::ofstream(path) << "tool";
    return path.string();
  }
  std::string makeLink(const std::string& relative, const std::string& target) {
    const fs::path path = root_ / relative;
    fs::create_directories(path.parent_path());
    fs::create_symlink(target, path);
    return path.string();
  }
  std::string at(const std::string& relative) const { return (root_ / relative).string(); }

  fs::path root_;
};

TEST_F(EnclosingAppTest, FindsOnlyTheAppsOwnBundle) {
  const std::string quillonTool = makeFile("Quillon.app/Contents/MacOS/quillon");
  const std::string otherTool = makeFile("Other.app/Contents/MacOS/quillon");
  const std::string looseTool = makeFile("bin/quillon");
  const std::string shallowTool = makeFile("Shallow.app/MacOS/quillon");
  makeLink("links/quillon", quillonTool);
  makeLink("links/chained", at("links/quillon"));
  makeLink("links/other", otherTool);
  makeLink("links/dangling", at("Gone.app/Contents/MacOS/quillon"));
  makeLink("Linked.app", at("Quillon.app"));

  const std::map<std::string, std::string> identifiers = {
      {at("Quillon.app"), std::string(Brand::bundleID)},
      {at("Other.app"), "com.example.Other"},
  };

  struct Case {
    const char* name;
    std::string executable;
    std::optional<std::string> expected;
    std::vector<std::string> asked;
  };
  const std::vector<Case> cases = {
      {"inside the app", quillonTool, at("Quillon.app"), {at("Quillon.app")}},
      {"link into the app", at("links/quillon"), at("Quillon.app"), {at("Quillon.app")}},
      {"chain of links", at("links/chained"), at("Quillon.app"), {at("Quillon.app")}},
      {"through a linked bundle",
       at("Linked.app/Contents/MacOS/quillon"),
       at("Quillon.app"),
       {at("Quillon.app")}},
      {"bundle of another app", at("links/other"), std::nullopt, {at("Other.app")}},
      {"outside any bundle", looseTool, std::nullopt, {}},
      {"not deep enough in a bundle", shallowTool, std::nullopt, {}},
      {"dangling link", at("links/dangling"), std::nullopt, {}},
      {"missing file", at("nowhere/quillon"), std::nullopt, {}},
      {"empty path", "", std::nullopt, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> asked;
    const auto identifier = [&](const std::string& bundle) -> std::optional<std::string> {
      asked.push_back(bundle);
      const auto found = identifiers.find(bundle);
      if (found == identifiers.end()) return std::nullopt;
      return found->second;
    };
    EXPECT_EQ(EnclosingApp::find(c.executable, identifier), c.expected);
    EXPECT_EQ(asked, c.asked);
  }
}

TEST_F(EnclosingAppTest, BundleWithoutIdentifierIsNotTheApp) {
  const std::string tool = makeFile("Quillon.app/Contents/MacOS/quillon");
  EXPECT_EQ(EnclosingApp::find(tool, [](const std::string&) { return std::nullopt; }),
            std::nullopt);
}

}  // namespace
}  // namespace corvel
