// The built library, reached as a host in another language reaches it: by the names of its exported
// functions and by slot numbers.
#pragma once

#include <cstdint>
#include <string>

namespace krv::test {

struct BuiltLibrary {
  int32_t (*startup)(void* host, void* info);
  int32_t (*shutdown)();
  int32_t (*register_effect)(uint32_t index, void* registrar);
  int32_t (*register_from_path)(const char* path, void* registrar);
  int32_t (*create)(const char* unique_name, int32_t device_kind, void** effect);
  void (*release)(void* effect);

  // Loaded on first use, for the rest of the process.
  static const BuiltLibrary& Get();
  static std::string Path();
};

}  // namespace krv::test
