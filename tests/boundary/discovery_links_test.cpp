// Links among packages.
#include <gtest/gtest.h>

#include <filesystem>

#include "boundary/boundary_fixture.h"

namespace krv::test {
namespace {

namespace fs = std::filesystem;

class DiscoveryLinks : public BoundaryTest {};

TEST_F(DiscoveryLinks, LinkThatLeadsNowhereIsSkipped) {
  WritePackage("package", PackageText(Unique("effect")));
  fs::create_directory(packages_.path() / "broken");
  fs::create_symlink("nowhere", packages_.path() / "broken" / "description.json");
  EXPECT_EQ(Register(), 0);
  EXPECT_TRUE(CanCreate(Unique("effect")));
}

TEST_F(DiscoveryLinks, LinksToFoldersAreNotEntered) {
  ScratchFolder elsewhere;
  elsewhere.Write("description.json", PackageText(Unique("linked")));
  WritePackage("package", PackageText(Unique("effect")));
  fs::create_directory_symlink(elsewhere.path(), packages_.path() / "link");
  fs::create_directory_symlink("..", packages_.path() / "package" / "loop");
  EXPECT_EQ(Register(), 0);
  EXPECT_FALSE(CanCreate(Unique("linked")));
}

}  // namespace
}  // namespace krv::test
