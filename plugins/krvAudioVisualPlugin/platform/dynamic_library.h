// Loading of other libraries at run time.
#pragma once

#include <string>

namespace krv::platform {

// A loaded library; freed with the object.
class DynamicLibrary {
 public:
  DynamicLibrary() = default;
  DynamicLibrary(DynamicLibrary&& other) noexcept;
  DynamicLibrary& operator=(DynamicLibrary&& other) noexcept;
  DynamicLibrary(const DynamicLibrary&) = delete;
  DynamicLibrary& operator=(const DynamicLibrary&) = delete;
  ~DynamicLibrary();

  // Loads the library at a UTF-8 path, or by the platform's search rules when the path is a plain
  // file name. The result is not loaded when that fails.
  static DynamicLibrary Open(const std::string& utf8_path);

  // The library of that file name if the process has it loaded already.
  static DynamicLibrary OpenIfLoaded(const std::string& file_name);

  bool loaded() const { return handle_ != nullptr; }

  // The address of an exported function, or null. Null as well when not loaded.
  void* Symbol(const char* name) const;

 private:
  explicit DynamicLibrary(void* handle) : handle_(handle) {}
  void* handle_ = nullptr;
};

}  // namespace krv::platform
