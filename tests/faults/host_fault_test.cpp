// Frames and services of the host that fail.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <vector>

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

// What the host makes of a request for a frame.
struct Mistake {
  int32_t wider = 0;
  int32_t higher = 0;
  int32_t pixel_type = kPixel8;
  int32_t form = kFrameInMemory;
};

// Makes other frames in memory than it is asked for.
class MistakenImages final : public ImageBufferSuite {
 public:
  explicit MistakenImages(const Mistake& mistake) : mistake_(mistake) {}

  HostFrame* CreateFrame(int32_t width, int32_t height, int32_t /*pixel_type*/,
                         int32_t /*form*/) override {
    const FrameDescription description{.pixel_type = mistake_.pixel_type,
                                       .form = mistake_.form,
                                       .width = width + mistake_.wider,
                                       .height = height + mistake_.higher,
                                       .stride = 16 * (width + mistake_.wider)};
    pixels_.resize(static_cast<size_t>(description.stride) *
                   static_cast<size_t>(description.height));
    ++live_;
    return &frames_.emplace_back(description, pixels_.data());
  }
  void ReleaseFrame(HostFrame* /*frame*/) override { --live_; }

  int live() const { return live_; }

 private:
  Mistake mistake_;
  std::vector<uint8_t> pixels_;
  std::deque<host::MemoryFrame> frames_;
  int live_ = 0;
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

TEST_F(HostFaults, EffectFrameThatIsNotAsAskedForIsGivenBackAndFailsTheFrame) {
  for (const Mistake& mistake :
       {Mistake{.pixel_type = kPixel16}, Mistake{.pixel_type = kPixelFloat}, Mistake{.wider = 1},
        Mistake{.wider = -1}, Mistake{.higher = 1}, Mistake{.higher = -1},
        Mistake{.form = kFrameOnGpu}}) {
    const Instance effect = host_.Make(package_);
    MistakenImages images(mistake);
    host_.StartWith({{kImageBufferSuiteName, &images}});
    EXPECT_EQ(Frame(*effect, picture_, result_), kFailed);
    EXPECT_TRUE(ResultIsUntouched());
    EXPECT_THAT(host_.TakeErrors(), ElementsAre("<audio_visual> Effect texture is null."));
    EXPECT_EQ(images.live(), 0);
    effect->ReleaseResources();
    host_.StartWithout({});
    EXPECT_EQ(effect->Initialize(&context_), kOk);
    EXPECT_EQ(Frame(*effect, picture_, result_), kOk);
  }
}

}  // namespace
}  // namespace krv::test
