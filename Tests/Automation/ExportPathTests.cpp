#include "CorvelCore/Automation/ExportPath.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace corvel {
namespace {

// A small imaginary disk: folders, files, links and identities.
struct FakeDisk {
  std::set<std::string> folders{"/",
                                "/Users",
                                "/Users/a",
                                "/Users/a/Desktop",
                                "/Users/b",
                                "/tmp",
                                "/Applications",
                                "/Applications/Quillon.app",
                                "/Users/a/Library",
                                "/Users/a/Library/Quillon",
                                "/Users/a/Library/Quillon/Themes"};
  std::set<std::string> files{"/Users/a/Desktop/taken.json", "/Users/a/Desktop/dangling.json"};
  std::map<std::string, std::string> links{{"/tmp/q", "/Users/a/Library/Quillon"}};

  FileQuestions questions() const {
    FileQuestions q;
    q.fileExists = [this](const std::string& p) {
      return files.contains(p) || folders.contains(p);
    };
    q.isDirectory = [this](const std::string& p) { return folders.contains(resolve(p)); };
    q.realPath = [this](const std::string& p) -> std::optional<std::string> {
      const std::string r = resolve(p);
      if (!folders.contains(r) && !files.contains(r)) return std::nullopt;
      return r;
    };
    q.identities = [this](const std::string& p) {
      std::vector<FileIdentity> chain;
      std::string current = resolve(p);
      if (!folders.contains(current)) return chain;
      while (true) {
        chain.push_back({1, std::hash<std::string>{}(current)});
        if (current == "/") break;
        const auto slash = current.rfind('/');
        current = slash == 0 ? "/" : current.substr(0, slash);
      }
      return chain;
    };
    return q;
  }

  std::string resolve(const std::string& path) const {
    for (const auto& [from, to] : links) {
      if (path == from || path.starts_with(from + "/")) return to + path.substr(from.size());
    }
    return path;
  }
};

TEST(ExportPathTest, RulesInOrder) {
  const FakeDisk disk;
  const std::string support = "/Users/a/Library/Quillon";
  const std::optional<std::string> bundle = "/Applications/Quillon.app";
  struct Case {
    std::string path;
    ExportKind kind;
    std::expected<std::string, ExportRefusal> expected;
  };
  const auto refused = [](ExportRefusal r) { return std::unexpected(r); };
  const Case cases[] = {
      {"/Users/a/Desktop/x.QUILLONLAYER", ExportKind::layers, "/Users/a/Desktop/x.QUILLONLAYER"},
      {"/Users/a/Desktop/x.json", ExportKind::layers, "/Users/a/Desktop/x.json"},
      {"/Users/a/../b/x.json", ExportKind::layers, "/Users/b/x.json"},
      {"/Users/a/./Desktop//t.quillontheme", ExportKind::theme, "/Users/a/Desktop/t.quillontheme"},
      {"Users/a/x.json", ExportKind::layers, refused(ExportRefusal::notAbsolute)},
      {"", ExportKind::layers, refused(ExportRefusal::notAbsolute)},
      {"/Users/a/../../x.json", ExportKind::layers, refused(ExportRefusal::notAbsolute)},
      {"/tmp/x.json/", ExportKind::layers, refused(ExportRefusal::wrongExtension)},
      {"/", ExportKind::layers, refused(ExportRefusal::wrongExtension)},
      {"/Users/a/Desktop/.quillonlayer", ExportKind::layers,
       refused(ExportRefusal::wrongExtension)},
      {"/Users/a/Desktop/x.json", ExportKind::theme, refused(ExportRefusal::wrongExtension)},
      {"/Users/a/Desktop/x", ExportKind::sheet, refused(ExportRefusal::wrongExtension)},
      {"/Network/Servers/x.json", ExportKind::layers, refused(ExportRefusal::onNetwork)},
      {"/NET/host/x.json", ExportKind::layers, refused(ExportRefusal::onNetwork)},
      {"/Users/a/Library/Quillon/x.json", ExportKind::layers,
       refused(ExportRefusal::insideQuillon)},
      {"/users/A/library/quillon/Themes/x.json", ExportKind::layers,
       refused(ExportRefusal::insideQuillon)},
      {"/tmp/q/x.json", ExportKind::layers, refused(ExportRefusal::insideQuillon)},
      {"/Applications/Quillon.app/Contents/x.json", ExportKind::layers,
       refused(ExportRefusal::insideQuillon)},
      {"/Users/a/Nowhere/x.json", ExportKind::layers, refused(ExportRefusal::noFolder)},
      {"/Users/a/Desktop/taken.json", ExportKind::layers, refused(ExportRefusal::exists)},
      {"/Users/a/Desktop/dangling.json", ExportKind::layers, refused(ExportRefusal::exists)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    EXPECT_EQ(ExportPath::check(c.path, c.kind, bundle, support, disk.questions()), c.expected);
  }
}

TEST(ExportPathTest, IdentitiesCatchOtherSpellings) {
  FakeDisk disk;
  // A second name for the support folder that no string comparison sees.
  FileQuestions questions = disk.questions();
  questions.identities = [](const std::string& p) {
    if (p == "/Users/a/Desktop" || p == "/Users/a/Library/Quillon") {
      return std::vector<FileIdentity>{{7, 42}, {7, 1}};
    }
    return std::vector<FileIdentity>{{7, 99}, {7, 1}};
  };
  EXPECT_EQ(ExportPath::check("/Users/a/Desktop/x.json", ExportKind::layers, std::nullopt,
                              "/Users/a/Library/Quillon", questions),
            std::unexpected(ExportRefusal::insideQuillon));
}

TEST(ExportRefusalTest, BothWordings) {
  EXPECT_EQ(toolMessage(ExportRefusal::wrongExtension, ExportKind::sheet, false),
            "-f must end in .quillonsheet.");
  EXPECT_EQ(message(ExportRefusal::exists),
            "A file is already there. Quillon never replaces a file, so give file a new name.");
  EXPECT_EQ(message(ExportRefusal::onNetwork),
            "file must be on this Mac. Quillon never writes under /net or /Network, so name a "
            "file in a folder here.");
}

}  // namespace
}  // namespace corvel
