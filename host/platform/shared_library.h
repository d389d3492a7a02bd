// Loading of the plug-in's file.
#pragma once

#include <filesystem>
#include <string>

namespace krv::host::platform {

// Loads a library for the rest of the process; loading it again gives the same one. Null on
// failure, with the system's reason in *error.
void* LoadSharedLibrary(const std::filesystem::path& path, std::string* error);

// The address of an exported function, or null.
void* FindSymbol(void* library, const char* name);

}  // namespace krv::host::platform
