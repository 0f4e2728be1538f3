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
