#include "CorvelCommand/LineTool.h"

#include <gtest/gtest.h>

#include "CorvelCommand/HandOver.h"
#include "CorvelCommand/TestWorld.h"

namespace corvel {
namespace {

using Time = std::filesystem::file_time_type;

std::int32_t run(TestWorld& test, std::vector<std::string> words) {
  return LineTool::run(words, test.world());
}

Time at(int seconds) { return Time(std::chrono::seconds(seconds)); }

std::string theme(std::string_view id, std::string_view name) {
  return R"({"version":1,"id":")" + std::string(id) + R"(","name":")" + std::string(name) + "\"}";
}

std::string sheet(std::string_view bundleID, std::string_view name, std::string_view renamed) {
  return R"({"version":1,"app":{"bundleID":")" + std::string(bundleID) + R"(","name":")" +
         std::string(name) + R"("},"rename":{"cmd+t":")" + std::string(renamed) + "\"}}";
}

const std::string kLayers = R"({"version":1,"layers":[
  {"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","name":"Work","enabled":true,
   "trigger":{"parts":[{"modifier":"command","side":"right"},{"modifier":"shift","side":"right"}]},
   "keys":{"keyA":{"action":{"type":"typeText","text":"Hello"}}}},
  {"id":"7C9E6679-7425-40DE-944B-E07FC1F90AE7","name":"Browsing","appScope":"com.apple.Safari",
   "needsReview":true,"enabled":true,
   "trigger":{"parts":[{"modifier":"control","side":"either"},{"modifier":"option","side":"either"},
                       {"modifier":"shift","side":"either"},{"modifier":"command","side":"either"}]},
   "keys":{}}]})";

const std::string kLayersUnreadable =
    "Quillon's layers file could not be read, so nothing was listed or exported. Open Quillon's "
    "Settings, Layers, to see why.\n";

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

// An import's file is read and decoded before the app is even looked for.
TEST(LineToolTest, ImportsAreCheckedBeforeAnythingElse) {
  const std::string unreadable =
      "That file could not be read. Check its name, and that it is a "
      "file.\n";
  struct Case {
    std::vector<std::string> words;
    std::string err;
  };
  const Case cases[] = {
      {{"themes", "import", "junk.quillontheme"},
       "That file is not a theme Quillon can read. Choose a .quillontheme file Quillon "
       "exported.\n"},
      {{"sheets", "import", "junk.quillonsheet"},
       "That file is not a cheatsheet Quillon can read. Choose a .quillonsheet file Quillon "
       "exported.\n"},
      {{"layers", "import", "empty.quillonlayer"},
       "That file holds no layers Quillon can read. Choose a .quillonlayer file Quillon "
       "exported.\n"},
      {{"sheets", "import", "big.quillonsheet"}, unreadable},
      {{"layers", "import", "/work/here"}, "quillon layers import takes a .quillonlayer file.\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.words));
    TestWorld test;
    test.put("/work/here/junk.quillontheme", "not json");
    test.put("/work/here/junk.quillonsheet", R"({"app":{"bundleID":"a b"}})");
    test.put("/work/here/empty.quillonlayer", R"({"version":1,"layers":[]})");
    test.put("/work/here/big.quillonsheet", std::string(1048577, ' '));
    const std::int32_t status = run(test, c.words);
    EXPECT_EQ(status, c.err.find("takes a") != std::string::npos ? 1 : 3);
    EXPECT_TRUE(test.err.starts_with(c.err)) << test.err;
    EXPECT_TRUE(test.handOvers.empty());
  }
  TestWorld good;
  good.app = "/Applications/Quillon.app";
  good.handOverResult = HandOver::delivered;
  good.put("/home/u/t.corveltheme", theme("mine", "Mine"));
  EXPECT_EQ(run(good, {"themes", "import", "~/t.corveltheme"}), 0);
  ASSERT_EQ(good.handOvers.size(), 1u);
  EXPECT_EQ(good.handOvers.front().first, "quillon://import?file=/home/u/t.corveltheme");
}

TEST(LineToolTest, ListsLayers) {
  TestWorld none;
  EXPECT_EQ(run(none, {"layers", "list"}), 0);
  EXPECT_EQ(none.out,
            "No layers yet. Add one in Quillon's Settings, in Layers, or with quillon layers "
            "store.\n");
  TestWorld noneJSON;
  EXPECT_EQ(run(noneJSON, {"layers", "list", "--json"}), 0);
  EXPECT_EQ(noneJSON.out, "[]\n");

  TestWorld test;
  test.put(test.supportFolder + "/Layers.json", kLayers);
  EXPECT_EQ(run(test, {"layers", "list", "--json"}), 0);
  EXPECT_EQ(test.out,
            "[\n"
            "  {\n"
            "    \"enabled\" : true,\n"
            "    \"keys\" : 1,\n"
            "    \"name\" : \"Work\",\n"
            "    \"needsReview\" : false,\n"
            "    \"trigger\" : \"rshift-rcmd\"\n"
            "  },\n"
            "  {\n"
            "    \"app\" : \"com.apple.Safari\",\n"
            "    \"enabled\" : false,\n"
            "    \"keys\" : 0,\n"
            "    \"name\" : \"Browsing\",\n"
            "    \"needsReview\" : true,\n"
            "    \"trigger\" : \"hyper\"\n"
            "  }\n"
            "]\n");

  for (const bool damaged : {true, false}) {
    SCOPED_TRACE(damaged ? "damaged" : "unreadable");
    TestWorld broken;
    broken.put(broken.supportFolder + "/Layers.json", damaged ? "{ damaged" : kLayers);
    broken.files.back().second.unreadable = !damaged;
    EXPECT_EQ(run(broken, {"layers", "list"}), 3);
    EXPECT_EQ(broken.out, "");
    EXPECT_EQ(broken.err, kLayersUnreadable);
  }
}

// The user's own themes come after the built-in ones, newest first; a file
// that does not read as a theme is passed over.
TEST(LineToolTest, ListsOwnThemesNewestFirst) {
  TestWorld test;
  const std::string themes = test.supportFolder + "/Themes/";
  test.put(themes + "old.quillontheme", theme("old", "Old"), at(100));
  test.put(themes + "undated.quillontheme", theme("undated", "Undated"));
  test.put(themes + "new.corveltheme", theme("new", "New"), at(300));
  test.put(themes + "broken.quillontheme", "{", at(400));
  test.put(themes + "tie-a.quillontheme", theme("tie-a", "Tie A"), at(200));
  test.put(themes + "tie-b.quillontheme", theme("tie-b", "Tie B"), at(200));
  test.put(themes + "notes.txt", theme("txt", "Text"), at(500));
  test.preferences.emplace("overlay.v1", JSONObject{{"themeID", "tie-b"}});
  EXPECT_EQ(run(test, {"themes", "list"}), 0);
  EXPECT_TRUE(
      test.out.ends_with("  chalkboard      Chalkboard      Fun\n"
                         "  new             New             Mine\n"
                         "  tie-a           Tie A           Mine\n"
                         "* tie-b           Tie B           Mine\n"
                         "  old             Old             Mine\n"
                         "  undated         Undated         Mine\n"))
      << test.out;
}

TEST(LineToolTest, ThemeInUseIsReadFromTheOverlaySettings) {
  const JSONValue settings[] = {JSONObject{{"themeID", "ink"}, {"other", 1}},
                                "{\"themeID\":\"ink\"}"};
  for (const auto& value : settings) {
    TestWorld test;
    test.preferences.emplace("overlay.v1", value);
    EXPECT_EQ(run(test, {"themes", "list", "--json"}), 0);
    EXPECT_NE(test.out.find("\"id\" : \"ink\",\n    \"inUse\" : true"), std::string::npos);
  }
  TestWorld broken;
  broken.preferences.emplace("overlay.v1", "not json");
  EXPECT_EQ(run(broken, {"themes", "list"}), 0);
  EXPECT_EQ(broken.out.find("* "), std::string::npos);
}

// One row per app, by the app's name: a sheet under the current extension
// wins over one under the earlier, then the first by file name; a sheet
// without changes is no changed sheet.
TEST(LineToolTest, ListsChangedSheets) {
  TestWorld test;
  const std::string sheets = test.supportFolder + "/Sheets/";
  test.put(sheets + "a.corvelsheet", sheet("com.example.Zed", "Zed", "From the old file"));
  test.put(sheets + "z.quillonsheet", sheet("com.example.Zed", "Zed", "From the new file"));
  test.put(sheets + "b.quillonsheet", sheet("com.example.Alpha", "Alpha", "First"));
  test.put(sheets + "c.quillonsheet", sheet("com.example.Alpha", "Alpha Two", "Second"));
  test.put(sheets + "empty.quillonsheet", R"({"app":{"bundleID":"com.example.Empty"}})");
  EXPECT_EQ(run(test, {"sheets", "list"}), 0);
  EXPECT_EQ(test.out,
            "Alpha   com.example.Alpha   1 renamed, 0 hidden, 0 added\n"
            "Zed     com.example.Zed     1 renamed, 0 hidden, 0 added\n");
  test.folders.insert("/out");
  test.out.clear();
  EXPECT_EQ(
      run(test, {"sheets", "export", "--app", "com.example.Zed", "-f", "/out/z.quillonsheet"}), 0);
  EXPECT_NE(test.find("/out/z.quillonsheet")->bytes.find("From the new file"), std::string::npos);
}

// Without --name, the theme in use is exported, else the default theme.
TEST(LineToolTest, ThemeExportWithoutANameTakesTheThemeInUse) {
  struct Case {
    std::optional<std::string> inUse;
    std::string name;
  };
  const Case cases[] = {{"matrix", "Matrix"},
                        {"mine", "Mine"},
                        {"gone", "Space Black"},
                        {std::nullopt, "Space Black"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.inUse.value_or("none"));
    TestWorld test;
    test.put(test.supportFolder + "/Themes/mine.quillontheme", theme("mine", "Mine"));
    if (c.inUse) test.preferences.emplace("overlay.v1", JSONObject{{"themeID", *c.inUse}});
    EXPECT_EQ(run(test, {"themes", "export", "-f", "t.quillontheme"}), 0);
    EXPECT_EQ(test.out, "Exported the theme " + c.name + " to /work/here/t.quillontheme.\n");
    ASSERT_NE(test.find("/work/here/t.quillontheme"), nullptr);
  }
}

TEST(LineToolTest, ExportRefusals) {
  struct Case {
    std::vector<std::string> words;
    std::string err;
  };
  const Case cases[] = {
      {{"layers", "export", "-f", "/Network/x.json"},
       "-f must be on this Mac. Quillon never writes under /net or /Network, so name a file in a "
       "folder here.\n"},
      {{"layers", "export", "-f", "/work/../../x.json"},
       "-f must name a file, with no .. climbing above the top folder.\n"},
      {{"layers", "export", "-f", "x.txt"}, "-f must end in .quillonlayer or .json.\n"},
      {{"layers", "export", "-f", "/nowhere/x.json"},
       "The folder for -f is not there. Name a file in a folder that exists.\n"},
      {{"layers", "export", "-f", "~/Support/Quillon/x.json"},
       "Quillon never writes inside its own app or its own folder. Give -f a file somewhere "
       "else.\n"},
      {{"layers", "export", "-f", "taken.json"},
       "A file is already there. quillon never replaces a file, so give -f a new name.\n"},
      {{"layers", "export", "--name", "Nobody", "-f", "n.json"},
       "No layer has that name or those modifiers. Run quillon layers list to see them.\n"},
      {{"themes", "export", "--name", "Nothing", "-f", "t.quillontheme"},
       "No theme has that name or id. Run quillon themes list to see them.\n"},
      {{"sheets", "export", "--app", "com.example.None", "-f", "s.quillonsheet"},
       "That app's cheatsheet has no changes to export. Run quillon sheets list to see the ones "
       "there are.\n"},
      {{"themes", "export", "--name", "Matrix", "-f", "full.quillontheme"},
       "The file could not be written. Check that the folder can be written to and the disk has "
       "room.\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.words));
    TestWorld test;
    test.put(test.supportFolder + "/Layers.json", kLayers);
    test.put("/work/here/taken.json", "mine");
    test.writesFail = c.words.back() == "full.quillontheme";
    const std::size_t files = test.files.size();
    EXPECT_EQ(run(test, c.words), 3);
    EXPECT_EQ(test.out, "");
    EXPECT_EQ(test.err, c.err);
    EXPECT_EQ(test.files.size(), files);
    EXPECT_EQ(test.find("/work/here/taken.json")->bytes, "mine");
  }

  TestWorld none;
  EXPECT_EQ(run(none, {"layers", "export", "-f", "all.json"}), 3);
  EXPECT_EQ(none.err,
            "There are no layers to export yet. Add one in Quillon's Settings, in Layers.\n");
  TestWorld damaged;
  damaged.put(damaged.supportFolder + "/Layers.json", "{");
  EXPECT_EQ(run(damaged, {"layers", "export", "-f", "all.json"}), 3);
  EXPECT_EQ(damaged.err, kLayersUnreadable);
}

TEST(LineToolTest, ExportsNamedLayers) {
  TestWorld test;
  test.put(test.supportFolder + "/Layers.json", kLayers);
  EXPECT_EQ(run(test, {"layers", "export", "--name", "WORK", "-f", "w.quillonlayer"}), 0);
  EXPECT_EQ(test.out, "Exported 1 layer to /work/here/w.quillonlayer.\n");
  const std::string& written = test.find("/work/here/w.quillonlayer")->bytes;
  EXPECT_NE(written.find("\"name\" : \"Work\""), std::string::npos);
  EXPECT_EQ(written.find("Browsing"), std::string::npos);
}

}  // namespace
}  // namespace corvel
