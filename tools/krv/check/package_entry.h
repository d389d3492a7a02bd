// What the entries of a description name: files of the package, or shaders of the plug-in.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace krv::tool {

// The path of the file, relative to the package's folder; entries may use either separator.
std::filesystem::path EntryPath(const std::string& entry);

// The file in the package's folder.
std::filesystem::path PackageFile(const std::filesystem::path& folder, const std::string& entry);

// Whether the file is outside of the package, or would be in a copy of another name.
bool LeadsOut(const std::string& entry);

// The part after the last backslash, by which the plug-in looks up its own shaders.
std::string_view BuiltinName(std::string_view entry);

}  // namespace krv::tool
