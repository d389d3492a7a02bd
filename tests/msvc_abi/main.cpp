// A host built by a compiler of Microsoft's C++ ABI drives the plug-in that the other ABI's
// compiler built. The exit code is 0 when every check passed, 1 when one failed.
#include "checks.h"
#include "gl_window.h"
#include "report.h"
#include "win32.h"

namespace abi {
namespace {

void CheckWithDevice(Host& host, bool on_gpu, const char* own_packages, const char* packages) {
  const int failed_before = FailedChecks();
  CheckStartup(host, on_gpu);
  CheckRegistration(host, own_packages);
  CheckOtherPackages(host, packages);
  CheckCreation(host);
  CheckOperations(host);
  CheckValues(host);
  CheckBars(host);
  ExpectEqual(glGetError(), 0, "glGetError");
  Print("%s: %d checks failed\n", on_gpu ? "frames in textures" : "frames in memory",
        FailedChecks() - failed_before);
}

int Run(const char* plugin, const char* own_packages, const char* packages) {
  static Host host;
  GlWindow window;
  if (!window.Open() || !host.plugin.Load(plugin)) return 1;
  CheckWithDevice(host, false, own_packages, packages);
  CheckWithDevice(host, true, own_packages, packages);
  CheckPublicHeaders(host);
  CheckShutdown(host);
  window.Close();
  return FailedChecks() == 0 ? 0 : 1;
}

}  // namespace
}  // namespace abi

int main(int argc, char** argv) {
  if (argc != 4) {
    abi::Print("usage: %s PLUGIN OWN_PACKAGES PACKAGES\n", argv[0]);
    return 2;
  }
  return abi::Run(argv[1], argv[2], argv[3]);
}
