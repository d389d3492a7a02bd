#include "platform/shared_library.h"

#include <windows.h>

#include "platform/file_system.h"
#include "platform/windows/system_message.h"

namespace krv::host::platform {
namespace {

// Keeps Windows from showing a dialog about a library that cannot be loaded.
class DialogsOff {
 public:
  DialogsOff() { SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &before_); }
  ~DialogsOff() { SetThreadErrorMode(before_, nullptr); }
  DialogsOff(const DialogsOff&) = delete;
  DialogsOff& operator=(const DialogsOff&) = delete;

 private:
  DWORD before_ = 0;
};

}  // namespace

void* LoadSharedLibrary(const std::filesystem::path& path, std::string* error) {
  const DialogsOff dialogs_off;
  // A name without a folder would be searched for; libraries that it needs may lie beside it.
  const std::filesystem::path full = OpenablePath(std::filesystem::absolute(path));
  HMODULE library = LoadLibraryExW(full.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (library == nullptr) *error = SystemMessage(GetLastError());
  return library;
}

void* FindSymbol(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace krv::host::platform
