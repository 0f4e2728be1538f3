#include "CorvelCore/Automation/ExportWriter.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

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

  std::size_t entriesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
  }

  TemporaryFolder temporary;
  const fs::path& root = temporary.path();
};

TEST_F(ExportWriterTest, UnwritableFolderIsCouldNotWrite) {
  EXPECT_EQ(ExportWriter::writeNew("x", (root / "missing" / "a.json").string()),
            std::unexpected(ExportRefusal::couldNotWrite));
}

TEST_F(ExportWriterTest, RealDiskRefusals) {
  const std::string support = (root / "support").string();
  fs::create_symlink(root / "support", root / "out" / "link");
  fs::create_symlink(root / "nowhere", root / "out" / "dangling.json");
  struct Case {
    fs::path path;
    std::expected<std::string, ExportRefusal> expected;
  };
  const Case cases[] = {
      {root / "out" / "new.json", (root / "out" / "new.json").string()},
      {root / "out" / "link" / "x.json", std::unexpected(ExportRefusal::insideQuillon)},
      {root / "support" / "Themes" / "x.json", std::unexpected(ExportRefusal::insideQuillon)},
      {root / "out" / "dangling.json", std::unexpected(ExportRefusal::exists)},
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

// Sixteen processes race to export to the same new path: exactly one wins,
// the others are told the file is there, and the file is whole.
TEST_F(ExportWriterTest, RacingWritersLeaveOneWholeFile) {
  const std::string target = (root / "out" / "race.quillonlayer").string();
  constexpr int kWriters = 16;
  std::vector<pid_t> children;
  for (int i = 0; i < kWriters; ++i) {
    const pid_t pid = ::fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      const std::string data(1 << 16, static_cast<char>('a' + i));
      const auto result = ExportWriter::writeNew(data, target);
      ::_exit(result ? 0 : (result.error() == ExportRefusal::exists ? 3 : 4));
    }
    children.push_back(pid);
  }
  int winners = 0;
  int told = 0;
  for (pid_t pid : children) {
    int status = 0;
    ::waitpid(pid, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    winners += WEXITSTATUS(status) == 0;
    told += WEXITSTATUS(status) == 3;
  }
  EXPECT_EQ(winners, 1);
  EXPECT_EQ(told, kWriters - 1);
  const std::string written = read(target);
  ASSERT_EQ(written.size(), 1u << 16);
  EXPECT_EQ(written.find_first_not_of(written.front()), std::string::npos);
  EXPECT_EQ(entriesIn(root / "out"), 1u);
}

}  // namespace
}  // namespace corvel
