// The overlay against exact arithmetic.
#include "compositing/overlay.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <random>
#include <string>

#include "compositing/failing_heap.h"

namespace krv {
namespace {

size_t ChannelBytes(PixelType type) { return type == kPixel8 ? 1 : type == kPixel16 ? 2 : 4; }

double FullScale(PixelType type) {
  return type == kPixel8 ? 255.0 : type == kPixel16 ? 65535.0 : 1.0;
}

// A frame with `padding` bytes behind each row.
class Frame {
 public:
  Frame(PixelType type, int width, int height, int padding)
      : type_(type),
        width_(width),
        stride_(static_cast<size_t>(width) * 4 * ChannelBytes(type) + static_cast<size_t>(padding)),
        bytes_(stride_ * static_cast<size_t>(height), kUntouched) {}

  static constexpr uint8_t kUntouched = 0xA5;

  void FillRandomly(std::mt19937* random) {
    for (size_t row = 0; row < bytes_.size() / stride_; ++row) {
      for (int x = 0; x < width_; ++x) {
        for (int c = 0; c < 4; ++c) {
          Set(x, static_cast<int>(row), c,
              static_cast<double>((*random)() % 65536) / 65535.0 * FullScale(type_));
        }
      }
    }
  }

  void Set(int x, int y, int channel, double value) {
    uint8_t* at = At(x, y, channel);
    if (type_ == kPixel8) {
      *at = static_cast<uint8_t>(std::lround(value));
    } else if (type_ == kPixel16) {
      const auto v = static_cast<uint16_t>(std::lround(value));
      std::memcpy(at, &v, sizeof(v));
    } else {
      const auto v = static_cast<float>(value);
      std::memcpy(at, &v, sizeof(v));
    }
  }

  double Get(int x, int y, int channel) {
    const uint8_t* at = At(x, y, channel);
    if (type_ == kPixel8) return *at;
    if (type_ == kPixel16) {
      uint16_t v = 0;
      std::memcpy(&v, at, sizeof(v));
      return v;
    }
    float v = 0;
    std::memcpy(&v, at, sizeof(v));
    return double{v};
  }

  bool PaddingIsUntouched() const {
    const size_t row_bytes = static_cast<size_t>(width_) * 4 * ChannelBytes(type_);
    for (size_t i = 0; i < bytes_.size(); ++i) {
      if (i % stride_ >= row_bytes && bytes_[i] != kUntouched) return false;
    }
    return true;
  }

  uint8_t* data() { return bytes_.data(); }
  ptrdiff_t stride() const { return static_cast<ptrdiff_t>(stride_); }

 private:
  uint8_t* At(int x, int y, int channel) {
    return bytes_.data() + static_cast<size_t>(y) * stride_ +
           (static_cast<size_t>(x) * 4 + static_cast<size_t>(channel)) * ChannelBytes(type_);
  }

  PixelType type_;
  int width_;
  size_t stride_;
  std::vector<uint8_t> bytes_;
};

struct Size {
  int width;
  int height;
};

struct Case {
  PixelType type;
  Size effect;
  Size frame;
  int padding;
};

void PrintTo(const Case& c, std::ostream* out) {
  *out << "type " << c.type << ", " << c.effect.width << "x" << c.effect.height << " over "
       << c.frame.width << "x" << c.frame.height << ", padding " << c.padding;
}

// The effect's channels by those of a frame: it comes in another order.
constexpr std::array<int, 4> kEffectChannel = {2, 1, 0, 3};

// The effect at a pixel in steps of 8 bits, and whether every texel that takes part is opaque.
struct Sample {
  std::array<double, 4> steps;
  bool is_opaque;
};

Sample SampleExactly(const uint8_t* effect, Size size, const SamplingTap& column,
                     const SamplingTap& row) {
  Sample sample{{}, true};
  for (int j = 0; j < 2; ++j) {
    for (int i = 0; i < 2; ++i) {
      const int x = std::min(column.lower + i, size.width - 1);
      const int y = std::min(row.lower + j, size.height - 1);
      const double weight = (i == 0 ? 1 - double{column.weight} : double{column.weight}) *
                            (j == 0 ? 1 - double{row.weight} : double{row.weight});
      const uint8_t* texel = effect + 4 * (y * size.width + x);
      for (size_t c = 0; c < 4; ++c) {
        sample.steps[c] += weight * texel[kEffectChannel[c]];
      }
      if (weight > 0 && texel[3] < 255) sample.is_opaque = false;
    }
  }
  return sample;
}

double Blended(PixelType type, double below, const Sample& effect, size_t channel) {
  const double value = effect.steps[channel] / 255 * FullScale(type);
  if (effect.is_opaque) {
    return type == kPixelFloat ? below + value : std::min(FullScale(type), below + value);
  }
  const double alpha = effect.steps[3] / 255;
  return below * (1 - alpha) + value * alpha;
}

// Blocks without any alpha, blocks of full alpha and noise, side by side.
void FillEffect(Overlay* overlay, Size size, std::mt19937* random) {
  uint8_t* effect = overlay->StartEffect(0, size.height);
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) {
      uint8_t* texel = effect + 4 * (y * size.width + x);
      for (int c = 0; c < 4; ++c) texel[c] = static_cast<uint8_t>((*random)());
      const int block = (x / 20 + y / 20) % 4;
      if (block == 0) texel[3] = 0;
      if (block == 1) texel[3] = 255;
    }
  }
}

class Overlays : public testing::TestWithParam<Case> {
 protected:
  Overlays() {
    overlay_.Resize(Param().effect.width, Param().effect.height, Param().frame.width,
                    Param().frame.height);
    FillEffect(&overlay_, Param().effect, &random_);
    const uint8_t* effect = Effect();
    effect_.assign(effect, effect + ptrdiff_t{4} * Param().effect.width * Param().effect.height);
    input_.FillRandomly(&random_);
  }

  const Case& Param() const { return GetParam(); }

  uint8_t* Effect() { return overlay_.StartEffect(0, Param().effect.height); }

  // How far a result may be from the exact one.
  double Tolerance() const {
    return Param().type == kPixel8 ? 0.6 : Param().type == kPixel16 ? 0.6 : 1e-5;
  }

  void ExpectExact(Frame* output, Frame* below, bool blend) {
    const auto columns = SamplingTaps(Param().frame.width, Param().effect.width);
    const auto rows = SamplingTaps(Param().frame.height, Param().effect.height);
    double worst = 0;
    for (int y = 0; y < Param().frame.height; ++y) {
      for (int x = 0; x < Param().frame.width; ++x) {
        const Sample effect =
            SampleExactly(effect_.data(), Param().effect, columns[static_cast<size_t>(x)],
                          rows[static_cast<size_t>(y)]);
        for (int c = 0; c < 4; ++c) {
          const auto channel = static_cast<size_t>(c);
          const double expected = blend
                                      ? Blended(Param().type, below->Get(x, y, c), effect, channel)
                                      : effect.steps[channel] / 255 * FullScale(Param().type);
          worst = std::max(worst, std::abs(output->Get(x, y, c) - expected));
        }
      }
    }
    EXPECT_LE(worst, Tolerance());
    EXPECT_TRUE(output->PaddingIsUntouched());
  }

  Frame NewFrame() const {
    return {Param().type, Param().frame.width, Param().frame.height, Param().padding};
  }

  std::mt19937 random_{7};
  Overlay overlay_;
  std::vector<uint8_t> effect_;
  Frame input_ = NewFrame();
};

TEST_P(Overlays, BlendTheEffectOverTheInput) {
  Frame output = NewFrame();
  overlay_.LayOver({Param().type, input_.data(), input_.stride(), output.data(), output.stride()},
                   true);
  ExpectExact(&output, &input_, true);
}

TEST_P(Overlays, BlendInPlace) {
  Frame output = input_;
  overlay_.LayOver({Param().type, output.data(), output.stride(), output.data(), output.stride()},
                   true);
  ExpectExact(&output, &input_, true);
}

TEST_P(Overlays, WriteTheEffectAlone) {
  Frame output = NewFrame();
  overlay_.LayOver({Param().type, nullptr, 0, output.data(), output.stride()}, false);
  ExpectExact(&output, &input_, false);
}

TEST_P(Overlays, LeaveTheInputExactlyWhereTheEffectIsTransparent) {
  std::memset(
      Effect(), 0,
      static_cast<size_t>(Param().effect.width) * static_cast<size_t>(Param().effect.height) * 4);
  Frame output = NewFrame();
  overlay_.LayOver({Param().type, input_.data(), input_.stride(), output.data(), output.stride()},
                   true);
  for (int y = 0; y < Param().frame.height; ++y) {
    for (int x = 0; x < Param().frame.width; ++x) {
      for (int c = 0; c < 4; ++c) ASSERT_EQ(output.Get(x, y, c), input_.Get(x, y, c));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, Overlays,
    testing::Values(Case{kPixel8, {85, 48}, {192, 108}, 0}, Case{kPixel8, {85, 48}, {85, 48}, 3},
                    Case{kPixel8, {1, 1}, {7, 5}, 0}, Case{kPixel8, {2, 3}, {101, 33}, 64},
                    Case{kPixel8, {33, 1}, {99, 1}, 0}, Case{kPixel8, {1, 1}, {1, 1}, 1},
                    Case{kPixel8, {100, 50}, {300, 150}, 12},
                    Case{kPixel16, {85, 48}, {192, 108}, 2}, Case{kPixel16, {85, 48}, {85, 48}, 1},
                    Case{kPixel16, {1, 1}, {3, 3}, 0}, Case{kPixelFloat, {85, 48}, {192, 108}, 4},
                    Case{kPixelFloat, {85, 48}, {85, 48}, 1},
                    Case{kPixelFloat, {1, 2}, {5, 9}, 0}));

TEST(Overlay, AddsOnlyWhereEveryTexelThatTakesPartIsOpaque) {
  Overlay overlay;
  overlay.Resize(2, 1, 4, 1);
  const std::array<uint8_t, 8> effect = {10, 20, 30, 255, 10, 20, 30, 254};
  std::copy(effect.begin(), effect.end(), overlay.StartEffect(0, 1));
  std::array<uint8_t, 16> frame{};
  frame.fill(100);
  overlay.LayOver({kPixel8, frame.data(), 16, frame.data(), 16}, true);
  EXPECT_EQ(frame[0], 130) << "before the first texel's centre";
  EXPECT_EQ(frame[4], 30) << "between the two";
  EXPECT_EQ(frame[12], 30);
}

TEST(Overlay, KeepsWhatIsNoNumberInFloatFramesWhereTheEffectIsTransparent) {
  Overlay overlay;
  overlay.Resize(40, 1, 80, 1);
  uint8_t* effect = overlay.StartEffect(0, 1);
  std::fill_n(effect, 160, uint8_t{0});
  effect[3] = 128;
  std::array<float, 320> frame{};
  frame[300] = std::numeric_limits<float>::infinity();
  frame[301] = std::numeric_limits<float>::quiet_NaN();
  overlay.LayOver({kPixelFloat, frame.data(), 1280, frame.data(), 1280}, true);
  EXPECT_EQ(frame[300], std::numeric_limits<float>::infinity());
  EXPECT_TRUE(std::isnan(frame[301]));
  EXPECT_GT(frame[3], 0);
}

// Frames of 20 rows with an effect of 10.
class OverlayRows : public testing::Test {
 protected:
  static constexpr int kWidth = 40;

  OverlayRows() { overlay_.Resize(kWidth / 2, 10, kWidth, 20); }

  // The rows of the frame that differ from the input when these rows of the effect are opaque.
  std::vector<int> ChangedRows(int first_row, int row_count) {
    uint8_t* effect = overlay_.StartEffect(first_row, row_count);
    std::fill_n(effect + ptrdiff_t{first_row} * kWidth * 2, row_count * kWidth * 2, uint8_t{200});
    std::vector<uint8_t> frame(size_t{kWidth} * 80, 7);
    overlay_.LayOver({kPixel8, frame.data(), kWidth * 4, frame.data(), kWidth * 4}, true);
    std::vector<int> changed;
    for (int row = 0; row < 20; ++row) {
      const auto begin = frame.begin() + ptrdiff_t{row} * kWidth * 4;
      if (std::any_of(begin, begin + ptrdiff_t{kWidth} * 4, [](uint8_t v) { return v != 7; })) {
        changed.push_back(row);
      }
    }
    return changed;
  }

  Overlay overlay_;
};

TEST_F(OverlayRows, TheOtherRowsAreTransparent) {
  EXPECT_EQ(ChangedRows(3, 2), (std::vector<int>{5, 6, 7, 8, 9, 10}));
}

TEST_F(OverlayRows, NothingIsLeftOfTheRowsBefore) {
  ChangedRows(0, 10);
  EXPECT_EQ(ChangedRows(3, 2), (std::vector<int>{5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(ChangedRows(8, 1), (std::vector<int>{15, 16, 17, 18}));
  EXPECT_EQ(ChangedRows(0, 1), (std::vector<int>{0, 1, 2}));
}

TEST_F(OverlayRows, NoRowAtAllLeavesTheFrame) {
  ChangedRows(0, 10);
  EXPECT_EQ(ChangedRows(0, 0), std::vector<int>{});
}

TEST(Overlay, TakesOneSizeAfterTheOther) {
  Overlay overlay;
  for (const int width : {64, 16, 200}) {
    overlay.Resize(width / 2, 4, width, 8);
    std::fill_n(overlay.StartEffect(0, 4), width / 2 * 16, uint8_t{255});
    std::vector<uint8_t> frame(static_cast<size_t>(width) * 32, 7);
    overlay.LayOver({kPixel8, frame.data(), width * 4, frame.data(), width * 4}, false);
    EXPECT_EQ(std::count(frame.begin(), frame.end(), 255), width * 32);
  }
}

// The allocations of a change of all sizes fail one after the other, each in an overlay of its own.
TEST(Overlay, IsWholeAgainAtTheOldSizeAfterAllocationsHaveFailed) {
  constexpr size_t kStride = 1024;  // a wide frame's row
  constexpr size_t kRows = 30;      // a high frame's
  size_t spared = 0;
  for (bool has_struck = true; has_struck; ++spared) {
    Overlay overlay;
    overlay.Resize(32, 4, 64, 8);
    {
      const test::FailingHeap heap(spared);
      try {
        overlay.Resize(100, 10, 200, 30);
      } catch (const std::bad_alloc&) {
      }
      has_struck = heap.has_struck();
    }
    overlay.Resize(32, 4, 64, 8);
    std::fill_n(overlay.StartEffect(0, 4), 32 * 4 * 4, uint8_t{255});
    std::vector<uint8_t> frame(kStride * kRows, 7);
    overlay.LayOver({kPixel8, frame.data(), kStride, frame.data(), kStride}, true);
    for (size_t i = 0; i < frame.size(); ++i) {
      const bool is_inside = i % kStride < 64 * 4 && i / kStride < 8;
      ASSERT_EQ(frame[i], is_inside ? 255 : 7) << "byte " << i << " after allocation " << spared;
    }
  }
  EXPECT_GT(spared, 5U) << "too few allocations to be those of a change";
}

}  // namespace
}  // namespace krv
