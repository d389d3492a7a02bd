#include "package_copy.h"

#include <fstream>
#include <nlohmann/json.hpp>

#include "folder_tree.h"
#include "package_files.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

void Apply(const PackageChanges& changes, nlohmann::ordered_json& description) {
  description["unique_name"] =
      description.value("unique_name", std::string()) + changes.name_suffix;
  if (changes.without_blend) description["without_blend"] = *changes.without_blend;
  if (changes.original) description["original"] = *changes.original;
  if (changes.fragment_shaders) description["opengl_frag"] = *changes.fragment_shaders;
  if (changes.blend_script) {
    description.erase("blend_script");
    if (!changes.blend_script->empty()) description["blend_script"] = *changes.blend_script;
  }
  if (changes.quality) description["quality"] = *changes.quality;
}

// Rewrites the description in `folder` and returns its new unique name.
std::string RewriteDescription(const std::filesystem::path& folder, const PackageChanges& changes) {
  const std::filesystem::path path = platform::OpenablePath(folder / kDescriptionFileName);
  std::ifstream in(path, std::ios::binary);
  in.exceptions(std::ios::badbit);
  auto description = nlohmann::ordered_json::parse(in);
  in.close();
  std::error_code error;
  platform::Remove(path, error);  // a copy of a read-only file is read-only
  if (error) throw std::filesystem::filesystem_error("cannot be replaced", path, error);
  Apply(changes, description);
  std::ofstream out;
  out.exceptions(std::ios::failbit | std::ios::badbit);
  out.open(path, std::ios::binary | std::ios::trunc);
  out << description.dump(2) << '\n';
  out.close();
  return description["unique_name"];
}

}  // namespace

std::unique_ptr<PackageCopy> PackageCopy::Create(const std::filesystem::path& package,
                                                 const PackageChanges& changes,
                                                 std::string* error) {
  std::unique_ptr<TemporaryFolder> folder = TemporaryFolder::Create(error);
  if (folder == nullptr) return nullptr;
  try {
    CopyTree(package, folder->path());
    std::string unique_name = RewriteDescription(folder->path(), changes);
    return std::unique_ptr<PackageCopy>(new PackageCopy(std::move(folder), std::move(unique_name)));
  } catch (const std::exception& failure) {
    *error = "cannot copy the package " + Utf8(package) + ": " + failure.what();
    return nullptr;
  }
}

}  // namespace krv::host
