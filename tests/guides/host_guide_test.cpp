// docs/host-makers.md and the host of examples/host that it is about.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "guides/guide_text.h"
#include "support/process.h"

namespace krv::test {
namespace {

using ::testing::HasSubstr;

constexpr int kWidth = 640;
constexpr int kHeight = 360;
constexpr size_t kHeaderBytes = 15;  // "P6\n640 360\n255\n"

struct Colour {
  int red, green, blue;
};

// What the example draws over.
Colour BackgroundAt(int x, int y) { return {30, 20 + 40 * y / kHeight, 60 + 60 * x / kWidth}; }

std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class ExampleHost : public ::testing::Test {
 protected:
  // Runs the example with a shipped package.
  ProgramOutcome Run(const std::string& package) {
    return RunProgram(KRV_EXAMPLE_HOST, "\"" KRV_PLUGIN_FILE "\" \"" KRV_SOURCES "/packages/" +
                                            package + "\" \"" + PicturePath() + "\"");
  }

  std::string PicturePath() const { return folder_.text() + "/frame.ppm"; }

  std::string Picture() const {
    std::string picture = ReadFile(folder_.path() / "frame.ppm");
    EXPECT_EQ(picture.size(), kHeaderBytes + size_t{3} * kWidth * kHeight);
    EXPECT_THAT(picture, ::testing::StartsWith("P6\n640 360\n255\n"));
    picture.resize(kHeaderBytes + size_t{3} * kWidth * kHeight);
    return picture;
  }

  // The largest difference of a pixel's channels to the background.
  static int DifferenceAt(const std::string& picture, int x, int y) {
    const auto channel = [&](int index) {
      const size_t at = kHeaderBytes + 3 * (size_t(y) * kWidth + static_cast<size_t>(x));
      return static_cast<int>(static_cast<uint8_t>(picture[at + static_cast<size_t>(index)]));
    };
    const Colour background = BackgroundAt(x, y);
    return std::max({std::abs(channel(0) - background.red), std::abs(channel(1) - background.green),
                     std::abs(channel(2) - background.blue)});
  }

  ScratchFolder folder_;
};

TEST_F(ExampleHost, DrawsTheFigureAndLeavesTheRestOfThePicture) {
  const ProgramOutcome outcome = Run("bars");
  ASSERT_EQ(outcome.code, 0) << outcome.error_output;
  const std::string picture = Picture();
  int drawn = 0;
  int highest_above = 0;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const int difference = DifferenceAt(picture, x, y);
      if (difference > 60) ++drawn;
      // Bars stand in the lower two thirds.
      if (y < kHeight / 3) highest_above = std::max(highest_above, difference);
    }
  }
  EXPECT_EQ(highest_above, 0);
  EXPECT_GT(drawn, 5000);
  EXPECT_LT(drawn, kWidth * kHeight / 4);
}

TEST_F(ExampleHost, IsAskedForItsValues) {
  const ProgramOutcome outcome = Run("bars");
  ASSERT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_THAT(outcome.output, HasSubstr("audio_visualization_bars (Spectrum bars)"));
  EXPECT_THAT(outcome.output, HasSubstr("  spectrum_count: 63, from 1 to 200"));
  const std::string picture = Picture();
  const int y = kHeight * 9 / 10;  // near the base of the bars
  int bars = 0;
  bool inside = false;
  for (int x = 0; x < kWidth; ++x) {
    const bool drawn = DifferenceAt(picture, x, y) > 60;
    if (drawn && !inside) ++bars;
    inside = drawn;
  }
  EXPECT_EQ(bars, 24);
}

TEST_F(ExampleHost, PassesOnThePluginsReason) {
  // It offers no mask, and names no folder with a plug-in that finds people.
  const ProgramOutcome outcome = Run("person_halo");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.error_output, HasSubstr("Input size error"));
  const ProgramOutcome missing = Run("none");
  EXPECT_EQ(missing.code, 1);
  EXPECT_THAT(missing.error_output, HasSubstr("there is no package that can be read"));
}

TEST(HostGuide, QuotesTheExampleLiterally) {
  std::string example;
  for (const char* file : {"main.cpp", "services.h", "listing.h"}) {
    example += ReadFile(std::filesystem::path(KRV_SOURCES "/examples/host") / file);
  }
  const Guide guide(KRV_SOURCES "/docs/host-makers.md");
  int quotes = 0;
  for (const GuideBlock& block : guide.blocks()) {
    if (block.language != "cpp") continue;
    ++quotes;
    EXPECT_NE(example.find(block.text), std::string::npos) << PlaceIn(guide, block.line);
  }
  EXPECT_GE(quotes, 5);
}

// The names that stand in a header after `before` and in front of a bracket.
std::vector<std::string> NamesIn(const std::string& header, const std::string& before) {
  const std::string text = ReadFile(std::filesystem::path(KRV_SOURCES "/include/krv") / header);
  std::vector<std::string> names;
  for (size_t at = text.find(before); at != std::string::npos; at = text.find(before, at)) {
    at += before.size();
    const size_t bracket = text.find('(', at);
    const size_t begin = text.find_last_of(" *\n", bracket) + 1;
    names.push_back(text.substr(begin, bracket - begin));
  }
  return names;
}

TEST(HostGuide, NamesEveryOperation) {
  const std::string guide = ReadFile(KRV_SOURCES "/docs/host-makers.md");
  std::vector<std::string> operations = NamesIn("plugin.h", "KRV_EXPORT ");
  EXPECT_EQ(operations.size(), 6u);
  for (const char* header :
       {"effect.h", "effect_context.h", "frame.h", "registrar.h", "suites.h"}) {
    for (std::string& name : NamesIn(header, "  virtual ")) operations.push_back(std::move(name));
  }
  EXPECT_EQ(operations.size(), 6u + 17 + 14 + 3 + 15 + 10);
  for (const std::string& operation : operations) {
    // "`Reserved8` to `Reserved13`" names those in between.
    if (operation.starts_with("Reserved1")) continue;
    EXPECT_NE(guide.find("`" + operation + "`"), std::string::npos) << operation;
  }
}

TEST(HostGuide, NamesEveryHeader) {
  std::set<std::string> named;
  const Guide guide(KRV_SOURCES "/docs/host-makers.md");
  for (const auto& cells : guide.rows()) {
    if (cells.size() == 2) named.insert(cells[0]);
  }
  int headers = 0;
  for (const auto& entry : std::filesystem::directory_iterator(KRV_SOURCES "/include/krv")) {
    ++headers;
    EXPECT_TRUE(named.contains("`" + entry.path().filename().string() + "`")) << entry.path();
  }
  EXPECT_EQ(headers, 9);
}

}  // namespace
}  // namespace krv::test
