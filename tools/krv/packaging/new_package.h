// Packages for authors to begin with.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace krv::tool {

struct NewPackage {
  std::string unique_name;
  std::vector<std::filesystem::path> files;  // in the folder, sorted
};

// What makes up a unique and a display name: the name of the folder. Throws PackagingError when it
// holds other characters than letters, digits, "_", "-" and those beyond ASCII, or begins with "_"
// or "-".
std::string NameOfPackage(const std::filesystem::path& folder);

// Makes the folder with a package of one shader, with remarks for who changes it. `schema` is the
// schema of descriptions, which is copied in; none when empty. Throws PackagingError.
NewPackage MakeFromTemplate(const std::filesystem::path& folder,
                            const std::filesystem::path& schema);

// As above, with a copy of the package in the folder `effect`. The text of built-in shaders becomes
// a file of the copy, to be changed.
NewPackage MakeFromEffect(const std::filesystem::path& folder, const std::filesystem::path& schema,
                          const std::filesystem::path& effect);

}  // namespace krv::tool
