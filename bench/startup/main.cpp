// startup_bench EMPTY_LIBRARY PLUGIN: prints the milliseconds, first use in this process, of
// loading an empty library, of loading the plug-in, and of StartupKRV.
#include <windows.h>

#include <cstdio>

#include "krv/plugin.h"

namespace {

double Milliseconds() {
  LARGE_INTEGER now;
  LARGE_INTEGER frequency;
  QueryPerformanceCounter(&now);
  QueryPerformanceFrequency(&frequency);
  return 1000.0 * static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return 2;
  const double start = Milliseconds();
  const HMODULE empty = LoadLibraryA(arguments[1]);
  const double empty_loaded = Milliseconds();
  const HMODULE plugin = LoadLibraryA(arguments[2]);
  const double plugin_loaded = Milliseconds();
  if (empty == nullptr || plugin == nullptr) return 1;
  const auto startup = reinterpret_cast<krv::StartupFunction*>(
      reinterpret_cast<void*>(GetProcAddress(plugin, "StartupKRV")));
  if (startup == nullptr) return 1;
  krv::PluginInfo info{};
  const double before_startup = Milliseconds();
  const int code = startup(nullptr, &info);
  const double started = Milliseconds();
  std::printf("%.3f %.3f %.3f\n", empty_loaded - start, plugin_loaded - empty_loaded,
              started - before_startup);
  return code;
}
