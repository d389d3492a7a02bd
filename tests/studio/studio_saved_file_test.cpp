// What stays of a file that the studio writes anew.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/host_test_files.h"
#include "studio/description_text.h"
#include "studio/keyframe_file.h"

namespace krv::studio {
namespace {

using ::testing::HasSubstr;

namespace fs = std::filesystem;

constexpr char kDescription[] = R"({"params": [{"name": "gain", "default_value": 0.25}]})";
constexpr fs::perms kWrite =
    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

class StudioSavedFile : public host::FilesTest {};

TEST_F(StudioSavedFile, AWriteProtectedFileStaysAsItIs) {
  const fs::path description = Path("description.json");
  const fs::path keyframes = Path("keys.json");
  host::WriteFile(description, kDescription);
  host::WriteFile(keyframes, "mine");
  for (const fs::path& file : {description, keyframes}) {
    fs::permissions(file, kWrite, fs::perm_options::remove);
  }
  std::string error;
  EXPECT_FALSE(SaveDefaults(description, {{"gain", 0.75f}}, &error));
  EXPECT_THAT(error, HasSubstr("description.json: is write-protected; make a copy of your own"));
  EXPECT_FALSE(SaveKeyframes(keyframes, "new", &error));
  EXPECT_THAT(error, HasSubstr("keys.json: is write-protected; give another name"));
  EXPECT_EQ(host::ReadFile(description), kDescription);
  EXPECT_EQ(host::ReadFile(keyframes), "mine");
  for (const fs::path& file : {description, keyframes}) {
    EXPECT_EQ(fs::status(file).permissions() & kWrite, fs::perms::none) << file;
    fs::permissions(file, kWrite, fs::perm_options::add);
  }
  EXPECT_TRUE(SaveKeyframes(keyframes, "new", &error)) << error;
  EXPECT_EQ(host::ReadFile(keyframes), "new");
}

TEST_F(StudioSavedFile, ANewFileIsWrittenAsWell) {
  std::string error;
  EXPECT_TRUE(SaveKeyframes(Path("keys.json"), "new", &error)) << error;
  EXPECT_EQ(host::ReadFile(Path("keys.json")), "new");
  EXPECT_EQ(std::distance(fs::directory_iterator(Path("")), {}), 1);
}

}  // namespace
}  // namespace krv::studio
