#include "package_arguments.h"

#include "package_files.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::tool {

std::optional<std::vector<std::filesystem::path>> PackageFolders(
    const std::vector<std::string>& wishes, std::string* error) {
  std::vector<std::filesystem::path> folders;
  for (const std::string& wish : wishes) {
    std::filesystem::path path = host::PathFromUtf8(wish);
    if (path.filename() == host::kDescriptionFileName) path = path.parent_path() / "";
    if (path.empty()) path = ".";
    if (!host::platform::IsFolder(path)) {
      *error = wish + ": there is no such package folder";
      return std::nullopt;
    }
    const auto found = host::FindPackageFolders(path);
    if (found.empty()) {
      *error = wish + ": there is no " + host::kDescriptionFileName + " in this folder";
      return std::nullopt;
    }
    folders.insert(folders.end(), found.begin(), found.end());
  }
  return folders;
}

}  // namespace krv::tool
