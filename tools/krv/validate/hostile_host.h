// What a plug-in is started with: a host that lacks services, and whose devices come and go.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "suites.h"

namespace krv::tool {

struct HostPlan {
  bool has_provider = true;
  std::set<std::string> missing_suites = {};
  std::vector<uint32_t> device_apis = {};  // DeviceApi of each GPU device
  // That many of the last devices are gone once the plug-in has counted them.
  uint32_t vanishing_devices = 0;
  bool refuses_device_info = false;

  // Whether the plug-in finds a device that it can use.
  bool HasUsableDevice() const;
};

// One start of the plug-in. The suites stay behind for as long as the plug-in is loaded.
class HostileHost {
 public:
  // `services`: where everything that works comes from; outlives the host.
  HostileHost(HostPlan plan, host::HostServices& services);
  ~HostileHost();
  HostileHost(const HostileHost&) = delete;
  HostileHost& operator=(const HostileHost&) = delete;

  // What StartupKRV takes.
  HostContext* context() { return &context_; }
  const HostPlan& plan() const { return plan_; }

 private:
  class Devices;
  class Provider;

  const HostPlan plan_;
  std::unique_ptr<Devices> devices_;
  std::unique_ptr<Provider> provider_;
  HostContext context_;
};

}  // namespace krv::tool
