// StartupKRV and ShutdownKRV: what they fill, what they survive, whose services they keep.
#include <array>
#include <cstring>
#include <string_view>

#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

constexpr uint8_t kGuard = 0xC3;

// A record to fill, and bytes behind it that are not the plug-in's.
struct GuardedInfo {
  PluginInfo info;
  std::array<uint8_t, 64> behind;
};

const char* const kSuiteNames[] = {kMemorySuiteName, kImageBufferSuiteName, kHostUtilSuiteName,
                                   kGpuDeviceSuiteName};
constexpr uint32_t kSuiteCombinations = 1U << std::size(kSuiteNames);

void StartInto(Bench& bench, HostContext* context, PluginInfo* info) {
  const int32_t code =
      bench.examiner().Call("StartupKRV", [&] { return bench.plugin().startup(context, info); });
  bench.examiner().ExpectCode("StartupKRV", code, {kOk});
}

void LookAtInfo(Examiner& examiner, const PluginInfo& info) {
  examiner.ExpectCount("as interface version", info.interface_version, 1);
  for (const char* text : {info.name, info.vendor, info.description, info.reserved_text}) {
    examiner.Expect(text != nullptr, "four texts in the plug-in's record", "a null");
  }
  examiner.Expect(info.name != nullptr && *info.name != '\0', "a name in the plug-in's record",
                  "an empty text");
  examiner.ExpectCount("in the reserved field", info.reserved, 0);
}

// A frame that may fail for want of services, but must not go wrong.
FrameCase PossibleFrame() {
  FrameCase frame;
  frame.codes = {kOk, kNothingToDo, kFailed};
  return frame;
}

std::string NameOf(const HostPlan& plan) {
  std::string text;
  for (const std::string& name : plan.missing_suites) text += " without \"" + name + "\"";
  return text.empty() ? " with all suites" : text;
}

void LiveUnder(Bench& bench, const HostPlan& plan) {
  bench.Start(plan);
  Trial trial(&bench, bench.first_effect().unique_name);
  ScriptedContext context;
  const int32_t code = trial.Watch("slot 1", [&] { return trial.effect().Initialize(&context); });
  bench.examiner().ExpectCode("slot 1", code, {kOk, kFailed});
  trial.RenderOnce(PossibleFrame());
  trial.Release();
}

void ExpectSamePictureAsBefore(Bench& bench, const std::optional<Rows>& before) {
  bench.examiner().Step("a frame with everything back in place");
  bench.Start();
  Trial trial(&bench, bench.first_effect().unique_name);
  if (!trial.Initialise()) return;
  bench.examiner().Expect(trial.Render({}) == before, "the picture of before", "another");
  trial.Release();
}

std::optional<Rows> FirstPicture(Bench& bench) {
  bench.examiner().Step("a frame with everything in place");
  Trial trial(&bench, bench.first_effect().unique_name);
  if (!trial.Initialise()) return std::nullopt;
  auto picture = trial.Render({});
  trial.Release();
  return picture;
}

}  // namespace

void CheckLoad(Bench& bench) { bench.Prepare(); }

void CheckStartupInfo(Bench& bench) {
  Examiner& examiner = bench.examiner();
  HostileHost host({}, bench.services());
  GuardedInfo first;
  std::memset(static_cast<void*>(&first), kGuard, sizeof first);
  examiner.Step("StartupKRV");
  StartInto(bench, host.context(), &first.info);
  LookAtInfo(examiner, first.info);
  for (const uint8_t byte : first.behind) {
    examiner.Expect(byte == kGuard, "48 bytes filled", "bytes written behind them");
  }
  examiner.Step("StartupKRV once more");
  PluginInfo second{};
  StartInto(bench, host.context(), &second);
  LookAtInfo(examiner, second);
  examiner.Expect(std::string_view(first.info.name) == second.name,
                  "the same name as the first time", "another");
}

void CheckStartupNullArguments(Bench& bench) {
  Examiner& examiner = bench.examiner();
  HostileHost host({}, bench.services());
  examiner.Step("StartupKRV without a host");
  PluginInfo info{};
  StartInto(bench, nullptr, &info);
  LookAtInfo(examiner, info);
  examiner.Step("StartupKRV without a record to fill");
  StartInto(bench, host.context(), nullptr);
  examiner.Step("StartupKRV without anything");
  StartInto(bench, nullptr, nullptr);
  examiner.Step("StartupKRV without a suite provider");
  HostileHost bare({.has_provider = false}, bench.services());
  StartInto(bench, bare.context(), &info);
}

void CheckShutdown(Bench& bench) {
  Examiner& examiner = bench.examiner();
  const auto shut_down = [&](const char* when) {
    examiner.Step(std::string("ShutdownKRV ") + when);
    const int32_t code = examiner.Call("ShutdownKRV", [&] { return bench.plugin().shutdown(); });
    examiner.ExpectCode("ShutdownKRV", code, {kOk});
  };
  shut_down("before StartupKRV");
  bench.Prepare();
  const auto before = FirstPicture(bench);
  shut_down("after the effects");
  shut_down("twice");
  examiner.Step("an effect created after ShutdownKRV");
  Trial trial(&bench, bench.first_effect().unique_name);
  if (!trial.Initialise()) return;
  examiner.Expect(trial.Render({}) == before, "the picture of before", "another");
  shut_down("with an instance alive");
  trial.Release();
}

void CheckStartupAgain(Bench& bench) {
  bench.Prepare();
  Trial trial(&bench, bench.first_effect().unique_name);
  bench.examiner().Step("a frame");
  if (!trial.Initialise()) return;
  const auto before = trial.Render({});
  bench.examiner().Step("a frame after a second StartupKRV with other suites");
  bench.Start();
  bench.examiner().Expect(trial.Render({}) == before, "the picture of before", "another");
  bench.examiner().Step("a frame of an instance from before the host's device came");
  bench.Start({.device_apis = {kDeviceOpenGl}});
  trial.RenderOnce(PossibleFrame());
  bench.examiner().Step("a frame after the host's device has gone");
  bench.Start();
  bench.examiner().Expect(trial.Render({}) == before, "the picture of before", "another");
  trial.Release();
}

void CheckMissingSuites(Bench& bench) {
  bench.Prepare();
  const auto before = FirstPicture(bench);
  for (const bool device : {false, true}) {
    for (uint32_t missing = 1; missing < kSuiteCombinations; ++missing) {
      HostPlan plan;
      if (device) plan.device_apis = {kDeviceOpenGl};
      for (size_t i = 0; i < std::size(kSuiteNames); ++i) {
        if ((missing >> i & 1U) != 0) plan.missing_suites.insert(kSuiteNames[i]);
      }
      bench.examiner().Step("a life" + NameOf(plan) + (device ? ", a GPU device" : ""));
      LiveUnder(bench, plan);
    }
  }
  bench.examiner().Step("a life without a suite provider");
  LiveUnder(bench, {.has_provider = false});
  ExpectSamePictureAsBefore(bench, before);
}

void CheckDevices(Bench& bench) {
  bench.Prepare();
  const auto before = FirstPicture(bench);
  std::vector<uint32_t> many(1000, kDeviceOtherApi);
  many.push_back(kDeviceOpenGl);
  const struct {
    const char* what;
    HostPlan plan;
  } cases[] = {
      {"no device", {}},
      {"a device without an API", {.device_apis = {kDeviceNone}}},
      {"a device of an unknown API", {.device_apis = {77}}},
      {"a device for OpenGL", {.device_apis = {kDeviceOpenGl}}},
      {"the second of two devices for OpenGL", {.device_apis = {kDeviceOtherApi, kDeviceOpenGl}}},
      {"the last of 1,001 devices for OpenGL", {.device_apis = many}},
      {"devices that go while they are counted",
       {.device_apis = {kDeviceOtherApi, kDeviceOpenGl}, .vanishing_devices = 2}},
      {"a device that says nothing about itself",
       {.device_apis = {kDeviceOpenGl}, .refuses_device_info = true}},
  };
  for (const auto& one : cases) {
    bench.examiner().Step(std::string("creation of instances with ") + one.what);
    bench.Start(one.plan);
    const std::string& name = bench.first_effect().unique_name;
    const int32_t other =
        bench.device_kind() == kDeviceKindGpu ? kDeviceKindMemory : kDeviceKindGpu;
    KRVEffect* effect = nullptr;
    const int32_t code = bench.examiner().Call("CreateKRVEffect", [&] {
      return bench.plugin().create_effect(name.c_str(), other, &effect);
    });
    bench.examiner().ExpectCode("CreateKRVEffect for the other kind of device", code,
                                {kNothingToDo});
    LiveUnder(bench, one.plan);
  }
  ExpectSamePictureAsBefore(bench, before);
}

}  // namespace krv::tool
