// Frames of every form, type, stride and size.
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

using testing::ElementsAre;

constexpr char kBackground[] = "uniform sampler2D background_tex; uniform vec2 iResolution;";
constexpr char kCopyBody[] =
    "gl_FragColor = texture2D(background_tex, gl_FragCoord.xy / iResolution);";

Package CopyPackage() {
  Package package = PassPackage({Fragment(kCopyBody, kBackground)});
  package.description["original"] = true;
  return package;
}

// A figure with soft edges that moves over the frame.
Package FigurePackage() {
  return PassPackage(
      {Fragment("vec2 p = gl_FragCoord.xy / iResolution - 0.5; "
                "float a = clamp(1.0 - length(p) * 2.5, 0.0, 0.95); "
                "gl_FragColor = vec4(p + 0.5, fract(time_second), a);",
                "uniform vec2 iResolution; uniform float time_second;")});
}

class Frames : public EffectTest {};

TEST_F(Frames, NullContextIsAnError) {
  const Instance effect = host_.Make(CopyPackage());
  EXPECT_EQ(effect->ProcessFrame(nullptr), kNothingToDo);
  EXPECT_THAT(host_.TakeErrors(), ElementsAre("<audio_visual> Effect context null error"));
  EXPECT_EQ(effect->ProcessFrameAgain(nullptr), kNothingToDo);
  EXPECT_THAT(host_.TakeErrors(), ElementsAre("<audio_visual> Effect context null error"));
}

TEST_F(Frames, OutputWithoutABufferIsAnError) {
  const Instance effect = host_.Make(CopyPackage());
  host::MemoryFrame empty({kPixel8, kFrameInMemory, 4, 4, 16}, nullptr);
  for (HostFrame* frame : {static_cast<HostFrame*>(nullptr), static_cast<HostFrame*>(&empty)}) {
    context_.output = frame;
    EXPECT_EQ(ProcessFrame(*effect, context_), kNothingToDo);
    EXPECT_THAT(host_.TakeErrors(), ElementsAre("<audio_visual> Output image null error"));
  }
  EXPECT_TRUE(context_.asked.empty());
}

TEST_F(Frames, Slot5ProcessesAsSlot4) {
  FillValues(input_, {0.25, 0.5, 0.75, 1});
  const Instance effect = host_.Make(CopyPackage());
  EXPECT_EQ(effect->ProcessFrameAgain(&context_), kOk);
  EXPECT_EQ(ValuesAt(output_, 0, 0), (Values{0.25, 0.5, 0.75, 1}));
}

TEST_F(Frames, FirstRowInMemoryIsRowZero) {
  ProcessFrame(*host_.Make(ValuePackage("vec4(gl_FragCoord.xy, 0.0, 1.0)", "")), context_);
  EXPECT_EQ(ValuesAt(output_, 0, 0), (Values{0.5, 0.5, 0, 1}));
  EXPECT_EQ(ValuesAt(output_, 3, 1), (Values{3.5, 1.5, 0, 1}));
}

TEST_F(Frames, PixelsAreStoredBlueGreenRedAlpha) {
  host::MemoryFrame frame(2, 2, kPixel8);
  context_.input = context_.output = &frame;
  ProcessFrame(*host_.Make(ValuePackage("vec4(1.0, 0.4, 0.2, 0.6)", "")), context_);
  const auto bytes = BytesOf(frame);
  EXPECT_THAT(std::vector<int>(bytes.begin(), bytes.begin() + 4), ElementsAre(51, 102, 255, 153));
}

TEST_F(Frames, EightBitPictureIsCopiedExactly) {
  host::MemoryFrame input(33, 17, kPixel8);
  host::MemoryFrame output(33, 17, kPixel8);
  FillWithPattern(input);
  context_.input = &input;
  context_.output = &output;
  EXPECT_EQ(ProcessFrame(*host_.Make(CopyPackage()), context_), kOk);
  EXPECT_EQ(BytesOf(output), BytesOf(input));
}

TEST_F(Frames, SixteenBitPictureIsCopiedToEightBits) {
  host::MemoryFrame input(5, 3, kPixel16);
  host::MemoryFrame output(5, 3, kPixel16);
  auto* const from = static_cast<uint16_t*>(input.GetPixels());
  const auto* const to = static_cast<const uint16_t*>(output.GetPixels());
  for (int i = 0; i < 5 * 3 * 4; ++i) from[i] = static_cast<uint16_t>(i * 1000);
  context_.input = &input;
  context_.output = &output;
  EXPECT_EQ(ProcessFrame(*host_.Make(CopyPackage()), context_), kOk);
  for (int i = 0; i < 5 * 3 * 4; ++i) EXPECT_NEAR(to[i], from[i], 129) << i;
}

TEST_F(Frames, FloatPictureIsCopiedExactly) {
  auto* const from = static_cast<float*>(input_.GetPixels());
  for (int i = 0; i < 64; ++i) from[i] = static_cast<float>(i) * 0.37F - 3.0F;
  EXPECT_EQ(ProcessFrame(*host_.Make(CopyPackage()), context_), kOk);
  EXPECT_EQ(BytesOf(output_), BytesOf(input_));
}

TEST_F(Frames, TypesOfInputAndOutputMayDiffer) {
  host::MemoryFrame bytes(4, 4, kPixel8);
  FillValues(input_, {0.2F, 0.4F, 0.6F, 0.8F});
  context_.output = &bytes;
  EXPECT_EQ(ProcessFrame(*host_.Make(CopyPackage()), context_), kOk);
  EXPECT_EQ(PixelAt(bytes, 1, 1), (Rgba{51, 102, 153, 204}));
}

TEST_F(Frames, BytesBetweenRowsAreNeitherReadNorWritten) {
  const Instance effect = host_.Make(CopyPackage());
  for (const int32_t type : {int32_t{kPixel8}, int32_t{kPixel16}, int32_t{kPixelFloat}}) {
    for (const int32_t padding : {3, 4, 64}) {
      const int32_t row = 5 * host::BytesPerPixel(type);
      host::MemoryFrame tight(5, 4, type);
      host::MemoryFrame input(5, 4, type, row + padding);
      host::MemoryFrame output(5, 4, type, row + 2 * padding);
      // Half of any type: 0x3E3E3E3E is 0.186 as a float.
      FillBytes(tight, 0x3E);
      FillBytes(input, 0xFF);
      host::CopyRows(tight.GetPixels(), row, input.GetPixels(), row + padding, row, 4);
      FillBytes(output, 0xA5);
      context_.input = &input;
      context_.output = &output;
      ASSERT_EQ(ProcessFrame(*effect, context_), kOk);
      const auto bytes = BytesOf(output);
      for (size_t i = 0; i < bytes.size(); ++i) {
        const bool is_picture = static_cast<int32_t>(i) % (row + 2 * padding) < row;
        ASSERT_EQ(bytes[i], is_picture ? 0x3E : 0xA5) << "type " << type << ", byte " << i;
      }
    }
  }
}

TEST_F(Frames, SizeMayChangeWithEveryFrame) {
  const Instance effect = host_.Make(FigurePackage());
  const std::pair<int32_t, int32_t> sizes[] = {{1, 1}, {64, 2},    {3, 50},
                                               {1, 1}, {640, 500}, {7, 7}};
  for (const auto& [width, height] : sizes) {
    host::MemoryFrame input(width, height, kPixel8);
    host::MemoryFrame output(width, height, kPixel8);
    host::MemoryFrame alone(width, height, kPixel8);
    FillWithPattern(input);
    context_.input = &input;
    context_.output = &output;
    EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
    context_.output = &alone;
    EXPECT_EQ(ProcessFrame(*host_.Make(FigurePackage()), context_), kOk);
    EXPECT_EQ(BytesOf(output), BytesOf(alone)) << width << " x " << height;
  }
}

TEST_F(Frames, OnePixelIsAFrame) {
  host::MemoryFrame frame(1, 1, kPixel8);
  Fill(frame, {10, 20, 30, 40});
  context_.input = context_.output = &frame;
  EXPECT_EQ(ProcessFrame(*host_.Make(CopyPackage()), context_), kOk);
  EXPECT_EQ(PixelAt(frame, 0, 0), (Rgba{10, 20, 30, 40}));
}

TEST_F(Frames, FrameInMemoryMayBeItsOwnInput) {
  host::MemoryFrame input(48, 32, kPixel8);
  host::MemoryFrame output(48, 32, kPixel8);
  FillWithPattern(input);
  context_.input = &input;
  context_.output = &output;
  const Instance effect = host_.Make(FigurePackage());
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  context_.output = &input;
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  EXPECT_EQ(BytesOf(input), BytesOf(output));
}

class GpuFrames : public testing::Test {
 protected:
  // Larger than the effect is drawn, so that the blend has to scale it up.
  static constexpr int32_t kWidth = 750;
  static constexpr int32_t kHeight = 500;

  // What an instance draws whose frames lie in memory.
  static std::unique_ptr<host::MemoryFrame> DrawnInMemory(host::MemoryFrame& input) {
    auto output = std::make_unique<host::MemoryFrame>(kWidth, kHeight, kPixel8);
    EffectHost memory_host;
    TestContext context;
    context.index = 7;
    context.input = &input;
    context.output = output.get();
    FillWithPattern(input);
    EXPECT_EQ(ProcessFrame(*memory_host.Make(FigurePackage()), context), kOk);
    EXPECT_FALSE(SamePictures(*output, input)) << "the figure cannot be seen";
    return output;
  }

  host::MemoryFrame input_{kWidth, kHeight, kPixel8};
  std::unique_ptr<host::MemoryFrame> reference_ = DrawnInMemory(input_);
  EffectHost host_{host::DeviceUse::kGpu};  // after the host of the reference is gone
};

TEST_F(GpuFrames, ShowWhatFramesInMemoryShow) {
  const auto input = TextureOf(input_);
  host::MemoryFrame blank(kWidth, kHeight, kPixel8);
  const auto output = TextureOf(blank);
  TestContext context;
  context.index = 7;
  context.input = input.get();
  context.output = output.get();
  EXPECT_EQ(ProcessFrame(*host_.Make(FigurePackage()), context), kOk);
  EXPECT_TRUE(SamePictures(*MemoryOf(*output), *reference_));
  EXPECT_TRUE(SamePictures(*MemoryOf(*input), input_, 0)) << "the input was drawn into";
}

TEST_F(GpuFrames, TextureMayBeItsOwnInput) {
  const auto frame = TextureOf(input_);
  TestContext context;
  context.index = 7;
  context.input = context.output = frame.get();
  EXPECT_EQ(ProcessFrame(*host_.Make(FigurePackage()), context), kOk);
  EXPECT_TRUE(SamePictures(*MemoryOf(*frame), *reference_));
}

TEST_F(GpuFrames, MemoryAndTexturesMix) {
  TestContext context;
  context.index = 7;
  context.input = &input_;
  host::MemoryFrame output(kWidth, kHeight, kPixel8);
  const auto texture = TextureOf(output);
  const Instance effect = host_.Make(FigurePackage());
  context.output = texture.get();
  EXPECT_EQ(ProcessFrame(*effect, context), kOk);
  EXPECT_TRUE(SamePictures(*MemoryOf(*texture), *reference_));
  context.output = &output;
  EXPECT_EQ(ProcessFrame(*effect, context), kOk);
  EXPECT_TRUE(SamePictures(output, *reference_));
}

TEST_F(GpuFrames, FloatTextureHoldsExactValues) {
  host::MemoryFrame memory(4, 4, kPixelFloat);
  FillValues(memory, {0.25, -2, 1000, 1});
  const auto input = TextureOf(memory);
  host::MemoryFrame blank(4, 4, kPixelFloat);
  const auto output = TextureOf(blank);
  TestContext context;
  context.input = input.get();
  context.output = output.get();
  EXPECT_EQ(ProcessFrame(*host_.Make(CopyPackage()), context), kOk);
  EXPECT_EQ(BytesOf(*MemoryOf(*output)), BytesOf(memory));
}

TEST_F(GpuFrames, TextureOfTheHostStaysTheHosts) {
  const auto frame = TextureOf(input_);
  TestContext context;
  context.input = context.output = frame.get();
  {
    const Instance effect = host_.Make(CopyPackage());
    EXPECT_EQ(ProcessFrame(*effect, context), kOk);
    effect->ReleaseResources();
  }
  EXPECT_TRUE(SamePictures(*MemoryOf(*frame), input_, 0));
}

}  // namespace
}  // namespace krv::test
