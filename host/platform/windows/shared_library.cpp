#include "platform/shared_library.h"

#include <windows.h>

#include "platform/file_system.h"
#include "platform/windows/system_message.h"
#include "utf8_path.h"

namespace krv::host::platform {
namespace {

// Why the system could not load the file; its texts may have "%1" where the file's name belongs.
std::string Reason(const std::filesystem::path& path, DWORD code) {
  std::string reason = SystemMessage(code);
  const size_t gap = reason.find("%1");
  if (gap != std::string::npos) reason.replace(gap, 2, Utf8(path.filename()));
  return reason;
}

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
  if (library == nullptr) *error = Reason(path, GetLastError());
  return library;
}

void* FindSymbol(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace krv::host::platform
