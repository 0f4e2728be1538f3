// The live world's own rules, on this machine's disk and environment.
#include "CorvelCommand/LiveTool.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "CorvelCommand/Locations.h"
#include "TemporaryFolder.h"

namespace corvel {
namespace {

namespace fs = std::filesystem;

class LiveToolTest : public testing::Test {
 protected:
  std::string put(const std::string& name, std::string_view bytes) {
    TemporaryFolder::write(folder / name, bytes);
    return (folder / name).string();
  }

  TemporaryFolder temporary;
  const fs::path& folder = temporary.path();
};

TEST_F(LiveToolTest, ReadsOnlyRegularFilesWithinTheLimit) {
  using Problem = ToolWorld::ReadProblem;
  const std::string file = put("f", "12345");
  fs::create_symlink(file, folder / "link");
  fs::create_symlink(folder / "nowhere", folder / "dangling");
  ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
  struct Case {
    std::string path;
    std::size_t limit;
    std::expected<std::string, Problem> read;
  };
  const Case cases[] = {
      {file, 5, "12345"},
      {file, 4, std::unexpected(Problem::unreadable)},
      {(folder / "link").string(), 5, "12345"},
      {folder.string(), 5, std::unexpected(Problem::unreadable)},
      {(folder / "missing").string(), 5, std::unexpected(Problem::missing)},
      {(folder / "dangling").string(), 5, std::unexpected(Problem::unreadable)},
      {(folder / "fifo").string(), 5, std::unexpected(Problem::unreadable)},  // at once
      {"/dev/zero", 5, std::unexpected(Problem::unreadable)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    EXPECT_EQ(LiveTool::readFile(c.path, c.limit), c.read);
  }
}

TEST_F(LiveToolTest, ListsRegularFilesWithTheirTimes) {
  put("a.quillontheme", "{}");
  fs::create_directory(folder / "folder.quillontheme");
  fs::last_write_time(folder / "a.quillontheme", fs::file_time_type(std::chrono::hours(1000)));
  const auto files = LiveTool::listFolder(folder.string());
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files.front().name, "a.quillontheme");
  EXPECT_EQ(files.front().modified, fs::file_time_type(std::chrono::hours(1000)));
  EXPECT_TRUE(LiveTool::listFolder((folder / "none").string()).empty());
}

// "~" leads to $HOME when it is absolute, else to the user database's home.
TEST(LocationsTest, HomeFolderAndSupportFolder) {
  const char* saved = std::getenv("HOME");
  const std::optional<std::string> before =
      saved ? std::optional<std::string>(saved) : std::nullopt;
  const passwd* entry = ::getpwuid(::getuid());
  ASSERT_NE(entry, nullptr);
  const std::string databaseHome = entry->pw_dir;

  ::setenv("HOME", "/home/someone", 1);
  EXPECT_EQ(Locations::current().home, "/home/someone");
  ::setenv("HOME", "relative", 1);
  EXPECT_EQ(Locations::current().home, databaseHome);
  ::unsetenv("HOME");
  EXPECT_EQ(Locations::current().home, databaseHome);
  if (before) ::setenv("HOME", before->c_str(), 1);

#if defined(__APPLE__)
  EXPECT_EQ(Locations::supportFolder({"/Users/u", "/x", "/y"}),
            "/Users/u/Library/Application Support/Quillon");
  EXPECT_EQ(Locations::preferencesFile({"/Users/u", "/x", "/y"}), std::nullopt);
#else
  EXPECT_EQ(Locations::supportFolder({"/home/u", "/data", "/config"}), "/data/Quillon");
  EXPECT_EQ(Locations::supportFolder({"/home/u", "data", std::nullopt}),
            "/home/u/.local/share/Quillon");
  EXPECT_EQ(Locations::preferencesFile({"/home/u", std::nullopt, "/config"}),
            "/config/Quillon/Preferences.json");
#endif
}

}  // namespace
}  // namespace corvel
