// TemporaryFolder: a new folder under the system's temporary folder for one
// test, removed with all it holds when the test ends, and the two file
// helpers the tests use in it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

namespace corvel {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quillon-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
    path_ = pattern;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  // The bytes of a file; empty when it cannot be read.
  static std::string read(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream buffer;
    buffer << in.rdbuf();
    return buffer.str();
  }
  // Writes a file, making its folder first.
  static void write(const std::filesystem::path& file, std::string_view bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace corvel
