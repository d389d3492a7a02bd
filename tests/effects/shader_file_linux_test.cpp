// Links in packages, and files that end before their size.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include "effects/shader_file.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

namespace fs = std::filesystem;

class ShaderFileLinks : public testing::Test {
 protected:
  ShaderFileLinks() {
    folder_.Write("outside.glsl", "outside");
    folder_.Write("package/inside.glsl", "inside");
  }

  static std::string Load(const fs::path& package, const char* file) {
    return LoadShaderFile(package.string() + '\\' + file, package.string(), false).value_or("");
  }

  ScratchFolder folder_;
  const fs::path package_ = folder_.path() / "package";
};

TEST_F(ShaderFileLinks, LinkToAFileOutsideIsRefused) {
  fs::create_symlink("../outside.glsl", package_ / "link.glsl");
  EXPECT_THROW(Load(package_, "link.glsl"), std::runtime_error);
}

TEST_F(ShaderFileLinks, FileBehindALinkToAFolderOutsideIsRefused) {
  fs::create_directory_symlink("..", package_ / "up");
  EXPECT_THROW(Load(package_, "up\\outside.glsl"), std::runtime_error);
}

TEST_F(ShaderFileLinks, LinkWithinThePackageIsFollowed) {
  fs::create_symlink("inside.glsl", package_ / "link.glsl");
  EXPECT_EQ(Load(package_, "link.glsl"), "inside");
}

TEST_F(ShaderFileLinks, PackageBehindALinkIsWhole) {
  fs::create_directory_symlink("package", folder_.path() / "link");
  EXPECT_EQ(Load(folder_.path() / "link", "inside.glsl"), "inside");
}

// The kernel's own files: this one is said to be a page long and holds a few bytes.
TEST(ShaderFileCutShort, FileThatEndsBeforeItsSizeFails) {
  const std::string folder = "/sys/devices/system/cpu";
  ASSERT_GT(fs::file_size(folder + "/online"), 1000u);
  EXPECT_EQ(LoadShaderFile(folder + "/online", folder, false), std::nullopt);
}

}  // namespace
}  // namespace krv::test
