// The built plug-in with the shipped packages, for benchmarks of what a host sees.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "plugin_host.h"

namespace krv {

// The plug-in, started for frames of this form, its context current. One at a time: the one of the
// other form ends. Throws std::runtime_error.
std::shared_ptr<host::PluginHost> PluginFor(host::DeviceUse form);

// Ends the plug-in, whose library needs what the process has before main returns.
void EndPlugin();

// Adds the benchmarks of every package in packages/.
void RegisterPackageBenchmarks();  // of reading it
void RegisterFrameBenchmarks();    // of its passes and frames

}  // namespace krv
