// The example packages in the guides.
#include <nlohmann/json.hpp>

#include "check/package_check.h"
#include "guides/guide_text.h"
#include "packages/package_fixture.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

struct GuidePackage {
  std::string folder;
  std::string unique_name;
};

// Writes the files that the guides show into a folder; the packages among them.
std::vector<GuidePackage> WriteGuidePackages(const ScratchFolder& folder) {
  std::vector<GuidePackage> packages;
  for (const Guide& guide : AllGuides()) {
    for (const GuideBlock& block : guide.blocks()) {
      if (block.file.empty()) continue;
      folder.Write(block.file, block.text);
      if (!block.file.ends_with("/description.json")) continue;
      packages.push_back({block.file.substr(0, block.file.find('/')),
                          nlohmann::json::parse(block.text).at("unique_name")});
    }
  }
  return packages;
}

class AuthorGuide : public PackageTest {};

TEST_F(AuthorGuide, ItsExamplesPassTheCheckAndDraw) {
  const ScratchFolder folder;
  const std::vector<GuidePackage> packages = WriteGuidePackages(folder);
  EXPECT_EQ(packages.size(), 7u);
  tool::PackageChecker checker(plugin_);
  for (const GuidePackage& package : packages) {
    for (const tool::Finding& finding : checker.Check(folder.path() / package.folder)) {
      ADD_FAILURE() << tool::ToText(finding);
    }
    const auto session = Open(folder.path() / package.folder, package.unique_name);
    EXPECT_FALSE(Same(Render(session.get(), {}), scene_.picture())) << package.folder;
    // The corner is away from every figure, and the blend has reached it.
    EXPECT_EQ(std::memcmp(Render(session.get(), {}).Pixel(2, 2), scene_.picture().Pixel(2, 2), 4),
              0)
        << package.folder;
  }
}

}  // namespace
}  // namespace krv::test
