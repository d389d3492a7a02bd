#include "c_library.h"
#include "checks.h"
#include "report.h"

namespace abi {
namespace {

constexpr const char* kSuiteRequests[] = {"Memory Allocator Suite 1",
                                          "Image Buffer ALlocator Suite 1", "Host Util Suite 1",
                                          "GPU Device Suite 1"};

// The record with memory behind it that is not the plug-in's.
struct GuardedInfo {
  PluginInfo info;
  uint64_t guard;
};

void CheckInfo(const GuardedInfo& guarded) {
  const PluginInfo& info = guarded.info;
  ExpectEqual(info.interface_version, 1, "PluginInfo: the interface's version");
  ExpectEqual(info.plugin_version, 1, "PluginInfo: the plug-in's version");
  ExpectText(info.name, "audio_visual", "PluginInfo: the name");
  ExpectText(info.vendor, "org.krv.audiovisual", "PluginInfo: the vendor");
  ExpectText(info.description, "audio visualization effect", "PluginInfo: the description");
  ExpectText(info.reserved_text, "", "PluginInfo: the reserved text");
  ExpectEqual(info.reserved, 0, "PluginInfo: the reserved number");
  Expect(guarded.guard == 0xEEEEEEEEEEEEEEEE, "nothing is written past PluginInfo");
}

}  // namespace

void CheckStartup(Host& host, bool on_gpu) {
  host.suites.devices.has_open_gl = on_gpu;
  host.suites.requests.Clear();
  GuardedInfo guarded;
  memset(&guarded, 0xEE, sizeof(guarded));
  HostContext context{nullptr, &host.suites};
  ExpectEqual(host.plugin.startup(&context, &guarded.info), kOk, "StartupKRV");
  ExpectLines(host.suites.requests, kSuiteRequests, "the suites asked for");
  CheckInfo(guarded);
}

void CheckShutdown(Host& host) {
  ExpectEqual(host.plugin.shutdown(), kOk, "ShutdownKRV");
  const FrameMaker& frames = host.suites.frames;
  Expect(frames.created > 0, "the plug-in has the host make frames");
  ExpectEqual(frames.released, frames.created, "the host's frames given back");
  Expect(host.suites.devices.texture_requests > 0, "the plug-in asks for the textures of frames");
  ExpectEqual(host.suites.devices.wrong_requests, 0, "requests for a device or texture not there");
}

}  // namespace abi
