// The smallest host: lays one frame of an effect over a picture that it makes, with a sound that it
// makes, and writes the result as a picture file. docs/host-makers.md walks through it.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <type_traits>
#include <vector>

#include "krv/plugin.h"
#include "listing.h"
#include "platform/platform.h"
#include "services.h"

namespace example {
namespace {

constexpr int32_t kSampleRate = 48000;
constexpr int32_t kFrameRate = 25;
constexpr int32_t kWidth = 640;
constexpr int32_t kHeight = 360;

// The sound of one frame: exactly the samples of its time, of a mono sawtooth at 90 Hz.
class Sound final : public krv::AudioBlock {
 public:
  explicit Sound(int64_t frame) : start_(frame * kSampleRate / kFrameRate) {
    samples_.resize((frame + 1) * kSampleRate / kFrameRate - start_);
    for (size_t i = 0; i < samples_.size(); ++i) {
      const double turns = (start_ + int64_t(i)) * 90.0 / kSampleRate;
      samples_[i] = static_cast<int16_t>(20000 * (2 * (turns - std::floor(turns)) - 1));
    }
  }
  uint32_t GetChannelCount() override { return 1; }
  int32_t GetSampleFrames() override { return static_cast<int32_t>(samples_.size()); }
  int32_t GetSampleRate() override { return kSampleRate; }
  int64_t GetStartSample() override { return start_; }
  const int16_t* GetSamples() override { return samples_.data(); }

 private:
  int64_t start_;
  std::vector<int16_t> samples_;
};

// What the plug-in may ask about a frame.
class Context final : public krv::EffectContext {
 public:
  int64_t index = 0;
  krv::HostFrame* input = nullptr;
  krv::HostFrame* output = nullptr;
  krv::AudioBlock* sound = nullptr;

  int64_t GetFrameIndex() override { return index; }
  void GetFrameRate(int64_t* numerator, int64_t* denominator) override {
    *numerator = kFrameRate;
    *denominator = 1;
  }
  krv::HostFrame* GetOutputFrame() override { return output; }
  krv::HostFrame* GetInputFrame() override { return input; }
  krv::AudioBlock* GetAudioBlock() override { return sound; }
  // 24 bars, should the effect have bars; every other parameter keeps its default.
  int32_t GetParameterValue(const char* name, int64_t, krv::ParameterValue* value) override {
    if (std::strcmp(name, "spectrum_count") != 0) return krv::kNothingToDo;
    value->kind = krv::kKindInt;
    value->as_int = 24;
    return krv::kOk;
  }
  int32_t QueryProperty(const char*, int32_t, void*, uint32_t) override {
    return krv::kNothingToDo;
  }
  void RequestExtraInput(uint32_t) override {}
};

// A picture to draw over: dark blue, lighter towards the right and the bottom.
void DrawBackground(Frame* frame) {
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = 0; x < kWidth; ++x) {
      uint8_t* pixel = frame->Pixel(x, y);
      pixel[0] = static_cast<uint8_t>(60 + 60 * x / kWidth);
      pixel[1] = static_cast<uint8_t>(20 + 40 * y / kHeight);
      pixel[2] = 30;
      pixel[3] = 255;
    }
  }
}

bool WritePicture(Frame* frame, const std::string& path) {
  std::ofstream file(std::filesystem::path(std::u8string(path.begin(), path.end())),
                     std::ios::binary);
  file << "P6\n" << kWidth << " " << kHeight << "\n255\n";
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = 0; x < kWidth; ++x) {
      const uint8_t* pixel = frame->Pixel(x, y);
      for (const int channel : {2, 1, 0}) file.put(static_cast<char>(pixel[channel]));
    }
  }
  return file.good();
}

int Fail(const char* what) {
  std::fprintf(stderr, "krv_example_host: %s\n", what);
  return 1;
}

// The functions of the plug-in's file that this host calls.
struct Plugin {
  krv::StartupFunction* startup = nullptr;
  krv::ShutdownFunction* shutdown = nullptr;
  krv::RegisterEffectFromConfPathFunction* register_packages = nullptr;
  krv::CreateEffectFunction* create = nullptr;
  krv::ReleaseEffectFunction* release = nullptr;

  bool Load(const std::string& path) {
    void* library = LoadLibraryFile(path);
    const auto find = [library](const char* name, auto** function) {
      void* address = library == nullptr ? nullptr : FindFunction(library, name);
      *function = reinterpret_cast<std::remove_reference_t<decltype(*function)>>(address);
      return address != nullptr;
    };
    return find("StartupKRV", &startup) && find("ShutdownKRV", &shutdown) &&
           find("RegisterKRVEffectFromConfPath", &register_packages) &&
           find("CreateKRVEffect", &create) && find("ReleaseKRVEffect", &release);
  }
};

// The frame after a second. The OpenGL context is current.
bool RenderFrame(krv::KRVEffect* effect, Frame* output) {
  Frame input(kWidth, kHeight);
  DrawBackground(&input);
  Sound sound(kFrameRate);
  Context context;
  context.index = kFrameRate;
  context.input = &input;
  context.output = output;
  context.sound = &sound;
  effect->ClearInputs();
  return effect->ProcessFrame(&context) == krv::kOk;
}

int Run(const std::vector<std::string>& arguments) {
  if (arguments.size() != 3) return Fail("usage: krv_example_host PLUGIN PACKAGE OUT.ppm");
  Plugin plugin;
  if (!plugin.Load(arguments[0])) return Fail("the plug-in's file cannot be loaded");

  static Provider provider;  // lives as long as the plug-in
  krv::HostContext host{nullptr, &provider};
  krv::PluginInfo info{};
  plugin.startup(&host, &info);

  Listing listing;
  if (plugin.register_packages(arguments[1].c_str(), &listing) != krv::kOk) {
    return Fail("there is no package that can be read");
  }

  if (!MakeGlContextCurrent()) return Fail("there is no OpenGL");
  krv::KRVEffect* effect = nullptr;
  if (plugin.create(listing.unique_name.c_str(), krv::kDeviceKindMemory, &effect) != krv::kOk) {
    return Fail("the effect cannot be created");
  }
  Context context;
  Frame output(kWidth, kHeight);
  const bool rendered = effect->Initialize(&context) == krv::kOk && RenderFrame(effect, &output);
  effect->ReleaseResources();
  plugin.release(effect);
  plugin.shutdown();

  if (!rendered) return Fail("the frame cannot be rendered");
  if (!WritePicture(&output, arguments[2])) return Fail("the picture cannot be written");
  return 0;
}

}  // namespace
}  // namespace example

int main(int argc, char** argv) { return example::Run(example::Arguments(argc, argv)); }
