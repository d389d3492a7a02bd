// Long mixed use of every shipped package in one process: nothing grows, OpenGL sees no error.
//
// A cycle is 1,000 frames of changing effects, sizes, pixel types, sounds and parameters, with
// instances made and destroyed in between; every cycle is the same, so that what lives at the end
// of one must be what lived at the end of the one before. KRV_SOAK_CYCLES sets their number.
#include <glad/gl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "audio_block.h"
#include "effects/effect_host.h"
#include "effects/test_frames.h"
#include "effects/test_mask.h"
#include "graphics/gl_names.h"
#include "platform/process.h"
#include "support/file_system.h"

namespace krv::test {
namespace {

namespace fs = std::filesystem;
using host::platform::OpenHandles;
using host::platform::ResidentBytes;
using Json = nlohmann::json;

constexpr int kFramesPerCycle = 1000;
constexpr int kWarmUpCycles = 8;         // driver and heap grow in these: 8 under Wine, 5 on Linux
constexpr uint32_t kNamesPerFrame = 40;  // more than a frame makes; drivers count up

std::string ContentsOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The package in a folder, to be registered under a name of the test's own.
Package ReadPackage(const fs::path& folder) {
  Package package;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    if (entry.path().filename() == "description.json") {
      package.description = Json::parse(ContentsOf(entry.path()));
    } else {
      package.files[Utf8Text(fs::relative(entry.path(), folder))] = ContentsOf(entry.path());
    }
  }
  // The name chooses the class.
  package.description["unique_name"] =
      package.description["unique_name"].get<std::string>() + "_in_soak";
  return package;
}

class SoakTest : public testing::Test {
 protected:
  struct Effect {
    std::string name;
    Json params;
    Instance instance;
  };

  SoakTest() {
    std::vector<fs::path> folders;
    for (const auto& entry : fs::directory_iterator(KRV_PACKAGES)) {
      if (entry.is_directory()) folders.push_back(entry.path());
    }
    std::sort(folders.begin(), folders.end());
    for (const fs::path& folder : folders) {
      Package package = ReadPackage(folder);
      Json params = package.description["params"];
      effects_.push_back({host_.Register(std::move(package)), std::move(params), nullptr});
    }
    for (Effect& effect : effects_) Renew(effect);
    std::generate(samples_.begin(), samples_.end(),
                  [this] { return static_cast<int16_t>(random_()); });
  }

  int Pick(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

  void Renew(Effect& effect) {
    if (effect.instance != nullptr && Pick(0, 1) == 0) effect.instance->ReleaseResources();
    effect.instance = host_.Create(effect.name);
    ASSERT_EQ(effect.instance->Initialize(&context_), kOk) << effect.name;
  }

  // Between the limits, mostly; sometimes far outside of them.
  ParameterValue RandomValue(const Json& parameter) {
    const int kind = parameter["type"];
    if (kind == kKindText) {
      static constexpr const char* kTexts[] = {"2,16711680,0;255,100", "1,255,50",
                                               "3,255,0;65280,50;16711680,100", "nonsense"};
      return Text(kTexts[Pick(0, 3)]);
    }
    if (kind == kKindBool) return Bool(static_cast<uint8_t>(Pick(0, 1)));
    if (Pick(0, 19) == 0) return kind == kKindFloat ? Float(1e30f) : Int(Pick(-100000, 100000));
    const double least = parameter.value("min_value", 0.0);
    const double most = parameter.value("max_value", 1.0);
    const double value = least + (most - least) * Pick(0, 1000) / 1000;
    return kind == kKindFloat ? Float(static_cast<float>(value)) : Int(static_cast<int>(value));
  }

  void RenderFrame(Effect& effect) {
    const int width = Pick(1, 160);
    const int height = Pick(1, 120);
    const int pixel_type = Pick(0, 2);
    host::MemoryFrame input(width, height, pixel_type);
    host::MemoryFrame output(width, height, pixel_type);
    FillBytes(input, 0x3f);  // visible in every pixel type: some effects follow the frame itself
    TestMask mask(std::max(width, 8), std::max(height, 8), {2, 2, 4, 4});
    host::BorrowedAudioBlock audio({.samples = samples_.data(),
                                    .sample_frames = Pick(0, 1) == 0 ? 1601 : Pick(0, 4000),
                                    .channels = static_cast<uint8_t>(Pick(0, 2))});
    context_.index = Pick(-100, 100000);
    context_.input = &input;
    context_.output = &output;
    context_.audio = &audio;
    context_.person_mask = &mask;
    context_.asked.clear();
    context_.extra_inputs.clear();
    context_.answers.clear();
    for (const Json& parameter : effect.params) {
      if (Pick(0, 3) == 0) context_.answers[parameter["name"]] = RandomValue(parameter);
    }
    const int32_t code = ProcessFrame(*effect.instance, context_);
    EXPECT_EQ(code, kOk) << effect.name << ", " << width << " x " << height;
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR}) << effect.name;
  }

  void RunCycle() {
    random_.seed(1);
    for (int frame = 0; frame < kFramesPerCycle; ++frame) {
      Effect& effect = effects_[static_cast<size_t>(frame) % effects_.size()];
      if (Pick(0, 99) == 0) Renew(effect);
      RenderFrame(effect);
      host_.services().DeleteReleasedFrames();
    }
    host_.TakeLog();
  }

  std::mt19937 random_;
  EffectHost host_;
  TestContext context_;
  std::vector<Effect> effects_;
  std::vector<int16_t> samples_ = std::vector<int16_t>(8000);
};

TEST_F(SoakTest, CyclesLeaveMemoryHandlesAndObjectsAsTheyWere) {
  const char* wanted = std::getenv("KRV_SOAK_CYCLES");
  const int cycles =
      wanted == nullptr ? kWarmUpCycles + 2 : std::max(kWarmUpCycles + 1, std::atoi(wanted));
  for (int i = 0; i < kWarmUpCycles; ++i) RunCycle();
  const uint32_t names = kNamesPerFrame * kFramesPerCycle * static_cast<uint32_t>(cycles);
  const GlNames objects = GlNames::Alive(names);
  const int64_t bytes = ResidentBytes();
  const int64_t handles = OpenHandles();
  for (int i = kWarmUpCycles; i < cycles; ++i) RunCycle();
  EXPECT_EQ(GlNames::Alive(names), objects);
  EXPECT_EQ(OpenHandles(), handles);
  const int64_t growth = ResidentBytes() - bytes;
  std::printf("%d frames: %lld bytes of growth after the first %d, %lld handles\n",
              cycles * kFramesPerCycle, static_cast<long long>(growth),
              kWarmUpCycles * kFramesPerCycle, static_cast<long long>(handles));
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  // Sanitizers keep freed blocks and a history of their own.
  EXPECT_LT(growth, 4 << 20);
#endif
}

}  // namespace
}  // namespace krv::test
