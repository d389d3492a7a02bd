// A steady run of frames asks the heap for nothing.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "effects/effect_fixture.h"
#include "effects/shipped_package.h"
#include "steady/counted_heap.h"

namespace krv::test {
namespace {

constexpr int kWarmFrames = 6;
constexpr int kFrames = 10;

// What a host does beside the frames themselves is not counted: the answers of TestContext
// allocate.
class QuietContext final : public EffectContext {
 public:
  QuietContext(HostFrame* input, HostFrame* output, AudioBlock* audio)
      : input_(input), output_(output), audio_(audio) {}

  void NextFrame() { ++index_; }

  int64_t GetFrameIndex() override { return index_; }
  void GetFrameRate(int64_t* numerator, int64_t* denominator) override {
    *numerator = 30000;
    *denominator = 1001;
  }
  HostFrame* GetOutputFrame() override { return output_; }
  HostFrame* GetInputFrame() override { return input_; }
  AudioBlock* GetAudioBlock() override { return audio_; }
  int32_t GetParameterValue(const char*, int64_t, ParameterValue*) override { return 1; }
  int32_t QueryProperty(const char*, int32_t, void*, uint32_t) override { return 1; }
  void RequestExtraInput(uint32_t) override {}

 private:
  int64_t index_ = 0;
  HostFrame* input_;
  HostFrame* output_;
  AudioBlock* audio_;
};

class SteadyFrames : public testing::TestWithParam<std::string> {
 protected:
  // The allocations of some frames of a package, after a few that may make what stays.
  size_t Allocations(EffectHost* host, Package package, HostFrame* input, HostFrame* output) {
    QuietContext context(input, output, &noise_.block);
    const Instance effect = host->Make(std::move(package));
    for (int i = 0; i < kWarmFrames; ++i) Process(*effect, &context);
    const CountedHeap heap;
    for (int i = 0; i < kFrames; ++i) Process(*effect, &context);
    return heap.allocations();
  }

  FallingNoise noise_;

 private:
  static void Process(KRVEffect& effect, QuietContext* context) {
    context->NextFrame();
    effect.ClearInputs();
    if (effect.ProcessFrame(context) != kOk) ADD_FAILURE() << "the frame failed";
  }
};

// The packages that show something without a person.
std::vector<std::string> PackageNames() {
  std::vector<std::string> names = ShippedPackageNames();
  std::erase_if(names, [](const std::string& name) {
    return ShippedPackage(name).description.contains("input_list");
  });
  return names;
}

TEST(CountedHeap, CountsTheProgramsAllocations) {
  const CountedHeap heap;
  const auto block = std::make_unique<std::string>(100, 'x');
  EXPECT_EQ(heap.allocations(), 2U) << *block;
}

TEST_P(SteadyFrames, InMemoryAllocateNothing) {
  EffectHost host;
  for (const int32_t type : {kPixel8, kPixel16, kPixelFloat}) {
    host::MemoryFrame input(64, 36, type);
    host::MemoryFrame output(64, 36, type);
    EXPECT_EQ(Allocations(&host, ShippedPackage(GetParam()), &input, &output), 0U) << type;
  }
}

TEST_P(SteadyFrames, InMemoryLeftToTheGpuAllocateNothing) {
  EffectHost host;
  host::MemoryFrame input(64, 36, kPixel8);
  host::MemoryFrame output(64, 36, kPixel16);
  EXPECT_EQ(Allocations(&host, ShippedPackage(GetParam()), &input, &output), 0U);
}

TEST_P(SteadyFrames, OnTheGpuAllocateNothing) {
  EffectHost host(host::DeviceUse::kGpu);
  host::MemoryFrame picture(64, 36, kPixel8);
  const auto input = TextureOf(picture);
  const auto output = TextureOf(picture);
  EXPECT_EQ(Allocations(&host, ShippedPackage(GetParam()), input.get(), output.get()), 0U);
}

INSTANTIATE_TEST_SUITE_P(All, SteadyFrames, testing::ValuesIn(PackageNames()),
                         [](const auto& test) { return test.param; });

// A rate of 30000/1001 at 48 kHz gives blocks of 1601 and 1602 sample frames.
TEST_F(SteadyFrames, WithAudioBlocksOfTwoLengthsAllocateNothing) {
  EffectHost host;
  host::MemoryFrame frame(64, 48, kPixel8);
  host::BorrowedAudioBlock shorter(
      {.samples = noise_.samples.data(), .sample_frames = 1601, .channels = 1});
  host::BorrowedAudioBlock longer(
      {.samples = noise_.samples.data(), .sample_frames = 1602, .channels = 1});
  QuietContext even(&frame, &frame, &shorter);
  QuietContext odd(&frame, &frame, &longer);
  const Instance effect = host.Make(ShippedPackage("bars"));
  const auto process = [&effect](int i, QuietContext* a, QuietContext* b) {
    effect->ClearInputs();
    EXPECT_EQ(effect->ProcessFrame(i % 2 == 0 ? a : b), kOk);
  };
  for (int i = 0; i < kWarmFrames; ++i) process(i, &even, &odd);
  const CountedHeap heap;
  for (int i = 0; i < kFrames; ++i) process(i, &even, &odd);
  EXPECT_EQ(heap.allocations(), 0U);
}

}  // namespace
}  // namespace krv::test
