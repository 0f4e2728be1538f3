// Runs the built quillon as a new user would: a throw-away home folder, real
// files in the support folder, and exact output and exit codes compared. The
// driver's cases run against an in-memory world (Tests/CorvelCommand); these
// are the ones only the real process and disk can show: the usage on the
// real streams, output that cannot be written, FIFOs, links and racing
// exports.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <map>

#include "CorvelCommand/Locations.h"
#include "CorvelCore/Automation/CommandLineInterface.h"
#include "TemporaryFolder.h"

extern char** environ;

namespace corvel {
namespace {

namespace fs = std::filesystem;

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

std::string slurp(const fs::path& file) { return TemporaryFolder::read(file); }
void spit(const fs::path& file, std::string_view text) { TemporaryFolder::write(file, text); }

class QuillonTest : public testing::Test {
 protected:
  void SetUp() override {
    support = Locations::supportFolder(environment());
    fs::create_directories(support);
  }

  // The environment the tool runs in: the throw-away home, and XDG folders
  // inside it.
  Locations::Environment environment() const {
    return {home.string(), (home / ".local/share").string(), (home / ".config").string()};
  }

  // Runs quillon with the arguments in the throw-away home, from `home/work`.
  Outcome quillon(const std::vector<std::string>& arguments) {
    const pid_t pid = start(arguments, ".out", ".err");
    return finish(pid, ".out", ".err");
  }

  // Starts quillon without waiting; its output goes to the two files named,
  // or standard output to `outFd` when one is given.
  pid_t start(const std::vector<std::string>& arguments, const std::string& outName,
              const std::string& errName, int outFd = -1) {
    fs::create_directories(home / "work");
    const fs::path out = home / outName;
    const fs::path err = home / errName;
    std::vector<std::string> words{QUILLON_BINARY};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (auto& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    const Locations::Environment where = environment();
    // Foundation on the Mac takes the home folder from CFFIXED_USER_HOME
    // before the user database.
    std::vector<std::string> variables = {"HOME=" + where.home,
                                          "CFFIXED_USER_HOME=" + where.home,
                                          "PATH=/usr/bin:/bin",
                                          "XDG_DATA_HOME=" + where.xdgDataHome.value_or(""),
                                          "XDG_CONFIG_HOME=" + where.xdgConfigHome.value_or(""),
                                          "XDG_DATA_DIRS=" + (home / "none").string(),
                                          "XDG_CONFIG_DIRS=" + (home / "none").string(),
                                          "LANG=C.UTF-8"};
    std::vector<char*> envp;
    for (auto& variable : variables) envp.push_back(variable.data());
    envp.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (outFd >= 0) {
      posix_spawn_file_actions_adddup2(&actions, outFd, 1);
    } else {
      posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                       0644);
    }
    posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addchdir_np(&actions, (home / "work").c_str());
    pid_t pid = -1;
    if (::posix_spawn(&pid, QUILLON_BINARY, &actions, nullptr, argv.data(), envp.data()) != 0) {
      pid = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    return pid;
  }

  Outcome finish(pid_t pid, const std::string& outName, const std::string& errName) {
    Outcome run;
    if (pid > 0) {
      int status = 0;
      ::waitpid(pid, &status, 0);
      run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    run.out = slurp(home / outName);
    run.err = slurp(home / errName);
    return run;
  }

  // Every file below the support folder with its bytes, to prove a command
  // left it as it was.
  std::map<std::string, std::string> supportSnapshot() {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(support)) {
      files[entry.path().string()] = entry.is_regular_file() ? slurp(entry.path()) : "(folder)";
    }
    return files;
  }

  TemporaryFolder temporary;
  const fs::path& home = temporary.path();
  fs::path support;
};

const std::string kUsage = CommandLineInterface::usage() + "\n";

const char* kLayers = R"({
  "version" : 1,
  "layers" : [
    {"id" : "0F8FAD5B-D9CB-469F-A165-70867728950E", "name" : "Work", "enabled" : true,
     "kind" : "custom", "holdDelay" : 0.2,
     "trigger" : {"parts" : [{"modifier" : "command", "side" : "right"}, {"modifier" : "shift", "side" : "right"}]},
     "keys" : {"keyA" : {"action" : {"type" : "typeText", "text" : "Hello"}}}},
    {"id" : "7C9E6679-7425-40DE-944B-E07FC1F90AE7", "name" : "Browsing",
     "appScope" : "com.apple.Safari", "needsReview" : true, "enabled" : true,
     "trigger" : {"parts" : [{"modifier" : "control", "side" : "either"}, {"modifier" : "option", "side" : "either"},
                             {"modifier" : "shift", "side" : "either"}, {"modifier" : "command", "side" : "either"}]},
     "keys" : {}}
  ]
})";

TEST_F(QuillonTest, HelpVersionAndRefusals) {
  struct Case {
    std::vector<std::string> arguments;
    int status;
    std::string out;
    std::string err;
  };
  const Case cases[] = {
      {{}, 0, kUsage, ""},
      {{"help", "nope"},
       1,
       "",
       "\u201Cnope\u201D is not a quillon command. Run quillon help to see the commands.\n\n" +
           kUsage},
      {{"version"}, 0, "quillon, a development build\n", ""},
      {{"help", "themes"},
       0,
       "Usage:\n  quillon themes list [--json] | export [--name N] -f FILE | import FILE\n\n"
       "Run quillon help to see every command.\n",
       ""},
      {{"frobnicate"},
       1,
       "",
       "\u201Cfrobnicate\u201D is not a quillon command. Run quillon help to see the "
       "commands.\n\n" +
           kUsage},
      {{"show", "--json"},
       1,
       "",
       "quillon show does not take the option \u201C--json\u201D. Run quillon help show to see "
       "what it takes.\n\n" +
           kUsage},
      {{"show", "--position", "Bottom Right", "--width", "5000", "--text", "a=Hi & bye"},
       2,
       "",
       "Quillon is not installed. Get it at quillon.app.\n"},
      {{"layers", "import", "missing.quillonlayer"},
       3,
       "",
       "That file could not be read. Check its name, and that it is a file.\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.arguments));
    const Outcome run = quillon(c.arguments);
    EXPECT_EQ(run.status, c.status);
    EXPECT_EQ(run.out, c.out);
    EXPECT_EQ(run.err, c.err);
  }
}

// Output that does not arrive is reported, so a script learns of it.
TEST_F(QuillonTest, OutputThatCannotBeWritten) {
  const std::vector<std::vector<std::string>> commands = {
      {"themes", "list"}, {"themes", "list", "--json"}, {"help"}, {"version"}, {"layers", "list"}};
  const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
  if (full < 0) GTEST_SKIP() << "no /dev/full (a device that is always full) on this system";
  for (const auto& arguments : commands) {
    SCOPED_TRACE(testing::PrintToString(arguments));
    const Outcome run = finish(start(arguments, ".out", ".err", full), ".out", ".err");
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.err,
              "quillon could not write its output: check that where it goes can be written to "
              "and has room.\n");
  }
  ::close(full);
}

// A pipe whose reader is gone: the tool ends quietly, killed by SIGPIPE as
// every filter is, or, where SIGPIPE is ignored, with status 3.
TEST_F(QuillonTest, ReaderThatStoppedReading) {
  for (const bool ignored : {false, true}) {
    SCOPED_TRACE(ignored ? "SIGPIPE ignored" : "SIGPIPE as it is");
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[0]);
    const auto previous = ::signal(SIGPIPE, ignored ? SIG_IGN : SIG_DFL);
    const pid_t pid = start({"themes", "list"}, ".out", ".err", ends[1]);
    ::signal(SIGPIPE, previous);
    ::close(ends[1]);
    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    if (ignored) {
      EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 3) << status;
    } else {
      EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGPIPE) << status;
    }
    EXPECT_EQ(slurp(home / ".err"), "");
  }
}

// Files that are no regular files are refused at once, never waited on.
TEST_F(QuillonTest, FIFOsAndFoldersAreNoFiles) {
  fs::create_directories(home / "work");
  ASSERT_EQ(::mkfifo((home / "work" / "fifo.quillontheme").c_str(), 0600), 0);
  const Outcome fifo = quillon({"themes", "import", "fifo.quillontheme"});
  EXPECT_EQ(fifo.status, 3);
  EXPECT_EQ(fifo.err, "That file could not be read. Check its name, and that it is a file.\n");
  fs::create_directories(home / "work" / "folder.quillonlayer");
  EXPECT_EQ(quillon({"layers", "import", "folder.quillonlayer"}).err, fifo.err);

  ASSERT_EQ(::mkfifo((support / "Layers.json").c_str(), 0600), 0);
  const Outcome layers = quillon({"layers", "list"});
  EXPECT_EQ(layers.status, 3);
  EXPECT_EQ(layers.out, "");
  EXPECT_EQ(layers.err,
            "Quillon's layers file could not be read, so nothing was listed or exported. Open "
            "Quillon's Settings, Layers, to see why.\n");
}

// The live world reads the support folder and the preferences where the
// platform keeps them, and never changes them.
TEST_F(QuillonTest, ListsWhatTheSupportFolderHolds) {
  spit(support / "Layers.json", kLayers);
  spit(support / "Sheets" / "com.apple.Safari.quillonsheet",
       R"({"version":1,"app":{"bundleID":"com.apple.Safari","name":"Safari"},
           "rename":{"cmd+t":"New tab","cmd+w":"Close"},"hide":["cmd+q"]})");
  spit(support / "Themes" / "mine.quillontheme", R"({"version":1,"id":"mine","name":"Mine"})");
  const auto before = supportSnapshot();
  const Outcome layers = quillon({"layers", "list"});
  EXPECT_EQ(layers.status, 0);
  EXPECT_EQ(layers.out,
            "Work       rshift-rcmd   all apps           on                  1 key\n"
            "Browsing   hyper         com.apple.Safari   off, needs review   0 keys\n");
  EXPECT_EQ(quillon({"sheets", "list"}).out,
            "Safari   com.apple.Safari   2 renamed, 1 hidden, 0 added\n");
  const Outcome themes = quillon({"themes", "list"});
  EXPECT_TRUE(themes.out.ends_with("  mine            Mine            Mine\n")) << themes.out;
  EXPECT_EQ(supportSnapshot(), before);

  if (const auto preferences = Locations::preferencesFile(environment())) {
    spit(*preferences, R"({"overlay.v1" : "{\"themeID\" : \"matrix\"}"})");
    EXPECT_NE(quillon({"themes", "list"}).out.find("\n* matrix          Matrix          Neon\n"),
              std::string::npos);
  }
}

// What only a real disk shows: a link into the support folder, a dangling
// link, and a file that is already there.
TEST_F(QuillonTest, ExportsWriteNewFilesOnly) {
  spit(support / "Layers.json", kLayers);
  const auto before = supportSnapshot();
  const std::string target = (home / "work" / "mine.quillonlayer").string();
  const Outcome first = quillon({"layers", "export", "-f", "mine.quillonlayer"});
  EXPECT_EQ(first.status, 0);
  EXPECT_EQ(first.out, "Exported 2 layers to " + target + ".\n");
  const std::string written = slurp(target);
  EXPECT_TRUE(written.starts_with("{\n  \"layers\" : [\n")) << written;

  fs::create_symlink(support, home / "work" / "link");
  fs::create_symlink(home / "nowhere", home / "work" / "dangling.json");
  struct Case {
    std::vector<std::string> arguments;
    std::string err;
  };
  const std::string there =
      "A file is already there. quillon never replaces a file, so give -f a new name.\n";
  const Case refusals[] = {
      {{"layers", "export", "--name", "work", "-f", target}, there},
      {{"layers", "export", "-f", "dangling.json"}, there},
      {{"layers", "export", "-f", "link/x.json"},
       "Quillon never writes inside its own app or its own folder. Give -f a file somewhere "
       "else.\n"},
  };
  for (const auto& c : refusals) {
    SCOPED_TRACE(testing::PrintToString(c.arguments));
    const Outcome run = quillon(c.arguments);
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, c.err);
  }
  EXPECT_EQ(slurp(target), written);
  EXPECT_EQ(supportSnapshot(), before);
}

// Sixteen exports race to one new path: one writes it whole, the others are
// told a file is already there, and no temporary folder is left behind.
TEST_F(QuillonTest, RacingExportsWriteOneFile) {
  spit(support / "Layers.json", kLayers);
  const std::string target = (home / "out" / "race.quillonlayer").string();
  fs::create_directories(home / "out");
  constexpr int kRacers = 16;
  std::vector<pid_t> racers;
  for (int i = 0; i < kRacers; ++i) {
    racers.push_back(start({"layers", "export", "-f", target}, ".out" + std::to_string(i),
                           ".err" + std::to_string(i)));
  }
  int winners = 0;
  for (int i = 0; i < kRacers; ++i) {
    const Outcome run = finish(racers[i], ".out" + std::to_string(i), ".err" + std::to_string(i));
    if (run.status == 0) {
      ++winners;
      EXPECT_EQ(run.out, "Exported 2 layers to " + target + ".\n");
    } else {
      EXPECT_EQ(run.status, 3);
      EXPECT_EQ(run.err,
                "A file is already there. quillon never replaces a file, so give -f a new "
                "name.\n");
    }
  }
  EXPECT_EQ(winners, 1);
  const Outcome listed = quillon({"layers", "import", target});  // the file decodes whole
  EXPECT_EQ(listed.err, "Quillon is not installed. Get it at quillon.app.\n");
  std::vector<std::string> left;
  for (const auto& entry : fs::directory_iterator(home / "out"))
    left.push_back(entry.path().filename());
  EXPECT_EQ(left, std::vector<std::string>{"race.quillonlayer"});
}

}  // namespace
}  // namespace corvel
