// The examples in docs/package-authors.md.
#include <fstream>
#include <nlohmann/json.hpp>

#include "check/package_check.h"
#include "packages/package_fixture.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

using Files = std::map<std::string, std::string>;  // by name

// The blocks of the guide that a line with nothing but a file's name stands above; a description
// begins a package.
std::vector<Files> GuidePackages() {
  std::vector<Files> packages;
  std::ifstream guide(KRV_AUTHOR_GUIDE);
  std::string* file = nullptr;
  std::string name;
  for (std::string line; std::getline(guide, line);) {
    if (line.starts_with("```")) {
      if (file != nullptr || name.empty()) {
        file = nullptr;
      } else {
        if (name == "description.json") packages.emplace_back();
        file = &packages.back()[name];
      }
      name.clear();
    } else if (file != nullptr) {
      *file += line + "\n";
    } else if (line.starts_with('`') && line.ends_with("`:")) {
      name = line.substr(1, line.size() - 3);
    }
  }
  return packages;
}

class AuthorGuide : public PackageTest {};

TEST_F(AuthorGuide, ItsExamplesPassTheCheckAndDraw) {
  const std::vector<Files> packages = GuidePackages();
  EXPECT_EQ(packages.size(), 3u);
  tool::PackageChecker checker(plugin_);
  for (const Files& package : packages) {
    const ScratchFolder folder;
    for (const auto& [name, text] : package) folder.Write(name, text);
    const std::string effect =
        nlohmann::json::parse(package.at("description.json")).at("unique_name");
    for (const tool::Finding& finding : checker.Check(folder.path())) {
      ADD_FAILURE() << tool::ToText(finding);
    }
    const auto session = Open(folder.path(), effect);
    EXPECT_FALSE(Same(Render(session.get(), {}), scene_.picture())) << effect;
    // The corner is away from every figure, and the blend has reached it.
    EXPECT_EQ(std::memcmp(Render(session.get(), {}).Pixel(2, 2), scene_.picture().Pixel(2, 2), 4),
              0)
        << effect;
  }
}

}  // namespace
}  // namespace krv::test
