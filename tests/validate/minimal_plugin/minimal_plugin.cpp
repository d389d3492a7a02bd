// The smallest plug-in: each folder with a "description.json" is one effect of the name in it.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "breakage.h"
#include "krv/plugin.h"
#include "minimal_effect.h"

namespace krv::test {
namespace {

std::vector<std::string> names;  // of the effects, in order of registration

std::string NameIn(const std::string& description) {
  const size_t key = description.find("\"unique_name\"");
  if (key == std::string::npos) return {};
  const size_t begin = description.find('"', description.find(':', key));
  if (begin == std::string::npos) return {};
  const size_t end = description.find('"', begin + 1);
  return end == std::string::npos ? "" : description.substr(begin + 1, end - begin - 1);
}

std::string ReadDescription(const std::string& folder) {
  const std::filesystem::path path(std::u8string(folder.begin(), folder.end()));
  if (!std::filesystem::is_regular_file(path / "description.json")) return {};
  std::ifstream file(path / "description.json", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

int32_t Announce(const std::string& name, EffectRegistrar& registrar) {
  registrar.SetEffectNames(name.c_str(), "Minimal");
  registrar.SetEffectFlags(gpu_devices == nullptr ? kEffectFlagsInMemory : kEffectFlagsOnGpu);
  registrar.SetEffectOption(0);
  registrar.AddFloatParam(-1, 0, "level", "level", 0, 1, 1, 0);
  return 0;
}

bool HasOpenGlDevice(GpuDeviceSuite& devices) {
  for (uint32_t index = 0; index < devices.GetDeviceCount(); ++index) {
    DeviceInfo info{};
    devices.GetDeviceInfo(index, &info);
    if (info.api == kDeviceOpenGl) return true;
  }
  return false;
}

}  // namespace
}  // namespace krv::test

using krv::test::Breakage;
using krv::test::gpu_devices;
using krv::test::kBreakage;
using krv::test::names;

int32_t StartupKRV(krv::HostContext* host, krv::PluginInfo* info) {
  if (host != nullptr) {
    void* suite = nullptr;
    if (host->suites != nullptr) {
      host->suites->AcquireSuite(krv::kGpuDeviceSuiteName, krv::kSuiteVersion, &suite);
    }
    gpu_devices = static_cast<krv::GpuDeviceSuite*>(suite);
    if (gpu_devices != nullptr && !krv::test::HasOpenGlDevice(*gpu_devices)) gpu_devices = nullptr;
  }
  if (info != nullptr) *info = {1, 1, "minimal", "org.example.minimal", "shows its input", "", 0};
  return 0;
}

int32_t ShutdownKRV() { return 0; }

int32_t RegisterKRVEffect(uint32_t index, krv::EffectRegistrar* registrar) {
  if (index >= names.size() || registrar == nullptr) return 2;
  return krv::test::Announce(names[index], *registrar);
}

int32_t RegisterKRVEffectFromConfPath(const char* path, krv::EffectRegistrar* registrar) {
  if (path == nullptr || registrar == nullptr) return 2;
  try {
    const std::string name = krv::test::NameIn(krv::test::ReadDescription(path));
    if (name.empty()) return 2;
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    return krv::test::Announce(name, *registrar);
  } catch (const std::exception&) {  // a path that is no text
    return 4;
  }
}

int32_t CreateKRVEffect(const char* unique_name, int32_t device_kind, krv::KRVEffect** effect) {
  if (kBreakage == Breakage::kRude && effect == nullptr) return 0;
  if (unique_name == nullptr || effect == nullptr) return 2;
  if (kBreakage == Breakage::kRude) *effect = nullptr;
  const int32_t kind = gpu_devices == nullptr ? krv::kDeviceKindMemory : krv::kDeviceKindGpu;
  const bool known = std::find(names.begin(), names.end(), unique_name) != names.end();
  if (!known || (device_kind != kind && kBreakage != Breakage::kRude)) return 2;
  *effect = new krv::test::MinimalEffect;
  return 0;
}

void ReleaseKRVEffect(krv::KRVEffect* effect) {
  if (effect != nullptr) effect->Destroy(1);
}
