// Packages written for a test.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "support/file_system.h"
#include "temporary_folder.h"
#include "utf8_path.h"

namespace krv::host {

inline void WriteFile(const std::filesystem::path& path, const std::string& text) {
  test::CreateFolders(path.parent_path());
  test::WriteFile(path, text);
}

inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// A test with a folder of its own, and a name no other test of the program has.
class FilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string error;
    folder_ = TemporaryFolder::Create(&error);
    ASSERT_NE(folder_, nullptr) << error;
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    name_ = std::string(test->test_suite_name()) + "." + test->name();
    std::replace(name_.begin(), name_.end(), '/', '.');
  }

  // A name in UTF-8, with slashes.
  std::filesystem::path Path(const std::string& name) const {
    return (folder_->path() / PathFromUtf8(name)).make_preferred();
  }

  // Writes a package with one fragment shader of its own and the given further keys.
  void WritePackage(const std::string& folder, const std::string& unique_name,
                    const std::string& shader, const std::string& keys = R"("params": [])") {
    WriteFile(Path(folder) / "description.json",
              "{\n\"effect_type\": \"audio_visualization\",\n\"unique_name\": \"" + unique_name +
                  "\",\n\"display_name\": \"Test\",\n\"version\": \"1\",\n"
                  "\"opengl_frag\": [\"a.frag\"],\n" +
                  keys + "\n}\n");
    WriteFile(Path(folder) / "a.frag", shader);
  }

  std::unique_ptr<TemporaryFolder> folder_;
  std::string name_;
};

}  // namespace krv::host
