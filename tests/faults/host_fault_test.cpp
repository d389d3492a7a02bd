// Frames and services of the host that fail.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

using testing::Each;
using testing::ElementsAre;

enum class FrameFault { kDescribe, kUnknownType, kUnknownForm, kNoWidth, kShortRows, kNoPixels };

// A frame of the host's, one operation of which fails.
class FailingFrame final : public HostFrame {
 public:
  FailingFrame(HostFrame& frame, FrameFault fault) : frame_(frame), fault_(fault) {}

  int32_t Describe(FrameDescription* out) override {
    if (fault_ == FrameFault::kDescribe) return kFailed;
    const int32_t code = frame_.Describe(out);
    if (fault_ == FrameFault::kUnknownType) out->pixel_type = 77;
    if (fault_ == FrameFault::kUnknownForm) out->form = 1;
    if (fault_ == FrameFault::kNoWidth) out->width = 0;
    if (fault_ == FrameFault::kShortRows) out->stride = out->width * 4 - 1;
    return code;
  }
  void* GetPixels() override {
    return fault_ == FrameFault::kNoPixels ? nullptr : frame_.GetPixels();
  }
  int32_t ReadPixels(void* destination, int32_t stride) override {
    return frame_.ReadPixels(destination, stride);
  }

 private:
  HostFrame& frame_;
  FrameFault fault_;
};

class HostFaults : public EffectTest, public testing::WithParamInterface<FrameFault> {
 protected:
  HostFaults() { FillWithPattern(picture_); }

  // The code of a frame with these two, and whether the buffer behind the output is untouched.
  int32_t Frame(KRVEffect& effect, HostFrame& input, HostFrame& output) {
    FillBytes(result_, 0xab);
    context_.input = &input;
    context_.output = &output;
    return ProcessFrame(effect, context_);
  }
  bool ResultIsUntouched() { return testing::Value(BytesOf(result_), Each(0xab)); }

  host::MemoryFrame picture_{8, 6, kPixel8};
  host::MemoryFrame result_{8, 6, kPixel8};
  Package package_ = PassPackage({Fragment("gl_FragColor = vec4(0.1, 0.5, 0.9, 0.5);")});
};

TEST_P(HostFaults, OutputFrameThatFailsIsReportedAndUntouchedAndTheNextFrameWorks) {
  const Instance effect = host_.Make(package_);
  FailingFrame output(result_, GetParam());
  EXPECT_EQ(Frame(*effect, picture_, output), kNothingToDo);
  EXPECT_TRUE(ResultIsUntouched());
  EXPECT_THAT(host_.TakeErrors(), ElementsAre("<audio_visual> Output image null error"));
  EXPECT_EQ(Frame(*effect, picture_, result_), kOk);
  EXPECT_FALSE(ResultIsUntouched());
}

TEST_P(HostFaults, InputFrameThatFailsIsReportedAndTheNextFrameWorks) {
  const Instance effect = host_.Make(package_);
  FailingFrame input(picture_, GetParam());
  EXPECT_EQ(Frame(*effect, input, result_), kFailed);
  EXPECT_TRUE(ResultIsUntouched());
  EXPECT_THAT(host_.TakeErrors(), ElementsAre("<audio_visual> Input size error"));
  EXPECT_EQ(Frame(*effect, picture_, result_), kOk);
}

INSTANTIATE_TEST_SUITE_P(Host, HostFaults,
                         testing::Values(FrameFault::kDescribe, FrameFault::kUnknownType,
                                         FrameFault::kUnknownForm, FrameFault::kNoWidth,
                                         FrameFault::kShortRows, FrameFault::kNoPixels));

TEST_F(HostFaults, EffectFrameThatCannotBeAllocatedFailsTheFrameAndTheNextOneWorks) {
  const Instance effect = host_.Make(package_);
  host_.StartWithout({kImageBufferSuiteName});
  EXPECT_EQ(Frame(*effect, picture_, result_), kFailed);
  EXPECT_TRUE(ResultIsUntouched());
  EXPECT_THAT(host_.TakeErrors(), ElementsAre("<audio_visual> Effect texture is null."));
  host_.StartWithout({});
  EXPECT_EQ(Frame(*effect, picture_, result_), kOk);
}

}  // namespace
}  // namespace krv::test
