#include "platform/process.h"

#include <windows.h>

// windows.h comes first: these headers lack what they need.
#include <psapi.h>
#include <shellapi.h>

#include <cstdlib>
#include <memory>

#include "platform/windows/wide_text.h"

namespace krv::host::platform {

std::filesystem::path ExecutableFile() {
  std::wstring file;
  DWORD length = 0;
  do {  // the name's length is not told, only that the space was too small
    file.resize(file.size() + MAX_PATH);
    length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
  } while (length == file.size());
  file.resize(length);
  return file;
}

std::filesystem::path ExecutableFolder() { return ExecutableFile().parent_path(); }

std::vector<std::string> ProgramArguments(int, char**) {
  struct Freer {
    void operator()(wchar_t** arguments) const { LocalFree(arguments); }
  };
  int count = 0;
  const std::unique_ptr<wchar_t*, Freer> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> utf8;
  if (arguments == nullptr) return utf8;
  for (int i = 1; i < count; ++i) utf8.push_back(ToUtf8(arguments.get()[i]));
  return utf8;
}

int64_t ResidentBytes() {
  PROCESS_MEMORY_COUNTERS counters = {};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
  return static_cast<int64_t>(counters.WorkingSetSize);
}

double ProcessorSeconds() {
  FILETIME created = {};
  FILETIME ended = {};
  FILETIME times[2] = {};
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &times[0], &times[1]);
  double seconds = 0;
  for (const FILETIME& time : times) {
    const uint64_t steps = uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    seconds += static_cast<double>(steps) * 1e-7;
  }
  return seconds;
}

// The C library's environment, which getenv reads, and through it the system's.
void SetVariable(const char* name, const char* value) {
  _putenv_s(name, value == nullptr ? "" : value);
}

int64_t OpenHandles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

void CrashQuietly() {
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}

}  // namespace krv::host::platform
