#include "effects/frame_timing.h"

#include <gtest/gtest.h>

#include <limits>

#include "krv/effect_context.h"

namespace krv {
namespace {

constexpr int64_t kLargest = std::numeric_limits<int64_t>::max();
constexpr int64_t kSmallest = std::numeric_limits<int64_t>::min();

class RateContext final : public EffectContext {
 public:
  RateContext(int64_t numerator, int64_t denominator)
      : numerator_(numerator), denominator_(denominator) {}
  int64_t GetFrameIndex() override { return 0; }
  void GetFrameRate(int64_t* numerator, int64_t* denominator) override {
    *numerator = numerator_;
    *denominator = denominator_;
  }
  HostFrame* GetOutputFrame() override { return nullptr; }
  HostFrame* GetInputFrame() override { return nullptr; }
  AudioBlock* GetAudioBlock() override { return nullptr; }
  int32_t GetParameterValue(const char*, int64_t, ParameterValue*) override { return kNothingToDo; }
  int32_t QueryProperty(const char*, int32_t, void*, uint32_t) override { return kNothingToDo; }
  void RequestExtraInput(uint32_t) override {}

 private:
  int64_t numerator_;
  int64_t denominator_;
};

int64_t Rate(int64_t numerator, int64_t denominator) {
  RateContext context(numerator, denominator);
  return FramesPerSecond(context);
}

TEST(FramesPerSecond, IsTheIntegerQuotient) {
  EXPECT_EQ(Rate(25, 1), 25);
  EXPECT_EQ(Rate(30000, 1001), 29);
  EXPECT_EQ(Rate(24000, 1001), 23);
  EXPECT_EQ(Rate(-60, -2), 30);
}

TEST(FramesPerSecond, IsOneWhereThereIsNoRate) {
  EXPECT_EQ(Rate(25, 0), 1);
  EXPECT_EQ(Rate(0, 1), 1);
  EXPECT_EQ(Rate(1, 2), 1);
  EXPECT_EQ(Rate(-25, 1), 1);
}

TEST(FramesPerSecond, SurvivesTheEndsOfTheRange) {
  EXPECT_EQ(Rate(kSmallest, -1), kLargest);
  EXPECT_EQ(Rate(kSmallest, 1), 1);
  EXPECT_EQ(Rate(kLargest, 1), kLargest);
}

TEST(TimeInSeconds, IsTheShiftedIndexOverTheRate) {
  EXPECT_EQ(TimeInSeconds(50, 0, 25), 2.0F);
  EXPECT_EQ(TimeInSeconds(50, 25, 25), 3.0F);
  EXPECT_EQ(TimeInSeconds(29, 0, 29), 1.0F);
  EXPECT_EQ(TimeInSeconds(-5, 0, 10), -0.5F);
}

TEST(TimeInSeconds, WrapsAtTheEndOfTheRange) {
  EXPECT_EQ(TimeInSeconds(kLargest, 1, 1), static_cast<float>(kSmallest));
}

}  // namespace
}  // namespace krv
