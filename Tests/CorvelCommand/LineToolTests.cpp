#include "CorvelCommand/LineTool.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "CorvelCommand/HandOver.h"
#include "CorvelCommand/TestWorld.h"

namespace corvel {
namespace {

std::int32_t run(TestWorld& test, std::vector<std::string> words) {
  return LineTool::run(words, test.world());
}

TEST(LineToolTest, SendsOneLinkAndMapsTheReport) {
  struct Case {
    std::optional<std::string> app;
    std::optional<HandOver> report;
    std::int32_t status;
    std::string err;
  };
  const std::string notDelivered =
      "Quillon did not take the command within 5 seconds. Open Quillon, then try again.\n";
  const Case cases[] = {
      {"/Applications/Quillon.app", HandOver::delivered, 0, ""},
      {"/Applications/Quillon.app", HandOver::failed, 5, notDelivered},
      {"/Applications/Quillon.app", HandOver::timedOut, 5, notDelivered},
      {std::nullopt, std::nullopt, 2, "Quillon is not installed. Get it at quillon.app.\n"},
  };
  for (const auto& c : cases) {
    TestWorld test;
    test.app = c.app;
    test.handOverResult = c.report;
    EXPECT_EQ(run(test, {"layer", "show", "--text", "a=Hi & bye", "--fill", "dim"}), c.status);
    EXPECT_EQ(test.err, c.err);
    EXPECT_EQ(test.out, "");
    if (c.report) {
      ASSERT_EQ(test.handOvers.size(), 1u);
      EXPECT_EQ(test.handOvers.front().first, "quillon://layer/show?fill=dimmed&a=Hi%20%26%20bye");
      EXPECT_EQ(test.handOvers.front().second, *c.app);
    } else {
      EXPECT_TRUE(test.handOvers.empty());
    }
  }
}

TEST(LineToolTest, VersionLineComesFromTheWorld) {
  TestWorld test;
  ToolWorld world = test.world();
  world.version = {"2.1", "310"};
  EXPECT_EQ(LineTool::run(std::vector<std::string>{"--version"}, world), 0);
  EXPECT_EQ(test.out, "quillon 2.1 (310)\n");
}

TEST(LineToolTest, ThemeInUseIsReadFromTheOverlaySettings) {
  const JSONValue settings[] = {JSONObject{{"themeID", "ink"}, {"other", 1}},
                                "{\"themeID\":\"ink\"}"};
  for (const auto& value : settings) {
    TestWorld test;
    test.overlaySettings = value;
    EXPECT_EQ(run(test, {"themes", "list", "--json"}), 0);
    EXPECT_NE(test.out.find("\"id\" : \"ink\",\n    \"inUse\" : true"), std::string::npos);
  }
  TestWorld broken;
  broken.overlaySettings = "not json";
  EXPECT_EQ(run(broken, {"themes", "list"}), 0);
  EXPECT_EQ(broken.out.find("* "), std::string::npos);
}

TEST(LineToolTest, ReadRefusesWhatIsNotARegularFileWithinTheLimit) {
  char pattern[] = "/tmp/quillon-read-XXXXXX";
  ASSERT_NE(::mkdtemp(pattern), nullptr);
  const std::string folder = pattern;
  const std::string file = folder + "/f";
  FILE* handle = std::fopen(file.c_str(), "wb");
  std::fputs("12345", handle);
  std::fclose(handle);
  ::symlink(file.c_str(), (folder + "/link").c_str());
  EXPECT_EQ(LineTool::read(file, 5, true), "12345");
  EXPECT_EQ(LineTool::read(file, 4, true), std::nullopt);
  EXPECT_EQ(LineTool::read(folder + "/link", 5, true), "12345");
  EXPECT_EQ(LineTool::read(folder + "/link", 5, false), std::nullopt);
  EXPECT_EQ(LineTool::read(folder, 5, true), std::nullopt);
  EXPECT_EQ(LineTool::read(folder + "/missing", 5, true), std::nullopt);
  ASSERT_EQ(::mkfifo((folder + "/fifo").c_str(), 0600), 0);
  EXPECT_EQ(LineTool::read(folder + "/fifo", 5, true), std::nullopt);  // returns at once
  EXPECT_EQ(LineTool::read("/dev/zero", 5, true), std::nullopt);
  std::remove((folder + "/fifo").c_str());
  std::remove((folder + "/link").c_str());
  std::remove(file.c_str());
  ::rmdir(folder.c_str());
}

}  // namespace
}  // namespace corvel
