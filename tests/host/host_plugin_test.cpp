// The host with the built plug-in.
#include <gmock/gmock.h>

#include "effect_session.h"
#include "host_test_files.h"
#include "package_copy.h"
#include "plugin_host.h"
#include "steady/counted_heap.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

// Half-transparent red in the top half of the picture, half-transparent green below.
constexpr char kTopRed[] = R"(#version 120
uniform vec2 iResolution;
void main() {
  bool top = gl_FragCoord.y < iResolution.y * 0.5;
  gl_FragColor = top ? vec4(1.0, 0.0, 0.0, 0.5) : vec4(0.0, 1.0, 0.0, 0.5);
}
)";

constexpr char kShowsParameter[] = R"(#version 120
uniform float level;
void main() { gl_FragColor = vec4(level, 0.0, 0.0, 0.99); }
)";

constexpr char kLevelParameter[] =
    R"("without_blend": true, "params": [{"name": "level", "type": 5, "min_value": 0,
       "max_value": 1, "default_value": 0.2}])";

struct Pixel {
  int blue, green, red, alpha;
};

class HostPlugin : public FilesTest {
 protected:
  static std::shared_ptr<PluginHost> Start(DeviceUse device = DeviceUse::kMemory) {
    std::string error;
    auto host = PluginHost::Create(
        {.plugin = KRV_PLUGIN_FILE, .device = device, .renderer = GlContext::Renderer::kSoftware},
        &error);
    EXPECT_NE(host, nullptr) << error;
    return host;
  }
};

class HostSession : public HostPlugin, public ::testing::WithParamInterface<DeviceUse> {
 protected:
  static constexpr int32_t kWidth = 8;
  static constexpr int32_t kHeight = 6;
  static constexpr int32_t kStride = 40;  // 8 bytes of padding
  static constexpr uint8_t kPadding = 0xEE;

  SessionOptions Options() const {
    return {.plugin = KRV_PLUGIN_FILE,
            .packages = {folder_->path()},
            .unique_name = name_,
            .device = GetParam(),
            .renderer = GlContext::Renderer::kSoftware};
  }

  std::unique_ptr<EffectSession> Open(const SessionOptions& options) {
    std::string error;
    auto session = EffectSession::Create(options, &error);
    EXPECT_NE(session, nullptr) << error;
    return session;
  }

  // A blue picture, rendered into output_.
  bool Render(EffectSession& session, std::string* error) {
    input_.assign(size_t{kStride} * kHeight, kPadding);
    for (int32_t y = 0; y < kHeight; ++y) {
      for (int32_t x = 0; x < kWidth; ++x) {
        uint8_t* pixel = &input_[static_cast<size_t>(y * kStride + x * 4)];
        pixel[0] = 255;
        pixel[1] = pixel[2] = 0;
        pixel[3] = 255;
      }
    }
    output_.assign(size_t{kStride} * kHeight, kPadding);
    FrameRequest request;
    request.width = kWidth;
    request.height = kHeight;
    request.input = input_.data();
    request.input_stride = kStride;
    return session.RenderFrame(request, output_.data(), kStride, error);
  }

  void ExpectPixel(int32_t x, int32_t y, Pixel wanted) const {
    const uint8_t* pixel = &output_[static_cast<size_t>(y * kStride + x * 4)];
    EXPECT_NEAR(pixel[0], wanted.blue, 1) << "blue at " << x << ", " << y;
    EXPECT_NEAR(pixel[1], wanted.green, 1) << "green at " << x << ", " << y;
    EXPECT_NEAR(pixel[2], wanted.red, 1) << "red at " << x << ", " << y;
    EXPECT_NEAR(pixel[3], wanted.alpha, 1) << "alpha at " << x << ", " << y;
  }

  std::vector<uint8_t> input_;
  std::vector<uint8_t> output_;
};

TEST_F(HostPlugin, MissingFileIsAnErrorThatNamesIt) {
  std::string error;
  EXPECT_EQ(PluginHost::Create({.plugin = Path("none.krv")}, &error), nullptr);
  EXPECT_THAT(error, HasSubstr(Utf8(Path("none.krv")) + ": there is no such file"));
}

TEST_F(HostPlugin, FileThatIsNoLibraryIsAnErrorThatNamesIt) {
  WriteFile(Path("text.krv"), "not a library");
  std::string error;
  EXPECT_EQ(PluginHost::Create({.plugin = Path("text.krv")}, &error), nullptr);
  EXPECT_THAT(error, HasSubstr(Utf8(Path("text.krv")) + ": cannot be loaded"));
}

TEST_F(HostPlugin, LibraryWithoutTheFunctionsIsAnErrorThatNamesTheFirst) {
  std::string error;
  EXPECT_EQ(PluginHost::Create({.plugin = KRV_OTHER_LIBRARY}, &error), nullptr);
  EXPECT_THAT(error, HasSubstr("it has no function StartupKRV"));
}

TEST_F(HostPlugin, ListsEffectsAsTheyAreAnnounced) {
  WritePackage("p", name_, kShowsParameter, R"("params": [
    {"name": "a", "type": 3, "min_value": -1, "max_value": 9, "default_value": 4},
    {"name": "b", "type": 5, "min_value": 0.5, "max_value": 2, "default_value": 1.25},
    {"name": "c", "ui_type": "Color", "min_value": 0, "max_value": 16777215,
     "default_value": 255},
    {"name": "d", "type": 7, "default_value": true},
    {"name": "e", "type": 8, "ui_type": "NoShow", "default_value": "text"},
    {"name": "unseen", "type": 6, "default_value": 1}])");
  const auto host = Start();
  std::string error;
  ASSERT_TRUE(host->RegisterPackages(Path("p"), &error)) << error;
  const EffectListing effect = host->ListEffects().back();
  EXPECT_EQ(effect.unique_name, name_);
  EXPECT_EQ(effect.display_name, "Test");
  EXPECT_EQ(effect.flags, kEffectFlagsInMemory);
  ASSERT_EQ(effect.parameters.size(), 5u);
  const ParameterListing* a = effect.Find("a");
  EXPECT_EQ(a->kind, kKindInt);
  EXPECT_EQ(a->minimum, -1);
  EXPECT_EQ(a->maximum, 9);
  EXPECT_EQ(a->default_number, 4);
  EXPECT_FALSE(a->hidden);
  const ParameterListing* b = effect.Find("b");
  EXPECT_EQ(b->kind, kKindFloat);
  EXPECT_EQ(b->minimum, 0.5);
  EXPECT_EQ(b->maximum, 2);
  EXPECT_EQ(b->default_number, 1.25);
  const ParameterListing* c = effect.Find("c");
  EXPECT_EQ(c->kind, kKindColor);
  EXPECT_EQ(c->minimum, 0);
  EXPECT_EQ(c->maximum, 0xFFFFFF);
  EXPECT_EQ(c->default_number, 255);
  EXPECT_EQ(effect.Find("d")->default_number, 1);
  EXPECT_EQ(effect.Find("e")->default_text, "text");
  EXPECT_TRUE(effect.Find("e")->hidden);
}

TEST_F(HostPlugin, HostWithADeviceIsAnnouncedTheGpuFlags) {
  WritePackage("p", name_, kTopRed);
  const auto host = Start(DeviceUse::kGpu);
  std::string error;
  ASSERT_TRUE(host->RegisterPackages(Path("p"), &error)) << error;
  EXPECT_EQ(host->ListEffects().back().flags, kEffectFlagsOnGpu);
}

TEST_F(HostPlugin, FolderWithoutPackagesIsAnError) {
  const auto host = Start();
  std::string error;
  EXPECT_FALSE(host->RegisterPackages(folder_->path(), &error));
  EXPECT_THAT(error, HasSubstr("there is no effect package"));
}

TEST_F(HostPlugin, BrokenPackageIsNamedAndTheOthersAreRegistered) {
  WritePackage("a", name_ + ".a", kTopRed);
  WriteFile(Path("b/description.json"), "{ broken");
  WritePackage("c", name_ + ".c", kTopRed);
  const auto host = Start();
  std::string error;
  EXPECT_FALSE(host->RegisterPackages(folder_->path(), &error));
  EXPECT_THAT(error, HasSubstr(Utf8(Path("b"))));
  EXPECT_THAT(error, HasSubstr("line 1"));
  std::vector<std::string> names;
  for (const EffectListing& effect : host->ListEffects()) {
    if (effect.unique_name.starts_with(name_)) names.push_back(effect.unique_name);
  }
  EXPECT_THAT(names, ::testing::UnorderedElementsAre(name_ + ".a", name_ + ".c"));
}

TEST_P(HostSession, EffectIsLaidOverTheInputTopRowFirst) {
  WritePackage("p", name_, kTopRed);
  const auto session = Open(Options());
  ASSERT_NE(session, nullptr);
  std::string error;
  ASSERT_TRUE(Render(*session, &error)) << error;
  for (int32_t x = 0; x < kWidth; ++x) {
    ExpectPixel(x, 0, {128, 0, 128, 191});
    ExpectPixel(x, kHeight - 1, {128, 128, 0, 191});
  }
}

TEST_P(HostSession, WithoutBlendTheEffectComesAloneWithStraightAlpha) {
  WritePackage("p", name_, kTopRed);
  SessionOptions options = Options();
  options.without_blend = true;
  const auto session = Open(options);
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(session->effect().unique_name, name_);
  std::string error;
  ASSERT_TRUE(Render(*session, &error)) << error;
  ExpectPixel(0, 0, {0, 0, 255, 128});
  ExpectPixel(0, kHeight - 1, {0, 255, 0, 128});
}

TEST_P(HostSession, NoInputCountsAsATransparentPicture) {
  WritePackage("p", name_, kTopRed);
  const auto session = Open(Options());
  ASSERT_NE(session, nullptr);
  std::vector<uint8_t> output(size_t{kWidth} * kHeight * 4);
  FrameRequest request;
  request.width = kWidth;
  request.height = kHeight;
  std::string error;
  ASSERT_TRUE(session->RenderFrame(request, output.data(), kWidth * 4, &error)) << error;
  // The default blend mixes all four channels by the effect's alpha.
  EXPECT_NEAR(output[2], 128, 1);
  EXPECT_NEAR(output[3], 64, 1);
}

TEST_P(HostSession, FramesWithoutInputAskTheHeapForNoMoreThanOthers) {
  WritePackage("p", name_, kTopRed);
  const auto session = Open(Options());
  ASSERT_NE(session, nullptr);
  const std::vector<uint8_t> input(size_t{kWidth} * kHeight * 4);
  std::vector<uint8_t> output(input.size());
  FrameRequest request;
  request.width = kWidth;
  request.height = kHeight;
  request.input_stride = kWidth * 4;
  const auto allocations = [&](const void* pixels) {
    request.input = pixels;
    std::string error;
    const test::CountedHeap heap;
    EXPECT_TRUE(session->RenderFrame(request, output.data(), kWidth * 4, &error)) << error;
    return heap.allocations();
  };
  allocations(nullptr);
  const size_t without_input = allocations(nullptr);
  EXPECT_EQ(without_input, allocations(input.data()));
  EXPECT_EQ(without_input, allocations(nullptr)) << "after one with input";
}

TEST_P(HostSession, ParametersReachTheShader) {
  WritePackage("p", name_, kShowsParameter, kLevelParameter);
  const auto session = Open(Options());
  ASSERT_NE(session, nullptr);
  std::string error;
  ASSERT_TRUE(Render(*session, &error)) << error;
  ExpectPixel(3, 3, {0, 0, 51, 252});
  ASSERT_TRUE(session->parameters().Assign(session->effect(), "level=0.8", &error)) << error;
  ASSERT_TRUE(Render(*session, &error)) << error;
  ExpectPixel(3, 3, {0, 0, 204, 252});
}

TEST_P(HostSession, ParametersMayChangeWithTheFrame) {
  struct Ramp final : ParameterSource {
    std::optional<HostValue> ValueAt(std::string_view name, int64_t position) const override {
      if (name != "level") return std::nullopt;
      return static_cast<float>(position) / 10;
    }
  };
  WritePackage("p", name_, kShowsParameter, kLevelParameter);
  const auto session = Open(Options());
  ASSERT_NE(session, nullptr);
  const Ramp ramp;
  session->SetParameterSource(&ramp);
  std::vector<uint8_t> output(size_t{kWidth} * kHeight * 4);
  FrameRequest request;
  request.width = kWidth;
  request.height = kHeight;
  std::string error;
  for (const int64_t index : {4, 1, 10}) {
    request.index = index;
    ASSERT_TRUE(session->RenderFrame(request, output.data(), kWidth * 4, &error)) << error;
    EXPECT_NEAR(output[2], static_cast<double>(index) * 25.5, 1) << "frame " << index;
  }
}

TEST_P(HostSession, FramesMayChangeTheirSizeAndType) {
  WritePackage("p", name_, kShowsParameter, kLevelParameter);
  const auto session = Open(Options());
  ASSERT_NE(session, nullptr);
  std::string error;
  for (const int32_t width : {4, 9, 4}) {
    std::vector<uint8_t> output(static_cast<size_t>(width) * 4 * 2);
    FrameRequest request;
    request.width = width;
    request.height = 2;
    ASSERT_TRUE(session->RenderFrame(request, output.data(), width * 4, &error)) << error;
    EXPECT_NEAR(output[output.size() - 2], 51, 1) << "width " << width;
  }
  std::vector<float> output(4 * 4 * 2);
  FrameRequest request;
  request.width = 4;
  request.height = 2;
  request.pixel_type = kPixelFloat;
  ASSERT_TRUE(session->RenderFrame(request, output.data(), 64, &error)) << error;
  EXPECT_NEAR(output[2], 0.2, 1.5 / 255);
}

TEST_P(HostSession, SeveralSessionsShareOneHost) {
  WritePackage("a", name_ + ".a", kTopRed);
  WritePackage("b", name_ + ".b", kShowsParameter, kLevelParameter);
  const auto host = Start(GetParam());
  std::string error;
  ASSERT_TRUE(host->RegisterPackages(folder_->path(), &error)) << error;
  const auto a = EffectSession::Create(host, name_ + ".a", &error);
  ASSERT_NE(a, nullptr) << error;
  auto b = EffectSession::Create(host, name_ + ".b", &error);
  ASSERT_NE(b, nullptr) << error;
  ASSERT_TRUE(Render(*b, &error)) << error;
  ExpectPixel(0, 0, {0, 0, 51, 252});
  b.reset();
  ASSERT_TRUE(Render(*a, &error)) << error;
  ExpectPixel(0, 0, {128, 0, 128, 191});
}

TEST_P(HostSession, EndedSessionLeavesNoFrameOfTheHost) {
  WritePackage("p", name_, kTopRed);
  const auto host = Start(GetParam());
  std::string error;
  ASSERT_TRUE(host->RegisterPackages(folder_->path(), &error)) << error;
  auto session = EffectSession::Create(host, name_, &error);
  ASSERT_NE(session, nullptr) << error;
  ASSERT_TRUE(Render(*session, &error)) << error;
  session.reset();
  EXPECT_EQ(host->services().LiveFrameCount(), 0u);
}

TEST_P(HostSession, UnknownEffectSuggestsTheNearest) {
  WritePackage("p", name_, kTopRed);
  SessionOptions options = Options();
  options.unique_name.back() = options.unique_name.back() == 'x' ? 'y' : 'x';
  std::string error;
  EXPECT_EQ(EffectSession::Create(options, &error), nullptr);
  EXPECT_THAT(error, HasSubstr("there is no effect \"" + options.unique_name + "\""));
  EXPECT_THAT(error, HasSubstr("did you mean \"" + name_ + "\"?"));
}

TEST_P(HostSession, EffectHiddenByABrokenPackageNamesThatPackage) {
  WriteFile(Path("p/description.json"), "{ broken");
  std::string error;
  EXPECT_EQ(EffectSession::Create(Options(), &error), nullptr);
  EXPECT_THAT(error, HasSubstr(Utf8(folder_->path())));
}

TEST_P(HostSession, MissingShaderIsAnErrorWithThePluginsReason) {
  WritePackage("p", name_, kTopRed);
  std::filesystem::remove(Path("p/a.frag"));
  std::string error;
  EXPECT_EQ(EffectSession::Create(Options(), &error), nullptr);
  EXPECT_THAT(error, HasSubstr("Decode file error"));
  EXPECT_THAT(error, HasSubstr("a.frag"));
  EXPECT_THAT(error, Not(HasSubstr("\n")));
}

TEST_P(HostSession, FrameThatFailsKeepsTheOutputAndSaysThePluginsReason) {
  WritePackage("p", name_, kTopRed, R"("input_list": ["human_segment", "mask"], "params": [])");
  const auto session = Open(Options());
  ASSERT_NE(session, nullptr);
  EXPECT_TRUE(session->WantsPersonMask());
  std::string error;
  EXPECT_FALSE(Render(*session, &error));
  EXPECT_THAT(error, HasSubstr("cannot render frame 0"));
  EXPECT_THAT(error, HasSubstr("Input size error"));
  EXPECT_EQ(output_, std::vector<uint8_t>(output_.size(), kPadding));
}

TEST_P(HostSession, RequestsThatMakeNoSenseAreRefused) {
  WritePackage("p", name_, kTopRed);
  const auto session = Open(Options());
  ASSERT_NE(session, nullptr);
  std::vector<uint8_t> output(1024);
  std::string error;
  FrameRequest request;
  request.height = 2;
  EXPECT_FALSE(session->RenderFrame(request, output.data(), 16, &error));
  EXPECT_THAT(error, HasSubstr("0 x 2"));
  request.width = 5;
  EXPECT_FALSE(session->RenderFrame(request, output.data(), 16, &error));
  EXPECT_THAT(error, HasSubstr("stride"));
}

INSTANTIATE_TEST_SUITE_P(Devices, HostSession,
                         ::testing::Values(DeviceUse::kMemory, DeviceUse::kGpu),
                         [](const auto& parameter) {
                           return parameter.param == DeviceUse::kMemory ? "Memory" : "Gpu";
                         });

}  // namespace
}  // namespace krv::host
