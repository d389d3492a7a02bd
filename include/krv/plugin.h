// The six functions that the plug-in exports, by unmangled name, and nothing else.
//
// Order of calls: StartupKRV; then RegisterKRVEffectFromConfPath and RegisterKRVEffect as often as
// wanted; then pairs of CreateKRVEffect and ReleaseKRVEffect; ShutdownKRV last. The functions take
// no locks: start up and register on one thread before effects are created.
//
// An error of a library used inside (a description that is not valid JSON, a number that does not
// parse) ends the call with code 4 and one log line of level kLogError with the error's text.
#pragma once

#include <cstdint>

#include "krv/effect.h"
#include "krv/export.h"
#include "krv/registrar.h"
#include "krv/suites.h"
#include "krv/types.h"

namespace krv {

// Filled by StartupKRV. The texts live as long as the library is loaded; do not free them.
struct PluginInfo {
  uint32_t interface_version;  // 1
  uint32_t plugin_version;     // 1
  const char* name;            // "audio_visual", also the tag of every log line
  const char* vendor;          // reverse-domain form
  const char* description;
  const char* reserved_text;  // empty
  uint32_t reserved;          // 0
};
static_assert(sizeof(void*) != 8 || sizeof(PluginInfo) == 48);

// Device kinds of CreateKRVEffect.
enum DeviceKind : int32_t {
  kDeviceKindMemory = 0,  // for a host without a usable GPU device
  kDeviceKindGpu = 2,     // for a host with one
};

// Function types, for looking the functions up in a loaded library.
using StartupFunction = int32_t(HostContext*, PluginInfo*);
using ShutdownFunction = int32_t();
using RegisterEffectFunction = int32_t(uint32_t index, EffectRegistrar*);
using RegisterEffectFromConfPathFunction = int32_t(const char* path, EffectRegistrar*);
using CreateEffectFunction = int32_t(const char* unique_name, int32_t device_kind, KRVEffect**);
using ReleaseEffectFunction = void(KRVEffect*);

}  // namespace krv

extern "C" {

// [main-thread] Acquires the host's suites, chooses the host's GPU device and fills *info. May be
// called again. Always 0; a null argument is ignored.
KRV_EXPORT int32_t StartupKRV(krv::HostContext* host, krv::PluginInfo* info);

// [main-thread] Does nothing; 0. Registered effects stay until the process ends.
KRV_EXPORT int32_t ShutdownKRV();

// [main-thread] Announces the registered effect at `index` (from 0, in order of registration). 0,
// or 2 when there is no such effect or no registrar.
KRV_EXPORT int32_t RegisterKRVEffect(uint32_t index, krv::EffectRegistrar* registrar);

// [main-thread] Registers every package (folder with a "description.json") under `path` and
// announces the last one found; the others are reached through RegisterKRVEffect. The first package
// registered under a name stays. 0; 2: nothing found, or a null argument; 4: a description
// could not be read, what was registered before it stays registered.
KRV_EXPORT int32_t RegisterKRVEffectFromConfPath(const char* path, krv::EffectRegistrar* registrar);

// [any-thread] Creates an instance and stores it in *effect; the caller gives it back to
// ReleaseKRVEffect. 0; 2: no effect of that name, a device kind that does not match the host's GPU
// state, or a null argument (*effect is untouched); 4: no instance could be made (*effect is null).
KRV_EXPORT int32_t CreateKRVEffect(const char* unique_name, int32_t device_kind,
                                   krv::KRVEffect** effect);

// [gl-thread] Destroys an instance; null is ignored.
KRV_EXPORT void ReleaseKRVEffect(krv::KRVEffect* effect);

}  // extern "C"
