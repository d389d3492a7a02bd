// Frames of a person effect with the filter plug-in. The library keeps the filter for the life of
// the process, so these tests have a program of their own.
#include <gtest/gtest.h>

#include <stdexcept>

#include "effects/effect_fixture.h"
#include "effects/fake_filter/calls.h"
#include "effects/test_mask.h"
#include "platform/dynamic_library.h"

namespace krv::test {
namespace {

using testing::ElementsAre;

constexpr char kFolder[] = KRV_FAKE_FILTER_INSTALLATION "/krvPlugin";

FilterCalls& Calls() {
  static const auto library =
      platform::DynamicLibrary::Open(std::string(kFolder) + "/krvAiFilterPlugin.krv");
  auto* get_calls = reinterpret_cast<GetFilterCallsFunction*>(library.Symbol(kFilterCallsName));
  if (get_calls == nullptr) throw std::runtime_error("the fake filter cannot be loaded");
  return *get_calls();
}

class FilterFrames : public EffectTest {
 protected:
  FilterFrames() : EffectTest({.installation = "", .ai_models = "models", .plugins = kFolder}) {
    Calls().transforms = 0;
    Package package = ValuePackage("vec4(mask_left_right, mask_bottom_top)",
                                   "uniform vec2 mask_left_right; uniform vec2 mask_bottom_top;");
    package.description["input_list"] = {"human_segment"};
    effect_ = host_.Make(package);
  }

  // A frame that is red in the given part; what the effect shows of it.
  Values BoxOf(int32_t width, int32_t height, const cv::Rect& red) {
    host::MemoryFrame frame(width, height, kPixel8);
    cv::Mat pixels(height, width, CV_8UC4, frame.GetPixels());
    pixels(red).setTo(cv::Scalar(0, 0, 255, 255));
    context_.input = &frame;
    const Values shown = Shown(*effect_);
    context_.input = &input_;
    return shown;
  }

  Instance effect_;
};

TEST_F(FilterFrames, TheBoxOfTheFiltersMaskAppliesToTheWholeFrame) {
  EXPECT_EQ(BoxOf(640, 320, {160, 80, 160, 200}), (Values{0.25, 0.5, 0.25, 0.875}));
  EXPECT_EQ(Calls().in.width, 320);
  EXPECT_EQ(Calls().in.height, 160);
}

TEST_F(FilterFrames, AShorterSideOfExactly160IsSegmentedAtFullSize) {
  BoxOf(333, 160, {0, 0, 333, 160});
  EXPECT_EQ(Calls().in.width, 333);
  EXPECT_EQ(Calls().in.height, 160);
  EXPECT_EQ(Calls().out.width, 333);
  EXPECT_EQ(Calls().out.height, 160);
}

TEST_F(FilterFrames, AShorterSideAbove160IsScaledToItCutToWholePixels) {
  BoxOf(1920, 1080, {0, 0, 1920, 1080});
  EXPECT_EQ(Calls().in.width, 284);
  EXPECT_EQ(Calls().in.height, 160);
}

TEST_F(FilterFrames, AHostWithAMaskIsNeverSentToTheFilter) {
  TestMask mask(4, 4, {0, 0, 2, 4});
  context_.person_mask = &mask;
  EXPECT_EQ(BoxOf(64, 64, {0, 0, 64, 64}), (Values{0, 0.5, 0, 1}));
  EXPECT_EQ(Calls().transforms, 0);
}

TEST_F(FilterFrames, AFrameWithoutTheHostsMaskIsSentToIt) {
  TestMask mask(4, 4);
  mask.answer = 0;
  context_.person_mask = &mask;
  EXPECT_EQ(BoxOf(64, 64, {0, 0, 64, 32}), (Values{0, 1, 0, 0.5}));
  EXPECT_EQ(Calls().transforms, 1);
}

TEST_F(FilterFrames, InstancesShareTheFilter) {
  BoxOf(64, 64, {0, 0, 64, 32});
  Package package = ValuePackage("vec4(1.0)", "");
  package.description["input_list"] = {"human_segment"};
  const Instance other = host_.Make(package);
  FillValues(input_, {1, 0, 0, 1});
  EXPECT_EQ(ProcessFrame(*other, context_), kOk);
  EXPECT_EQ(Calls().transforms, 2);
  EXPECT_EQ(Calls().creations, 1);
}

TEST_F(FilterFrames, ASixteenBitFrameReachesItDividedBy255) {
  host::MemoryFrame frame(4, 4, kPixel16);
  cv::Mat(4, 4, CV_16UC4, frame.GetPixels()).setTo(cv::Scalar(255, 2550, 32768, 65535));
  context_.input = &frame;
  EXPECT_EQ(ProcessFrame(*effect_, context_), kOk);
  EXPECT_THAT(Calls().first_pixel, ElementsAre(1, 10, 129, 255));
}

TEST_F(FilterFrames, AFrameInWhichItFindsNobodyFails) {
  FillValues(input_, {0, 1, 1, 1});
  EXPECT_EQ(ProcessFrame(*effect_, context_), kFailed);
  EXPECT_THAT(host_.TakeErrors(), ElementsAre("<audio_visual> Input size error"));
  EXPECT_EQ(Calls().transforms, 1);
}

}  // namespace
}  // namespace krv::test
