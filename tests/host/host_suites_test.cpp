// The host's services, called as a plug-in calls them.
#include "suites.h"

#include <glad/gl.h>
#include <gtest/gtest.h>

#include <cstring>

#include "effect_context.h"
#include "frame.h"
#include "gl_context.h"

namespace krv::host {
namespace {

template <class Suite>
Suite* Acquire(HostServices& services, const char* name, uint32_t version = kSuiteVersion) {
  void* suite = nullptr;
  services.context()->suites->AcquireSuite(name, version, &suite);
  return static_cast<Suite*>(suite);
}

HostPaths Paths() { return {"/opt/host", "/opt/models", "/opt/plugins"}; }

TEST(HostSuites, UnknownNameOrVersionLeavesThePointerAlone) {
  HostServices services(DeviceUse::kMemory, Paths());
  EXPECT_EQ(Acquire<void>(services, "memory allocator suite"), nullptr);
  EXPECT_EQ(Acquire<void>(services, kMemorySuiteName, 2), nullptr);
}

TEST(HostSuites, MemoryIsAllocatedAndFreed) {
  HostServices services(DeviceUse::kMemory, Paths());
  auto* memory = Acquire<MemorySuite>(services, kMemorySuiteName);
  ASSERT_NE(memory, nullptr);
  void* block = memory->Allocate(100);
  ASSERT_NE(block, nullptr);
  std::memset(block, 1, 100);
  memory->Free(block);
  memory->Free(nullptr);
}

TEST(HostSuites, LogLinesAreFormattedAndKept) {
  HostServices services(DeviceUse::kMemory, Paths());
  auto* util = Acquire<HostUtilSuite>(services, kHostUtilSuiteName);
  std::vector<std::string> seen;
  services.SetLogSink([&seen](const LogLine& line) { seen.push_back(line.text); });
  util->Log(kLogError, "<%s> file %s, line %d\n", "tag", "a.frag", 12);
  const std::vector<LogLine> lines = services.TakeLog();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].level, kLogError);
  EXPECT_EQ(lines[0].text, "<tag> file a.frag, line 12");
  EXPECT_EQ(seen, std::vector<std::string>{lines[0].text});
  EXPECT_TRUE(services.TakeLog().empty());
}

TEST(HostSuites, LogLinesOfAnyLengthAreKeptWhole) {
  HostServices services(DeviceUse::kMemory, Paths());
  const std::string text(10000, 'x');
  Acquire<HostUtilSuite>(services, kHostUtilSuiteName)->Log(kLogInformation, "%s", text.c_str());
  EXPECT_EQ(services.TakeLog().at(0).text, text);
}

TEST(HostSuites, EveryKindOfPathIsGiven) {
  HostServices services(DeviceUse::kMemory, Paths());
  auto* util = Acquire<HostUtilSuite>(services, kHostUtilSuiteName);
  char buffer[512];
  util->GetHostPath(kHostPathInstallation, buffer, sizeof(buffer));
  EXPECT_STREQ(buffer, "/opt/host");
  util->GetHostPath(kHostPathAiModels, buffer, sizeof(buffer));
  EXPECT_STREQ(buffer, "/opt/models");
  util->GetHostPath(kHostPathPlugins, buffer, sizeof(buffer));
  EXPECT_STREQ(buffer, "/opt/plugins");
}

TEST(HostSuites, UnknownKindAndShortBufferLeaveTheBufferAlone) {
  HostServices services(DeviceUse::kMemory, Paths());
  auto* util = Acquire<HostUtilSuite>(services, kHostUtilSuiteName);
  char buffer[16] = "untouched";
  util->GetHostPath(3, buffer, sizeof(buffer));
  EXPECT_STREQ(buffer, "untouched");
  util->GetHostPath(kHostPathInstallation, buffer, 9);
  EXPECT_STREQ(buffer, "untouched");
  util->GetHostPath(kHostPathInstallation, buffer, 10);
  EXPECT_STREQ(buffer, "/opt/host");
}

TEST(HostSuites, OnlyAHostThatUsesTheGpuHasADevice) {
  HostServices memory(DeviceUse::kMemory, Paths());
  EXPECT_EQ(Acquire<GpuDeviceSuite>(memory, kGpuDeviceSuiteName)->GetDeviceCount(), 0u);
  HostServices gpu(DeviceUse::kGpu, Paths());
  auto* devices = Acquire<GpuDeviceSuite>(gpu, kGpuDeviceSuiteName);
  ASSERT_EQ(devices->GetDeviceCount(), 1u);
  DeviceInfo info{};
  ASSERT_EQ(devices->GetDeviceInfo(0, &info), kOk);
  EXPECT_EQ(info.api, uint32_t{kDeviceOpenGl});
  EXPECT_NE(devices->GetDeviceInfo(1, &info), kOk);
}

TEST(HostSuites, FramesAreCountedUntilTheyAreReleased) {
  HostServices services(DeviceUse::kMemory, Paths());
  auto* images = Acquire<ImageBufferSuite>(services, kImageBufferSuiteName);
  HostFrame* frame = images->CreateFrame(4, 3, kPixel16, kFrameInMemory);
  ASSERT_NE(frame, nullptr);
  FrameDescription description;
  frame->Describe(&description);
  EXPECT_EQ(description.stride, 32);
  EXPECT_EQ(services.LiveFrameCount(), 1u);
  images->ReleaseFrame(frame);
  images->ReleaseFrame(frame);
  images->ReleaseFrame(nullptr);
  EXPECT_EQ(services.LiveFrameCount(), 0u);
}

TEST(HostSuites, FramesThatCannotBeAreNull) {
  HostServices services(DeviceUse::kMemory, Paths());
  auto* images = Acquire<ImageBufferSuite>(services, kImageBufferSuiteName);
  EXPECT_EQ(images->CreateFrame(0, 3, kPixel8, kFrameInMemory), nullptr);
  EXPECT_EQ(images->CreateFrame(4, 3, 9, kFrameInMemory), nullptr);
  EXPECT_EQ(images->CreateFrame(4, 3, kPixel8, 1), nullptr);
}

TEST(HostSuites, TextureOfAFrameIsFoundAndOutlivesItsRelease) {
  std::string error;
  const auto context = GlContext::Create(GlContext::Renderer::kSoftware, &error);
  ASSERT_NE(context, nullptr) << error;
  ASSERT_TRUE(context->MakeCurrent());
  HostServices services(DeviceUse::kGpu, Paths());
  auto* images = Acquire<ImageBufferSuite>(services, kImageBufferSuiteName);
  auto* devices = Acquire<GpuDeviceSuite>(services, kGpuDeviceSuiteName);
  HostFrame* frame = images->CreateFrame(4, 3, kPixel8, kFrameOnGpu);
  ASSERT_NE(frame, nullptr);
  uint32_t texture = 0;
  ASSERT_EQ(devices->GetFrameTexture(0, frame, &texture), kOk);
  EXPECT_TRUE(glIsTexture(texture));
  images->ReleaseFrame(frame);
  EXPECT_TRUE(glIsTexture(texture)) << "deleted on a thread that may have no context";
  services.DeleteReleasedFrames();
  EXPECT_FALSE(glIsTexture(texture));
}

TEST(HostSuites, FrameInMemoryHasNoTexture) {
  HostServices services(DeviceUse::kGpu, Paths());
  MemoryFrame frame(2, 2, kPixel8);
  uint32_t texture = 7;
  EXPECT_NE(
      Acquire<GpuDeviceSuite>(services, kGpuDeviceSuiteName)->GetFrameTexture(0, &frame, &texture),
      kOk);
  EXPECT_EQ(texture, 7u);
}

TEST(HostEffectContext, ValueThatIsNotSetKeepsTheDefault) {
  ParameterValues values;
  FrameContext context({.parameters = &values});
  ParameterValue value{};
  value.kind = kKindFloat;
  value.as_float = 2.5f;
  EXPECT_NE(context.GetParameterValue("gain", 0, &value), kOk);
  EXPECT_EQ(value.kind, kKindFloat);
  EXPECT_EQ(value.as_float, 2.5f);
}

TEST(HostEffectContext, ValuesArriveInTheFormOfTheirKind) {
  ParameterValues values;
  values.Set("count", int32_t{-3});
  values.Set("gain", 0.5f);
  values.Set("mirror", true);
  values.Set("text", std::string("abc"));
  FrameContext context({.parameters = &values});
  ParameterValue value{};
  ASSERT_EQ(context.GetParameterValue("count", 0, &value), kOk);
  EXPECT_EQ(value.kind, kKindInt);
  EXPECT_EQ(value.as_int, -3);
  ASSERT_EQ(context.GetParameterValue("gain", 0, &value), kOk);
  EXPECT_EQ(value.kind, kKindFloat);
  EXPECT_EQ(value.as_float, 0.5f);
  ASSERT_EQ(context.GetParameterValue("mirror", 0, &value), kOk);
  EXPECT_EQ(value.kind, kKindBool);
  EXPECT_EQ(value.as_bool, 1);
  ASSERT_EQ(context.GetParameterValue("text", 0, &value), kOk);
  EXPECT_EQ(value.kind, kKindText);
  EXPECT_STREQ(value.as_text, "abc");
}

TEST(HostEffectContext, OnlyThePersonMaskIsAProperty) {
  FrameContext context({});
  PersonMaskSource* mask = reinterpret_cast<PersonMaskSource*>(&context);
  EXPECT_NE(context.QueryProperty("Other", kPropertyPointer, &mask, sizeof(mask)), kOk);
  EXPECT_NE(context.QueryProperty(kPersonMaskProperty, 8, &mask, sizeof(mask)), kOk);
  EXPECT_NE(context.QueryProperty(kPersonMaskProperty, kPropertyPointer, &mask, 4), kOk);
  EXPECT_NE(mask, nullptr);
  EXPECT_EQ(context.QueryProperty(kPersonMaskProperty, kPropertyPointer, &mask, sizeof(mask)), kOk);
  EXPECT_EQ(mask, nullptr);
}

}  // namespace
}  // namespace krv::host
