// Effect packages as folders on disk.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krv::host {

inline constexpr char kDescriptionFileName[] = "description.json";

// The folders under `root`, itself included, that hold a "description.json", sorted by path.
// Folders that cannot be read are passed over.
std::vector<std::filesystem::path> FindPackageFolders(const std::filesystem::path& root);

// The first package folder under one of `roots` whose description has that unique name and is one
// of this plug-in's effects, or nothing. Descriptions that cannot be parsed are passed over.
std::optional<std::filesystem::path> FindPackageFolder(
    const std::vector<std::filesystem::path>& roots, std::string_view unique_name);

}  // namespace krv::host
