// The functions that the library exports.
#include <cstdint>
#include <memory>

#include "boundary/effect_announcement.h"
#include "boundary/effect_factory.h"
#include "boundary/guard.h"
#include "boundary/host_log.h"
#include "boundary/package_discovery.h"
#include "boundary/plugin_registry.h"
#include "krv/plugin.h"

namespace krv {
namespace {

// Null when the host has no such suite.
template <class Suite>
Suite* AcquireSuite(SuiteProvider* provider, const char* name) {
  void* suite = nullptr;
  if (provider != nullptr) provider->AcquireSuite(name, kSuiteVersion, &suite);
  return static_cast<Suite*>(suite);
}

void AcquireSuites(SuiteProvider* provider, PluginRegistry& registry) {
  registry.memory_suite = AcquireSuite<MemorySuite>(provider, kMemorySuiteName);
  registry.image_buffer_suite = AcquireSuite<ImageBufferSuite>(provider, kImageBufferSuiteName);
  registry.host_util_suite = AcquireSuite<HostUtilSuite>(provider, kHostUtilSuiteName);
  registry.gpu_device_suite = AcquireSuite<GpuDeviceSuite>(provider, kGpuDeviceSuiteName);
}

// The first device that speaks OpenGL; -1 when there is none.
int32_t ChooseGpuDevice(GpuDeviceSuite* suite) {
  if (suite == nullptr) return -1;
  for (uint32_t index = 0; index < suite->GetDeviceCount(); ++index) {
    DeviceInfo info{};
    suite->GetDeviceInfo(index, &info);
    if (info.api == kDeviceOpenGl) return static_cast<int32_t>(index);
  }
  return -1;
}

constexpr PluginInfo kPluginInfo = {
    .interface_version = 1,
    .plugin_version = 1,
    .name = kPluginName,
    .vendor = "org.krv.audiovisual",
    .description = "audio visualization effect",
    .reserved_text = "",
    .reserved = 0,
};

int32_t Startup(HostContext* host, PluginInfo* info) {
  if (host != nullptr) {
    PluginRegistry& registry = PluginRegistry::Instance();
    AcquireSuites(host->suites, registry);
    registry.gpu_device_index = ChooseGpuDevice(registry.gpu_device_suite);
  }
  if (info != nullptr) *info = kPluginInfo;
  return kOk;
}

int32_t RegisterFromPath(const char* path, EffectRegistrar* registrar) {
  if (path == nullptr || registrar == nullptr) return kNothingToDo;
  const auto description = RegisterPackagesUnder(path);
  if (description == nullptr) return kNothingToDo;
  LogToHost(kLogInformation, "Register Effect [%s] from path : %s\n",
            description->UniqueName().c_str(), path);
  return AnnounceEffect(description, *registrar);
}

int32_t Create(const char* unique_name, int32_t device_kind, KRVEffect** effect) {
  if (unique_name == nullptr || effect == nullptr) return kNothingToDo;
  const PluginRegistry& registry = PluginRegistry::Instance();
  const auto description = registry.FindEffect(unique_name);
  const int32_t host_kind = registry.HasGpuDevice() ? kDeviceKindGpu : kDeviceKindMemory;
  if (description == nullptr || device_kind != host_kind) return kNothingToDo;
  *effect = nullptr;  // also the outcome of a constructor that throws
  *effect = CreateEffectFromDescription(description);
  return *effect != nullptr ? kOk : kFailed;
}

}  // namespace
}  // namespace krv

int32_t StartupKRV(krv::HostContext* host, krv::PluginInfo* info) {
  return krv::GuardHostCall([&] { return krv::Startup(host, info); });
}

int32_t ShutdownKRV() { return krv::kOk; }

int32_t RegisterKRVEffect(uint32_t index, krv::EffectRegistrar* registrar) {
  return krv::GuardHostCall([&]() -> int32_t {
    if (registrar == nullptr) return krv::kNothingToDo;
    return krv::AnnounceEffect(krv::PluginRegistry::Instance().EffectAt(index), *registrar);
  });
}

int32_t RegisterKRVEffectFromConfPath(const char* path, krv::EffectRegistrar* registrar) {
  return krv::GuardHostCall([&] { return krv::RegisterFromPath(path, registrar); });
}

int32_t CreateKRVEffect(const char* unique_name, int32_t device_kind, krv::KRVEffect** effect) {
  return krv::GuardHostCall([&] { return krv::Create(unique_name, device_kind, effect); });
}

void ReleaseKRVEffect(krv::KRVEffect* effect) {
  krv::GuardHostCall([&]() -> int32_t {
    if (effect != nullptr) effect->Destroy(1);
    return krv::kOk;
  });
}
