// Modes and links of files that the studio writes anew.
#include <gtest/gtest.h>

#include "host/host_test_files.h"
#include "studio/description_text.h"
#include "studio/keyframe_file.h"

namespace krv::studio {
namespace {

namespace fs = std::filesystem;

constexpr char kDescription[] = R"({"params": [{"name": "gain", "default_value": 0.25}]})";
constexpr char kChanged[] = R"({"params": [{"name": "gain", "default_value": 0.75}]})";

class StudioSavedMode : public host::FilesTest, public ::testing::WithParamInterface<unsigned> {};
class StudioSavedLink : public host::FilesTest {};

TEST_P(StudioSavedMode, Stays) {
  const auto mode = static_cast<fs::perms>(GetParam());
  const fs::path description = Path("description.json");
  const fs::path keyframes = Path("keys.json");
  host::WriteFile(description, kDescription);
  host::WriteFile(keyframes, "mine");
  for (const fs::path& file : {description, keyframes}) fs::permissions(file, mode);
  std::string error;
  EXPECT_TRUE(SaveDefaults(description, {{"gain", 0.75f}}, &error)) << error;
  EXPECT_TRUE(SaveKeyframes(keyframes, "new", &error)) << error;
  EXPECT_EQ(host::ReadFile(description), kChanged);
  EXPECT_EQ(host::ReadFile(keyframes), "new");
  for (const fs::path& file : {description, keyframes}) {
    EXPECT_EQ(fs::status(file).permissions(), mode) << file;
  }
}

INSTANTIATE_TEST_SUITE_P(All, StudioSavedMode, ::testing::Values(0600u, 0660u, 0755u));

TEST_F(StudioSavedLink, StaysOneAndItsFileIsWritten) {
  host::WriteFile(Path("shared/real.json"), kDescription);
  fs::create_directory(Path("package"));
  const fs::path description = Path("package/description.json");
  fs::create_symlink("../shared/one.json", description);
  fs::create_symlink("real.json", Path("shared/one.json"));
  std::string error;
  EXPECT_TRUE(SaveDefaults(description, {{"gain", 0.75f}}, &error)) << error;
  EXPECT_TRUE(fs::is_symlink(description));
  EXPECT_TRUE(fs::is_symlink(Path("shared/one.json")));
  EXPECT_EQ(host::ReadFile(Path("shared/real.json")), kChanged);
  EXPECT_TRUE(SaveKeyframes(description, "new", &error)) << error;
  EXPECT_TRUE(fs::is_symlink(description));
  EXPECT_EQ(host::ReadFile(Path("shared/real.json")), "new");
}

TEST_F(StudioSavedLink, ThatLeadsToNoFileYetStaysOne) {
  fs::create_symlink("keys_of_today.json", Path("keys.json"));
  std::string error;
  EXPECT_TRUE(SaveKeyframes(Path("keys.json"), "new", &error)) << error;
  EXPECT_TRUE(fs::is_symlink(Path("keys.json")));
  EXPECT_EQ(host::ReadFile(Path("keys_of_today.json")), "new");
}

TEST_F(StudioSavedLink, ToAWriteProtectedFileLeavesItAsItIs) {
  host::WriteFile(Path("real.json"), "mine");
  fs::permissions(Path("real.json"), fs::perms::owner_read);
  fs::create_symlink("real.json", Path("keys.json"));
  std::string error;
  EXPECT_FALSE(SaveKeyframes(Path("keys.json"), "new", &error));
  EXPECT_EQ(host::ReadFile(Path("real.json")), "mine");
  EXPECT_EQ(fs::status(Path("real.json")).permissions(), fs::perms::owner_read);
}

}  // namespace
}  // namespace krv::studio
