// Where files are found, and variants of packages.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "find_files.h"
#include "host_test_files.h"
#include "model_folder.h"
#include "package_copy.h"
#include "package_files.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class HostFindFiles : public FilesTest {};
class HostPackageFiles : public FilesTest {};
class HostPackageCopy : public FilesTest {};

TEST_F(HostFindFiles, FilesBesideTheProgramComeFirst) {
  WriteFile(Path("bin/krvAudioVisualPlugin.krv"), "x");
  WriteFile(Path("bin/packages/p/description.json"), "{}");
  WriteFile(Path("lib/krv/plugins/krvAudioVisualPlugin.krv"), "x");
  std::string error;
  const auto found = FindFiles({}, Path("bin"), &error);
  ASSERT_TRUE(found) << error;
  EXPECT_EQ(found->plugin, Path("bin/krvAudioVisualPlugin.krv"));
  EXPECT_THAT(found->packages, ElementsAre(Path("bin/packages")));
}

TEST_F(HostFindFiles, InstalledFilesAreFound) {
  std::filesystem::create_directories(Path("bin"));
  WriteFile(Path("lib/krv/plugins/krvAudioVisualPlugin.krv"), "x");
  WriteFile(Path("share/krv/packages/p/description.json"), "{}");
  std::string error;
  const auto found = FindFiles({}, Path("bin"), &error);
  ASSERT_TRUE(found) << error;
  EXPECT_TRUE(
      std::filesystem::equivalent(found->plugin, Path("lib/krv/plugins/krvAudioVisualPlugin.krv")));
  ASSERT_EQ(found->packages.size(), 1u);
  EXPECT_TRUE(std::filesystem::equivalent(found->packages[0], Path("share/krv/packages")));
}

TEST_F(HostFindFiles, NamedFilesAreTakenInsteadOfFoundOnes) {
  WriteFile(Path("bin/krvAudioVisualPlugin.krv"), "x");
  WriteFile(Path("bin/packages/p/description.json"), "{}");
  WriteFile(Path("other.krv"), "x");
  WriteFile(Path("mine/description.json"), "{}");
  std::string error;
  const auto found = FindFiles({Path("other.krv"), {Path("mine")}}, Path("bin"), &error);
  ASSERT_TRUE(found) << error;
  EXPECT_EQ(found->plugin, Path("other.krv"));
  EXPECT_THAT(found->packages, ElementsAre(Path("mine")));
}

TEST_F(HostFindFiles, MissingPluginSaysWhereItWasLookedForAndWhatToDo) {
  std::string error;
  EXPECT_FALSE(FindFiles({}, Path("bin"), &error));
  EXPECT_THAT(
      error, HasSubstr("cannot find the plug-in at " + Utf8(Path("bin/krvAudioVisualPlugin.krv"))));
  EXPECT_THAT(error, HasSubstr(Utf8(Path("lib/krv/plugins/krvAudioVisualPlugin.krv"))));
  EXPECT_THAT(error, HasSubstr("--plugin"));
}

TEST_F(HostFindFiles, MissingPackagesAreAnError) {
  WriteFile(Path("bin/krvAudioVisualPlugin.krv"), "x");
  std::string error;
  EXPECT_FALSE(FindFiles({}, Path("bin"), &error));
  EXPECT_THAT(error, HasSubstr("--packages"));
  EXPECT_FALSE(FindFiles({{}, {Path("none")}}, Path("bin"), &error));
  EXPECT_THAT(error, HasSubstr("--packages " + Utf8(Path("none")) + ": there is no such folder"));
}

TEST_F(HostFindFiles, ModelsLieBesideTheProgramOrWithTheInstalledData) {
  std::filesystem::create_directories(Path("bin"));
  EXPECT_EQ(ModelFolder(Path("bin")), Path("bin/models"));
  std::filesystem::create_directories(Path("share/krv"));
  EXPECT_EQ(ModelFolder(Path("bin")), Path("share/krv/models"));
  std::filesystem::create_directories(Path("bin/models"));
  EXPECT_EQ(ModelFolder(Path("bin")), Path("bin/models"));
}

TEST_F(HostPackageFiles, PackagesAtAnyDepthAreFoundInOrderOfTheirPaths) {
  WriteFile(Path("b/description.json"), "{}");
  WriteFile(Path("a/deep/er/description.json"), "{}");
  WriteFile(Path("c/Description.json"), "{}");
  std::filesystem::create_directories(Path("d/description.json"));
  EXPECT_THAT(FindPackageFolders(folder_->path()), ElementsAre(Path("a/deep/er"), Path("b")));
}

TEST_F(HostPackageFiles, FolderThatIsNotThereHasNoPackages) {
  EXPECT_TRUE(FindPackageFolders(Path("none")).empty());
}

TEST_F(HostPackageFiles, PackageIsFoundByItsUniqueName) {
  WritePackage("one", "fx.one", "");
  WritePackage("two", "fx.two", "");
  WriteFile(Path("broken/description.json"), "{");
  WriteFile(Path("other/description.json"), R"({"effect_type": "x", "unique_name": "fx.other"})");
  EXPECT_EQ(FindPackageFolder({folder_->path()}, "fx.two"), Path("two"));
  EXPECT_EQ(FindPackageFolder({folder_->path()}, "fx.other"), std::nullopt);
  EXPECT_EQ(FindPackageFolder({folder_->path()}, "fx"), std::nullopt);
}

TEST_F(HostPackageCopy, ChangesTheDescriptionAndKeepsTheOrderOfItsKeys) {
  WritePackage("p", "fx", "shader", R"("zebra": 1, "params": [], "apple": 2)");
  WriteFile(Path("p/sub/extra.txt"), "more");
  std::string error;
  PackageChanges changes;
  changes.name_suffix = ".alone";
  changes.without_blend = true;
  changes.fragment_shaders = {"b.frag"};
  const auto copy = PackageCopy::Create(Path("p"), changes, &error);
  ASSERT_NE(copy, nullptr) << error;
  EXPECT_EQ(copy->unique_name(), "fx.alone");
  const auto description =
      nlohmann::ordered_json::parse(ReadFile(copy->folder() / "description.json"));
  std::vector<std::string> keys;
  for (const auto& [key, value] : description.items()) keys.push_back(key);
  EXPECT_THAT(keys, ElementsAre("effect_type", "unique_name", "display_name", "version",
                                "opengl_frag", "zebra", "params", "apple", "without_blend"));
  EXPECT_EQ(description["unique_name"], "fx.alone");
  EXPECT_EQ(description["without_blend"], true);
  EXPECT_EQ(description["opengl_frag"], nlohmann::ordered_json({"b.frag"}));
  EXPECT_EQ(ReadFile(copy->folder() / "a.frag"), "shader");
  EXPECT_EQ(ReadFile(copy->folder() / "sub/extra.txt"), "more");
}

TEST_F(HostPackageCopy, LeavesTheOriginalAloneAndGoesWithItsObject) {
  WritePackage("p", "fx", "shader");
  const std::string before = ReadFile(Path("p/description.json"));
  std::filesystem::path folder;
  {
    std::string error;
    const auto copy = PackageCopy::Create(Path("p"), {.name_suffix = ".x"}, &error);
    ASSERT_NE(copy, nullptr) << error;
    folder = copy->folder();
    EXPECT_TRUE(std::filesystem::exists(folder));
  }
  EXPECT_FALSE(std::filesystem::exists(folder));
  EXPECT_EQ(ReadFile(Path("p/description.json")), before);
}

TEST_F(HostPackageCopy, ReadOnlyDescriptionIsCopiedAllTheSame) {
  WritePackage("p", "fx", "shader");
  std::filesystem::permissions(Path("p/description.json"), std::filesystem::perms::owner_read);
  std::string error;
  EXPECT_NE(PackageCopy::Create(Path("p"), {.name_suffix = ".x"}, &error), nullptr) << error;
}

TEST_F(HostPackageCopy, BrokenDescriptionIsAnErrorThatNamesThePackage) {
  WriteFile(Path("p/description.json"), "{ not JSON");
  std::string error;
  EXPECT_EQ(PackageCopy::Create(Path("p"), {}, &error), nullptr);
  EXPECT_THAT(error, HasSubstr(Utf8(Path("p"))));
}

}  // namespace
}  // namespace krv::host
