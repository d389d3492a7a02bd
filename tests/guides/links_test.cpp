// What the guides point to is there.
#include <gtest/gtest.h>

#include <algorithm>

#include "guides/guide_text.h"

namespace krv::test {
namespace {

namespace fs = std::filesystem;

bool LeadsOutside(const std::string& target) { return target.find("://") != std::string::npos; }

fs::path FileOf(const Guide& guide, const std::string& target) {
  const std::string name = target.substr(0, target.find('#'));
  return name.empty() ? guide.file() : guide.file().parent_path() / fs::path(name);
}

bool HasHeading(const fs::path& file, const std::string& anchor) {
  return file.extension() == ".md" && Guide(file).anchors().contains(anchor);
}

TEST(GuideLinks, LeadToFilesAndHeadingsThatAreThere) {
  int links = 0;
  for (const Guide& guide : AllGuides()) {
    for (const GuideLink& link : guide.links()) {
      if (LeadsOutside(link.target)) continue;
      ++links;
      const fs::path file = FileOf(guide, link.target);
      EXPECT_TRUE(fs::exists(file)) << PlaceIn(guide, link.line) << ": " << link.target;
      const size_t hash = link.target.find('#');
      if (hash == std::string::npos || !fs::exists(file)) continue;
      EXPECT_TRUE(HasHeading(file, link.target.substr(hash + 1)))
          << PlaceIn(guide, link.line) << ": " << link.target;
    }
  }
  EXPECT_GT(links, 20);
}

TEST(GuideLinks, EveryPictureIsShownSomewhere) {
  std::vector<fs::path> shown;
  for (const Guide& guide : AllGuides()) {
    for (const GuideLink& link : guide.links()) {
      if (!LeadsOutside(link.target)) {
        shown.push_back(FileOf(guide, link.target).lexically_normal());
      }
    }
  }
  int pictures = 0;
  for (const auto& entry : fs::recursive_directory_iterator(KRV_SOURCES "/docs/images")) {
    if (!entry.is_regular_file()) continue;
    ++pictures;
    EXPECT_NE(std::find(shown.begin(), shown.end(), entry.path().lexically_normal()), shown.end())
        << entry.path();
  }
  EXPECT_GT(pictures, 5);
}

TEST(GuideLinks, EveryGuideIsReachedFromTheReadme) {
  const std::vector<Guide> guides = AllGuides();
  for (const Guide& guide : guides) {
    if (&guide == &guides.front()) continue;
    const auto& links = guides.front().links();
    EXPECT_TRUE(std::any_of(links.begin(), links.end(), [&guide, &guides](const GuideLink& link) {
      return !LeadsOutside(link.target) &&
             fs::equivalent(FileOf(guides.front(), link.target), guide.file());
    })) << guide.file();
  }
}

}  // namespace
}  // namespace krv::test
