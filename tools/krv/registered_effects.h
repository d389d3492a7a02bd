// The effects that a command is about.
#pragma once

#include <filesystem>
#include <vector>

#include "plugin_host.h"

namespace krv::tool {

// Registers every package under the folders and returns all effects by name: the order of
// registration is that of the file system. Complains about a folder without packages and about
// packages that cannot be read, and sets *complete to false then.
std::vector<host::EffectListing> RegisterEffects(host::PluginHost* plugin,
                                                 const std::vector<std::filesystem::path>& folders,
                                                 bool* complete);

}  // namespace krv::tool
