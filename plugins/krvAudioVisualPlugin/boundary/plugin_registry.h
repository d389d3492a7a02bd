// What the process knows: the host's suites, its GPU device, and the registered effects.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "description/effect_description.h"
#include "krv/suites.h"

namespace krv {

// One per process, made on first use and never destroyed. Takes no lock: the host starts up and
// registers on one thread before it creates effects, and nothing is written afterwards.
struct PluginRegistry {
  static PluginRegistry& Instance();

  // Null where the host has no such suite. The suites belong to the host.
  HostUtilSuite* host_util_suite = nullptr;
  ImageBufferSuite* image_buffer_suite = nullptr;
  MemorySuite* memory_suite = nullptr;
  GpuDeviceSuite* gpu_device_suite = nullptr;
  int32_t gpu_device_index = -1;  // -1: no device that the plug-in can use

  // Every registered effect by its unique name (compared byte by byte), and in the order of
  // registration. Never removed.
  std::map<std::string, std::shared_ptr<const EffectDescription>, std::less<>> effects_by_name;
  std::vector<std::shared_ptr<const EffectDescription>> effect_list;

  bool HasGpuDevice() const { return gpu_device_index != -1; }

  // Null when no effect has that name, or the index is not below the number of effects.
  std::shared_ptr<const EffectDescription> FindEffect(std::string_view unique_name) const;
  std::shared_ptr<const EffectDescription> EffectAt(uint32_t index) const;

  // Registers `description` unless its unique name is taken. Returns what is registered under the
  // name. `description` is not null.
  std::shared_ptr<const EffectDescription> AddEffect(
      std::shared_ptr<const EffectDescription> description);
};

}  // namespace krv
