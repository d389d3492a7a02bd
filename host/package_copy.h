// Variants of effect packages: the plug-in has no settings but the packages themselves.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "temporary_folder.h"

namespace krv::host {

// What differs from the original.
struct PackageChanges {
  // Appended to the unique name, under which the plug-in would otherwise keep the first package. A
  // suffix keeps the class of effect, which the plug-in chooses by texts inside the name.
  std::string name_suffix = {};
  std::optional<bool> without_blend = {};
  std::optional<bool> original = {};
  std::optional<std::vector<std::string>> fragment_shaders = {};  // "opengl_frag"
  std::optional<std::string> blend_script = {};                   // an empty text removes it
  std::optional<std::string> quality = {};
};

// A copy of a package's folder, removed with the object. Shader files outside the folder are not
// copied.
class PackageCopy {
 public:
  // Copies the folder and rewrites its description, whose other keys keep their order. Null on
  // failure, with one line in *error that names the file.
  static std::unique_ptr<PackageCopy> Create(const std::filesystem::path& package,
                                             const PackageChanges& changes, std::string* error);

  const std::filesystem::path& folder() const { return folder_->path(); }
  const std::string& unique_name() const { return unique_name_; }

 private:
  PackageCopy(std::unique_ptr<TemporaryFolder> folder, std::string unique_name)
      : folder_(std::move(folder)), unique_name_(std::move(unique_name)) {}

  std::unique_ptr<TemporaryFolder> folder_;
  std::string unique_name_;
};

}  // namespace krv::host
