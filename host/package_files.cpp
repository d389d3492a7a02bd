#include "package_files.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

namespace krv::host {
namespace {

bool HasText(const nlohmann::json& description, const char* key, std::string_view wanted) {
  const auto found = description.find(key);
  return found != description.end() && found->is_string() &&
         found->get_ref<const std::string&>() == wanted;
}

bool Describes(const std::filesystem::path& folder, std::string_view unique_name) {
  std::ifstream file(folder / kDescriptionFileName, std::ios::binary);
  const auto description = nlohmann::json::parse(file, nullptr, /*allow_exceptions=*/false);
  return description.is_object() && HasText(description, "effect_type", "audio_visualization") &&
         HasText(description, "unique_name", unique_name);
}

}  // namespace

std::vector<std::filesystem::path> FindPackageFolders(const std::filesystem::path& root) {
  namespace fs = std::filesystem;
  std::vector<fs::path> folders;
  std::error_code code;
  const auto options = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator entry(root, options, code), end; !code && entry != end;
       entry.increment(code)) {
    std::error_code status;
    if (entry->path().filename() == kDescriptionFileName && !entry->is_directory(status)) {
      folders.push_back(entry->path().parent_path());
    }
  }
  std::sort(folders.begin(), folders.end());
  return folders;
}

std::optional<std::filesystem::path> FindPackageFolder(
    const std::vector<std::filesystem::path>& roots, std::string_view unique_name) {
  for (const std::filesystem::path& root : roots) {
    for (std::filesystem::path& folder : FindPackageFolders(root)) {
      if (Describes(folder, unique_name)) return std::move(folder);
    }
  }
  return std::nullopt;
}

}  // namespace krv::host
