// People found by a network in the folder of AI models.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <opencv2/imgproc.hpp>
#include <string>

#include "ai_filter/built_filter.h"
#include "ai_filter/drawn_person.h"
#include "ai_filter/onnx_network.h"
#include "support/file_system.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;

// A filter with a file as the model, and what making it said.
struct FilterWithModel {
  explicit FilterWithModel(const std::string& bytes, const std::string& folder = "models") {
    scratch.Write(Utf8Path(folder) / kPersonModelFileName, bytes);
    testing::internal::CaptureStderr();
    filter = MakeFilter(scratch.text() + "/" + folder);
    message = testing::internal::GetCapturedStderr();
  }

  ScratchFolder scratch;
  void* filter = nullptr;
  std::string message;
};

// What is red belongs to a person.
const OnnxNetwork kRed = {{{1, -1, -1, 0}}};

const cv::Rect kRedPart(60, 40, 100, 80);

cv::Mat RedPicture() {
  cv::Mat picture = EmptyRoom();
  picture(kRedPart).setTo(cv::Scalar(0, 0, 255, 255));
  return picture;
}

cv::Mat RedMatte() {
  cv::Mat matte = cv::Mat::zeros(kPictureSize, CV_8UC1);
  matte(kRedPart).setTo(255);
  return matte;
}

TEST(PersonModel, ItSaysWhoIsAPerson) {
  const FilterWithModel model(OnnxFile(kRed));
  EXPECT_EQ(model.message, "");
  cv::Mat picture = RedPicture();
  DrawPerson(picture, {230, 150}, 120);  // whom it does not know
  EXPECT_GT(Overlap(MaskOf(model.filter, picture), RedMatte()), 0.95);
}

TEST(PersonModel, OfTwoPlanesTheSecondIsThePerson) {
  const FilterWithModel model(OnnxFile({{{0, 3, 0, -2}, {3, 0, 0, -3}}}));
  EXPECT_GT(Overlap(MaskOf(model.filter, RedPicture()), RedMatte()), 0.95);
}

TEST(PersonModel, ItSeesColoursFrom0To1AndSaysPersonAboveAHalf) {
  const FilterWithModel model(OnnxFile({{{1, 0, 0, 0}}}));
  const auto marked = [&](double red) {
    const cv::Mat picture(kPictureSize, CV_8UC4, cv::Scalar(255, 255, red, 255));
    return cv::countNonZero(MaskOf(model.filter, picture));
  };
  EXPECT_EQ(marked(127), 0);
  EXPECT_EQ(marked(128), kPictureSize.area());
}

TEST(PersonModel, ASmallerOutputCoversThePicture) {
  OnnxNetwork network = kRed;
  network.step = 4;
  const FilterWithModel model(OnnxFile(network));
  EXPECT_EQ(model.message, "");
  EXPECT_GT(Overlap(MaskOf(model.filter, RedPicture()), RedMatte()), 0.85);
}

TEST(PersonModel, ItIsGivenTheSizeItRunsOn) {
  for (const int64_t side : {192, 256, 320, 512}) {
    OnnxNetwork network = kRed;
    network.side = side;
    const FilterWithModel model(OnnxFile(network));
    EXPECT_EQ(model.message, "") << side;
    EXPECT_GT(Overlap(MaskOf(model.filter, RedPicture()), RedMatte()), 0.95) << side;
  }
}

TEST(PersonModel, AMaskIsThatOfItsPictureAlone) {
  const FilterWithModel model(OnnxFile(kRed));
  const cv::Mat alone = MaskOf(model.filter, RedPicture()).clone();
  MaskOf(model.filter, EmptyRoom());
  EXPECT_EQ(cv::norm(MaskOf(model.filter, RedPicture()), alone, cv::NORM_INF), 0);
}

TEST(PersonModel, ItsFolderMayHaveAnyLetters) {
  const FilterWithModel model(OnnxFile(kRed), "Gefäß 面具");
  EXPECT_GT(Overlap(MaskOf(model.filter, RedPicture()), RedMatte()), 0.95);
}

TEST(PersonModel, AFileThatCannotBeUsedIsReportedOnceAndDoneWithout) {
  const std::string whole = OnnxFile(kRed);
  OnnxNetwork odd_size = kRed;
  odd_size.side = 100;
  const std::string files[] = {
      "",
      "not a network",
      whole.substr(0, whole.size() / 2),
      OnnxFile({{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}}),  // three planes
      OnnxFile(odd_size),
  };
  cv::Mat picture = EmptyRoom();
  DrawPerson(picture, {140, 150}, 120);
  for (const std::string& bytes : files) {
    const FilterWithModel model(bytes);
    EXPECT_THAT(model.message, AllOf(HasSubstr(kPersonModelFileName),
                                     HasSubstr("not a usable network"), EndsWith("\n")));
    EXPECT_EQ(std::count(model.message.begin(), model.message.end(), '\n'), 1) << model.message;
    EXPECT_GT(Overlap(MaskOf(model.filter, picture), PersonMatte({140, 150}, 120)), 0.7);
  }
}

TEST(PersonModel, AFolderInItsPlaceIsNoModel) {
  const ScratchFolder scratch;
  std::filesystem::create_directory(scratch.path() / kPersonModelFileName);
  cv::Mat picture = EmptyRoom();
  DrawPerson(picture, {140, 150}, 120);
  EXPECT_GT(Overlap(MaskOf(MakeFilter(scratch.text()), picture), PersonMatte({140, 150}, 120)),
            0.7);
}

}  // namespace
}  // namespace krv::test
