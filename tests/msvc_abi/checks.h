// The parts of the test, in the order in which a host goes through them.
#pragma once

#include "plugin.h"
#include "suites.h"

namespace abi {

struct Host {
  Plugin plugin;
  Suites suites;

  bool on_gpu() const { return suites.devices.has_open_gl; }
  FrameForm frame_form() const { return on_gpu() ? kOnGpu : kInMemory; }
  DeviceKind device_kind() const { return on_gpu() ? kGpuDevice : kMemoryDevice; }

  // A new instance; null, with a failed check, when there is none.
  KRVEffect* Create(const char* unique_name);
};

// Starts the plug-in, once more if need be, on a host with or without an OpenGL device.
void CheckStartup(Host& host, bool on_gpu);
// Registers the test's own packages, one of which has every kind of parameter.
void CheckRegistration(Host& host, const char* folder);
// Registers the packages that come with the plug-in.
void CheckOtherPackages(Host& host, const char* folder);
void CheckCreation(Host& host);
void CheckOperations(Host& host);
// Values, times and colours arrive in the shader as the host served them.
void CheckValues(Host& host);
// The spectrum of the host's sound is drawn over the host's frame.
void CheckBars(Host& host);
void CheckPublicHeaders(Host& host);
void CheckShutdown(Host& host);

}  // namespace abi
