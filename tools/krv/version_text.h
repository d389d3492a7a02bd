// What `krv --version` prints.
#pragma once

#include <string>

namespace krv::tool {

// "krv X.Y.Z" in the first line, then a line for each library: its name and the version that runs.
// FFTW, which only the plug-in uses, and libraries that are headers tell the one built with.
std::string VersionText();

}  // namespace krv::tool
