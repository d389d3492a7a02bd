// What is wrong with a package when the plug-in runs it.
#pragma once

#include <filesystem>
#include <memory>

#include "check/description_document.h"
#include "check/finding.h"
#include "plugin_host.h"

namespace krv::tool {

// Builds the shaders of the package in `folder` and, when they are all there and compile, renders
// one frame. Appends what goes wrong. That the plug-in refuses the package is reported only when
// `findings` has no error yet, which would be the reason.
void CheckEffect(const std::shared_ptr<host::PluginHost>& plugin,
                 const DescriptionDocument& document, const std::filesystem::path& folder,
                 Findings* findings);

}  // namespace krv::tool
