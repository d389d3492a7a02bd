// The AI filter: found, loaded, called, and survived when it is not what it should be.
#include "effects/ai_filter.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <thread>

#include "effects/fake_filter/calls.h"
#include "effects/logging_host.h"
#include "support/file_system.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

constexpr char kFolder[] = KRV_FAKE_FILTER_INSTALLATION "/krvPlugin";

host::HostPaths PathsWith(const std::string& plugins, const std::string& models = "models") {
  return {.installation = "nowhere", .ai_models = models, .plugins = plugins};
}

std::string FileIn(const std::string& folder) { return folder + "/" + kAiFilterFileName; }

bool IsLoaded(const std::string& folder) {
  return platform::DynamicLibrary::OpenIfLoaded(FileIn(folder)).loaded();
}

// What the fake filter says about its calls. Keeps the library loaded.
class CallsOfFilter {
 public:
  CallsOfFilter() {
    auto* get_calls = reinterpret_cast<GetFilterCallsFunction*>(library_.Symbol(kFilterCallsName));
    if (get_calls == nullptr) throw std::runtime_error("the fake filter cannot be loaded");
    calls_ = get_calls();
    *calls_ = {};
  }
  const FilterCalls* operator->() const { return calls_; }

 private:
  platform::DynamicLibrary library_ = platform::DynamicLibrary::Open(FileIn(kFolder));
  FilterCalls* calls_ = nullptr;
};

// Red in the left half, rows of an odd number of bytes.
cv::Mat HalfRed() {
  static cv::Mat storage(6, 4 * 8 + 3, CV_8UC1, cv::Scalar(0));
  cv::Mat picture(6, 8, CV_8UC4, storage.data, storage.step[0]);
  picture(cv::Rect(0, 0, 4, 6)).setTo(cv::Scalar(0, 0, 255, 255));
  return picture;
}

bool AllAre(const cv::Mat& mask, int value) {
  return cv::countNonZero(mask.reshape(1) != value) == 0;
}

TEST(AiFilter, TheMaskIsWhatTheFilterWrites) {
  const LoggingHost host(PathsWith(kFolder));
  AiFilter filter;
  const cv::Mat mask = filter.Run(HalfRed());
  ASSERT_EQ(mask.size(), cv::Size(8, 6));
  ASSERT_EQ(mask.type(), CV_8UC4);
  EXPECT_TRUE(AllAre(mask(cv::Rect(0, 0, 4, 6)).clone(), 255));
  EXPECT_TRUE(AllAre(mask(cv::Rect(4, 0, 4, 6)).clone(), 0));
}

TEST(AiFilter, ItIsMadeFromTheGuidAndTheFolderOfModels) {
  const LoggingHost host(PathsWith(kFolder, "where models are"));
  const CallsOfFilter calls;
  AiFilter filter;
  filter.Run(HalfRed());
  EXPECT_STREQ(calls->guid, "2193B116-1AD4-49F4-84A1-FFA3CB983A94");
  EXPECT_STREQ(calls->folder, "where models are");
}

TEST(AiFilter, ThePictureIsHandedOverTwiceWithItsOwnStride) {
  const LoggingHost host(PathsWith(kFolder));
  const CallsOfFilter calls;
  AiFilter filter;
  const cv::Mat picture = HalfRed();
  const cv::Mat mask = filter.Run(picture);
  EXPECT_EQ(calls->filter, calls->created);
  EXPECT_EQ(calls->out.pixels, mask.data);
  EXPECT_EQ(calls->out.width, 8);
  EXPECT_EQ(calls->out.height, 6);
  EXPECT_EQ(calls->out.stride, 8 * 4);
  for (const FilterPicture& in : {calls->in, calls->in2}) {
    EXPECT_EQ(in.pixels, picture.data);
    EXPECT_EQ(in.width, 8);
    EXPECT_EQ(in.height, 6);
    EXPECT_EQ(in.stride, 8 * 4 + 3);
  }
}

TEST(AiFilter, ItIsMadeOnceAndKept) {
  const LoggingHost host(PathsWith(kFolder));
  const CallsOfFilter calls;
  AiFilter filter;
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(filter.Run(HalfRed()).empty());
  EXPECT_EQ(calls->creations, 1);
  EXPECT_EQ(calls->transforms, 3);
}

TEST(AiFilter, RunsOnSeveralThreadsMakeOneFilter) {
  const LoggingHost host(PathsWith(kFolder));
  const CallsOfFilter calls;
  AiFilter filter;
  const cv::Mat picture = HalfRed();
  const auto run = [&] {
    for (int i = 0; i < 50; ++i) EXPECT_FALSE(filter.Run(picture).empty());
  };
  std::thread other(run);
  run();
  other.join();
  EXPECT_EQ(calls->creations, 1);
  EXPECT_EQ(calls->transforms, 100);
}

TEST(AiFilter, AnEmptyPictureLoadsNothing) {
  const LoggingHost host(PathsWith(kFolder));
  AiFilter filter;
  EXPECT_TRUE(filter.Run({}).empty());
  EXPECT_FALSE(IsLoaded(kFolder));
}

TEST(AiFilter, WithoutAFolderOfPlugInsItIsInTheInstallation) {
  const LoggingHost host(
      {.installation = KRV_FAKE_FILTER_INSTALLATION, .ai_models = "", .plugins = ""});
  AiFilter filter;
  EXPECT_FALSE(filter.Run(HalfRed()).empty());
}

TEST(AiFilter, TheFolderMayHaveAnyLetters) {
  const ScratchFolder scratch;
  const auto copy = scratch.Write(Utf8Path("Gefäß 面具/") / kAiFilterFileName, "");
  std::filesystem::copy_file(Utf8Path(FileIn(kFolder)), copy,
                             std::filesystem::copy_options::overwrite_existing);
  const LoggingHost host(PathsWith(Utf8Text(copy.parent_path())));
  AiFilter filter;
  EXPECT_FALSE(filter.Run(HalfRed()).empty());
}

TEST(AiFilter, AHostThatNamesNoFolderHasNoFilter) {
  const LoggingHost host;
  AiFilter filter;
  EXPECT_TRUE(filter.Run(HalfRed()).empty());
}

TEST(AiFilter, WithoutAHostThereIsNoFilter) {
  AiFilter filter;
  EXPECT_TRUE(filter.Run(HalfRed()).empty());
}

TEST(AiFilter, AMissingFileIsTriedAgain) {
  AiFilter filter;
  {
    const ScratchFolder empty;
    const LoggingHost host(PathsWith(empty.text()));
    EXPECT_TRUE(filter.Run(HalfRed()).empty());
  }
  const LoggingHost host(PathsWith(kFolder));
  EXPECT_FALSE(filter.Run(HalfRed()).empty());
}

TEST(AiFilter, AFileThatIsNoLibraryGivesNoMask) {
  const ScratchFolder folder;
  folder.Write(kAiFilterFileName, "not a library");
  const LoggingHost host(PathsWith(folder.text()));
  AiFilter filter;
  EXPECT_TRUE(filter.Run(HalfRed()).empty());
}

TEST(AiFilter, ALibraryThatLacksAnEntryPointIsFreed) {
  for (const char* folder : {KRV_FILTER_WITHOUT_CREATE, KRV_FILTER_WITHOUT_TRANSFORM}) {
    ASSERT_TRUE(platform::DynamicLibrary::Open(FileIn(folder)).loaded()) << folder;
    const LoggingHost host(PathsWith(folder));
    AiFilter filter;
    EXPECT_TRUE(filter.Run(HalfRed()).empty()) << folder;
    EXPECT_FALSE(IsLoaded(folder)) << folder;
  }
}

TEST(AiFilter, ALibraryThatMakesNoFilterIsFreedAndTriedAgain) {
  AiFilter filter;
  for (int i = 0; i < 2; ++i) {
    const LoggingHost host(PathsWith(kFolder, kRefuse));
    EXPECT_TRUE(filter.Run(HalfRed()).empty());
    EXPECT_FALSE(IsLoaded(kFolder));
  }
  const LoggingHost host(PathsWith(kFolder));
  EXPECT_FALSE(filter.Run(HalfRed()).empty());
  EXPECT_TRUE(IsLoaded(kFolder));
}

TEST(AiFilter, AFailedRunGivesNoMaskAndKeepsTheFilter) {
  const LoggingHost host(PathsWith(kFolder, kFail));
  const CallsOfFilter calls;
  AiFilter filter;
  EXPECT_TRUE(filter.Run(HalfRed()).empty());
  EXPECT_TRUE(filter.Run(HalfRed()).empty());
  EXPECT_EQ(calls->creations, 1);
  EXPECT_EQ(calls->transforms, 2);
}

TEST(AiFilter, AFilterThatWritesNothingFindsNobody) {
  const LoggingHost host(PathsWith(kFolder, kWriteNothing));
  AiFilter filter;
  const cv::Mat mask = filter.Run(HalfRed());
  ASSERT_EQ(mask.size(), cv::Size(8, 6));
  EXPECT_TRUE(AllAre(mask, 0));
}

}  // namespace
}  // namespace krv::test
