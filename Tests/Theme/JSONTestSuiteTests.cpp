// Runs the public JSON parsing test suite when it is beside the repository:
// y_ files must decode, n_ files must be refused, i_ files must not crash.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {
namespace {

namespace fs = std::filesystem;

fs::path suiteFolder() {
  return fs::path(QUILLON_SHARED_DIR) / "corpora" / "JSONTestSuite" / "test_parsing";
}

std::string contents(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream buffer;
  buffer << in.rdbuf();
  return buffer.str();
}

TEST(JSONTestSuiteTest, AcceptsValidRefusesInvalidSurvivesTheRest) {
  std::error_code error;
  if (!fs::is_directory(suiteFolder(), error))
    GTEST_SKIP() << "JSONTestSuite is not beside the repository";
  int checked = 0;
  for (const auto& entry : fs::directory_iterator(suiteFolder())) {
    const std::string name = entry.path().filename().string();
    if (entry.path().extension() != ".json") continue;
    SCOPED_TRACE(name);
    const auto value = JSONValue::decode(contents(entry.path()));
    if (name.starts_with("y_")) {
      EXPECT_TRUE(value.has_value());
      if (value) {
        EXPECT_EQ(JSONValue::decode(value->encoded().value_or("")), value);
      }
    } else if (name.starts_with("n_")) {
      EXPECT_FALSE(value.has_value());
    }
    ++checked;
  }
  EXPECT_GT(checked, 300);
}

}  // namespace
}  // namespace corvel
