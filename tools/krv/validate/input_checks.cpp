// What comes with a frame: its sound, its time, where the person is.
#include <cstdint>
#include <limits>
#include <string>

#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

constexpr int64_t kSmallest = std::numeric_limits<int64_t>::min();
constexpr int64_t kLargest = std::numeric_limits<int64_t>::max();

// A mask that is what a host says it is.
class OddPerson final : public PersonMaskSource {
 public:
  OddPerson(bool has_pixels, int32_t width, int32_t height, int32_t stride, uint8_t filled = 1)
      : pixels_(size_t{64} * 64 * 4, 255),
        has_pixels_(has_pixels),
        width_(width),
        height_(height),
        stride_(stride),
        filled_(filled) {}

  uint8_t GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) override {
    *pixels = has_pixels_ ? pixels_.data() : nullptr;
    *width = width_;
    *height = height_;
    *stride = stride_;
    return filled_;
  }

 private:
  std::vector<uint8_t> pixels_;
  bool has_pixels_;
  int32_t width_;
  int32_t height_;
  int32_t stride_;
  uint8_t filled_;
};

struct SoundCase {
  std::string what;
  int64_t start;
  uint32_t channels;
  int32_t sample_frames;
  int32_t rate;
  bool has_samples = true;
};

}  // namespace

void CheckSound(Bench& bench) {
  const std::vector<int16_t> loud = [] {
    std::vector<int16_t> samples(1 << 20);
    for (size_t i = 0; i < samples.size(); ++i) samples[i] = i % 3 == 0 ? INT16_MIN : INT16_MAX;
    return samples;
  }();
  const SoundCase cases[] = {
      {"no channel", 0, 0, 1764, 44100},
      {"one channel", 0, 1, 1764, 44100},
      {"255 channels", 0, 255, 1764, 44100},
      {"256 channels, which count as none", 0, 256, 1764, 44100},
      {"257 channels, which count as one", 0, 257, 1764, 44100},
      {"no samples", 0, 2, 0, 44100},
      {"a null in place of the samples", 0, 2, 1764, 44100, false},
      {"one sample", 0, 2, 1, 44100},
      {"two samples", 0, 2, 2, 44100},
      {"three samples", 0, 1, 3, 44100},
      {"1,009 samples, a prime number", 0, 2, 1009, 44100},
      {"half a million samples", 0, 2, 1 << 19, 192000},
      {"-1 samples", 0, 2, -1, 44100},
      {"the smallest number of samples", 0, 2, INT32_MIN, 44100},
      {"a rate of 0", kLargest, 2, 1764, 0},
      {"a rate below 0", kSmallest, 2, 1764, -1},
  };
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    for (const SoundCase& one : cases) {
      bench.examiner().Step("a frame of \"" + trial.name() + "\" with a block of sound of " +
                            one.what);
      host::BorrowedAudioBlock block({one.has_samples ? loud.data() : nullptr, one.sample_frames,
                                      one.channels, one.rate, one.start});
      FrameCase frame;
      frame.audio = &block;
      frame.SetShape({.pixel_type = kPixelFloat});
      trial.Render(frame);
    }
  });
}

void CheckFrameIndices(Bench& bench) {
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    for (const int64_t index : {int64_t{0}, int64_t{-1}, int64_t{-1000000}, int64_t{1} << 31,
                                int64_t{1} << 53, kLargest - 1, kLargest, kSmallest}) {
      FrameCase frame;
      frame.index = index;
      frame.SetShape({.pixel_type = kPixelFloat});
      bench.examiner().Step("frame " + std::to_string(index) + " of \"" + trial.name() + "\"");
      trial.Render(frame);
    }
  });
}

void CheckFrameRates(Bench& bench) {
  constexpr struct {
    int64_t numerator;
    int64_t denominator;
  } kRates[] = {{0, 0},          {25, 0},
                {0, 1},          {1, 25},
                {-25, 1},        {25, -1},
                {30000, 1001},   {1000000, 1},
                {kLargest, 1},   {1, kLargest},
                {kSmallest, -1}, {kSmallest, 1},
                {-1, kSmallest}, {kLargest, kLargest}};
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    for (const auto& rate : kRates) {
      for (const int64_t index : {int64_t{7}, kLargest, kSmallest}) {
        FrameCase frame;
        frame.index = index;
        frame.rate_numerator = rate.numerator;
        frame.rate_denominator = rate.denominator;
        frame.SetShape({.pixel_type = kPixelFloat});
        bench.examiner().Step("frame " + std::to_string(index) + " of \"" + trial.name() +
                              "\" at a rate of " + std::to_string(rate.numerator) + "/" +
                              std::to_string(rate.denominator));
        trial.Render(frame);
      }
    }
  });
}

void CheckPersonMasks(Bench& bench) {
  bench.Prepare();
  std::vector<std::string> followers;
  for (const host::EffectListing& effect : bench.effects()) {
    Trial trial(&bench, effect.unique_name);
    ScriptedContext context;
    trial.Watch("slot 1", [&] { return trial.effect().Initialize(&context); });
    if (context.extra_input_requested()) followers.push_back(effect.unique_name);
    trial.Release();
  }
  for (const std::string& name : followers) {
    Trial trial(&bench, name);
    bench.examiner().Step("slot 1 and a frame of \"" + name + "\"");
    if (!trial.Initialise()) continue;
    const auto before = trial.Render({});
    const std::string frame_of = std::string("a frame of \"").append(name).append("\"");
    const auto look = [&](const std::string& what, OddPerson person) {
      bench.examiner().Step(std::string(frame_of).append(" with a mask ").append(what));
      FrameCase frame;
      frame.person_mask = &person;
      frame.codes = {kOk, kFailed};
      trial.Render(frame);
    };
    look("that is not filled", {true, 64, 64, 256, 0});
    look("that is everywhere", {true, 64, 64, 256});
    look("of one pixel", {true, 1, 1, 4});
    look("of one row", {true, 64, 1, 256});
    look("without pixels", {false, 64, 64, 256});
    look("of width 0", {true, 0, 64, 256});
    look("of height -64", {true, 64, -64, 256});
    look("with a stride below its row", {true, 64, 64, 255});
    look("with a stride of -256", {true, 64, 64, -256});
    bench.examiner().Step(frame_of + " after odd masks");
    bench.examiner().Expect(trial.Render({}) == before, "the picture of before", "another");
    trial.Release();
  }
}

}  // namespace krv::tool
