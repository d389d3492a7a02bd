#include "validate/hostile_host.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace krv::tool {

bool HostPlan::HasUsableDevice() const {
  if (!has_provider || missing_suites.contains(kGpuDeviceSuiteName) || refuses_device_info) {
    return false;
  }
  const auto end =
      device_apis.end() - std::min<ptrdiff_t>(vanishing_devices, std::ssize(device_apis));
  return std::find(device_apis.begin(), end, kDeviceOpenGl) != end;
}

class HostileHost::Devices final : public GpuDeviceSuite {
 public:
  Devices(const HostPlan& plan, GpuDeviceSuite& textures) : plan_(plan), textures_(textures) {}

  uint32_t GetDeviceCount() override {
    const auto all = static_cast<uint32_t>(plan_.device_apis.size());
    const bool first = !std::exchange(counted_, true);
    return first ? all : all - std::min(all, plan_.vanishing_devices);
  }

  int32_t GetDeviceInfo(uint32_t index, DeviceInfo* info) override {
    if (plan_.refuses_device_info || info == nullptr || index >= plan_.device_apis.size()) {
      return kFailed;
    }
    if (index >= plan_.device_apis.size() -
                     std::min<size_t>(plan_.vanishing_devices, plan_.device_apis.size())) {
      return kFailed;
    }
    *info = {};
    info->api = plan_.device_apis[index];
    return kOk;
  }

  int32_t GetFrameTexture(uint32_t /*one context has all textures*/, HostFrame* frame,
                          uint32_t* texture) override {
    return textures_.GetFrameTexture(0, frame, texture);
  }

 private:
  const HostPlan& plan_;
  GpuDeviceSuite& textures_;
  bool counted_ = false;
};

class HostileHost::Provider final : public SuiteProvider {
 public:
  Provider(const HostPlan& plan, SuiteProvider& suites, GpuDeviceSuite& devices)
      : plan_(plan), suites_(suites), devices_(devices) {}

  int32_t AcquireSuite(const char* name, uint32_t version, void** suite) override {
    if (plan_.missing_suites.contains(name)) return kNothingToDo;
    if (std::string_view(name) != kGpuDeviceSuiteName || version != kSuiteVersion) {
      return suites_.AcquireSuite(name, version, suite);
    }
    *suite = &devices_;
    return kOk;
  }

 private:
  const HostPlan& plan_;
  SuiteProvider& suites_;
  GpuDeviceSuite& devices_;
};

namespace {

GpuDeviceSuite& TexturesOf(host::HostServices& services) {
  void* suite = nullptr;
  services.context()->suites->AcquireSuite(kGpuDeviceSuiteName, kSuiteVersion, &suite);
  return *static_cast<GpuDeviceSuite*>(suite);
}

}  // namespace

HostileHost::HostileHost(HostPlan plan, host::HostServices& services)
    : plan_(std::move(plan)),
      devices_(std::make_unique<Devices>(plan_, TexturesOf(services))),
      provider_(std::make_unique<Provider>(plan_, *services.context()->suites, *devices_)),
      context_{nullptr, plan_.has_provider ? provider_.get() : nullptr} {}

HostileHost::~HostileHost() = default;

}  // namespace krv::tool
