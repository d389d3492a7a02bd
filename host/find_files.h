// Where the plug-in and the packages are.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace krv::host {

// What the user named; empty for what he left to be found.
struct FileWishes {
  std::filesystem::path plugin;
  std::vector<std::filesystem::path> packages;
};

struct FoundFiles {
  std::filesystem::path plugin;
  std::vector<std::filesystem::path> packages;
};

// What the user named, or what lies beside the program (krvAudioVisualPlugin.krv and packages/, as
// in a build folder), or what is installed (../lib/krv/plugins/ and ../share/krv/packages/ from
// `program_folder`). Nothing when the plug-in or the packages are missing, with one line in *error
// that says where they were looked for.
std::optional<FoundFiles> FindFiles(const FileWishes& wishes,
                                    const std::filesystem::path& program_folder,
                                    std::string* error);

// As above, the plug-in only.
std::optional<std::filesystem::path> FindPlugin(const std::filesystem::path& wish,
                                                const std::filesystem::path& program_folder,
                                                std::string* error);

// FindFiles from the folder of the running program.
std::optional<FoundFiles> FindFiles(const FileWishes& wishes, std::string* error);
std::optional<std::filesystem::path> FindPlugin(const std::filesystem::path& wish,
                                                std::string* error);

}  // namespace krv::host
