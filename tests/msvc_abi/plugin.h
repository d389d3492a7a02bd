// The plug-in's exported functions.
#pragma once

#include "interfaces.h"

namespace abi {

struct Plugin {
  int32_t (*startup)(HostContext* host, PluginInfo* info);
  int32_t (*shutdown)();
  int32_t (*register_effect)(uint32_t index, EffectRegistrar* registrar);
  int32_t (*register_from_path)(const char* path, EffectRegistrar* registrar);
  int32_t (*create)(const char* unique_name, int32_t device_kind, KRVEffect** effect);
  void (*release)(KRVEffect* effect);

  // False, with a failed check, when the library or one of the functions is not there.
  bool Load(const char* path);
};

}  // namespace abi
