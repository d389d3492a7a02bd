#include "plugin_under_bench.h"

namespace krv {
namespace {

std::shared_ptr<host::PluginHost>& Current() {
  static std::shared_ptr<host::PluginHost> host;
  return host;
}

}  // namespace

std::shared_ptr<host::PluginHost> PluginFor(host::DeviceUse form) {
  auto& host = Current();
  std::string error;
  if (host == nullptr || host->device() != form) {
    host.reset();
    host = host::PluginHost::Create({.plugin = KRV_PLUGIN_FILE, .device = form}, &error);
    if (host == nullptr || !host->RegisterPackages(KRV_PACKAGES, &error)) {
      throw std::runtime_error(error);
    }
  }
  if (!host->MakeContextCurrent(&error)) throw std::runtime_error(error);
  return host;
}

void EndPlugin() { Current().reset(); }

}  // namespace krv
