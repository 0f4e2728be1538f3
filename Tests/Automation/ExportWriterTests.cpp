#include "CorvelCore/Automation/ExportWriter.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "TemporaryFolder.h"

namespace corvel {
namespace {

namespace fs = std::filesystem;

class ExportWriterTest : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(root / "support" / "Themes");
    fs::create_directories(root / "out");
  }

  static std::string read(const fs::path& file) { return TemporaryFolder::read(file); }

  TemporaryFolder temporary;
  const fs::path& root = temporary.path();
};

TEST_F(ExportWriterTest, UnwritableFolderIsCouldNotWrite) {
  EXPECT_EQ(ExportWriter::writeNew("x", (root / "missing" / "a.json").string()),
            std::unexpected(ExportRefusal::couldNotWrite));
}

// The live questions of the real disk; links into the support folder and
// dangling links are run through the built tool end to end.
TEST_F(ExportWriterTest, RealDiskRefusals) {
  const std::string support = (root / "support").string();
  struct Case {
    fs::path path;
    std::expected<std::string, ExportRefusal> expected;
  };
  const Case cases[] = {
      {root / "out" / "new.json", (root / "out" / "new.json").string()},
      {root / "support" / "Themes" / "x.json", std::unexpected(ExportRefusal::insideQuillon)},
      {root / "out" / "no" / "x.json", std::unexpected(ExportRefusal::noFolder)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path.string());
    EXPECT_EQ(ExportWriter::check(c.path.string(), ExportKind::layers, std::nullopt, support),
              c.expected);
  }
}

// On a volume without an exclusive rename the file is linked into place:
// still never over another file, and nothing is left at the old name.
TEST_F(ExportWriterTest, VolumesWithoutExclusiveRenameStillNeverReplace) {
  const fs::path from = root / "out" / "temporary";
  const fs::path to = root / "out" / "export.json";
  const fs::path taken = root / "out" / "taken.json";
  TemporaryFolder::write(taken, "theirs");
  struct Case {
    int renameError;
    fs::path to;
    int expected;
  };
  const Case cases[] = {
      {ENOTSUP, to, 0},          // macOS
      {EINVAL, to, 0},           // Linux
      {ENOSYS, to, 0},           // an older kernel
      {ENOTSUP, taken, EEXIST},  // the name is taken
      {EACCES, to, EACCES},      // a real failure is not retried
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.renameError << " " << c.to);
    fs::remove(to);
    TemporaryFolder::write(from, "ours");
    const auto unsupported = [&](const std::string&, const std::string&) { return c.renameError; };
    EXPECT_EQ(ExportWriter::moveExclusive(from.string(), c.to.string(), unsupported), c.expected);
    EXPECT_EQ(read(taken), "theirs");
    EXPECT_EQ(fs::exists(from), c.expected != 0);
    if (c.expected == 0) {
      EXPECT_EQ(read(c.to), "ours");
    }
  }
}

}  // namespace
}  // namespace corvel
