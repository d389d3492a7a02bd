#include "find_files.h"

#include "platform/file_system.h"
#include "platform/process.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

namespace fs = std::filesystem;

constexpr char kPluginFileName[] = "krvAudioVisualPlugin.krv";

bool Exists(const fs::path& path) { return platform::IsFile(path) || platform::IsFolder(path); }

// The first of the two places that exists.
std::optional<fs::path> FirstOf(const fs::path& beside, const fs::path& installed, const char* what,
                                const char* option, std::string* error) {
  if (Exists(beside)) return beside;
  if (Exists(installed)) return installed;
  *error = std::string("cannot find ") + what + " at " + Utf8(beside) + " or " +
           Utf8(installed.lexically_normal()) + "; name it with " + option;
  return std::nullopt;
}

}  // namespace

std::optional<fs::path> FindPlugin(const fs::path& wish, const fs::path& program_folder,
                                   std::string* error) {
  if (wish.empty()) {
    return FirstOf(program_folder / kPluginFileName,
                   program_folder / ".." / "lib" / "krv" / "plugins" / kPluginFileName,
                   "the plug-in", "--plugin", error);
  }
  if (platform::IsFile(wish)) return wish;
  *error = "--plugin " + Utf8(wish) + ": there is no such file";
  return std::nullopt;
}

std::optional<FoundFiles> FindFiles(const FileWishes& wishes, const fs::path& program_folder,
                                    std::string* error) {
  const auto plugin = FindPlugin(wishes.plugin, program_folder, error);
  if (!plugin) return std::nullopt;
  FoundFiles found{*plugin, wishes.packages};
  for (const fs::path& folder : wishes.packages) {
    if (platform::IsFolder(folder)) continue;
    *error = "--packages " + Utf8(folder) + ": there is no such folder";
    return std::nullopt;
  }
  if (found.packages.empty()) {
    const auto packages =
        FirstOf(program_folder / "packages", program_folder / ".." / "share" / "krv" / "packages",
                "the effect packages", "--packages", error);
    if (!packages) return std::nullopt;
    found.packages.push_back(*packages);
  }
  return found;
}

std::optional<FoundFiles> FindFiles(const FileWishes& wishes, std::string* error) {
  return FindFiles(wishes, platform::ExecutableFolder(), error);
}

std::optional<fs::path> FindPlugin(const fs::path& wish, std::string* error) {
  return FindPlugin(wish, platform::ExecutableFolder(), error);
}

}  // namespace krv::host
