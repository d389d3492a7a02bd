#include "studio/folder_watch.h"

#include <system_error>
#include <utility>
#include <vector>

#include "platform/file_system.h"

namespace krv::studio {

FolderWatch::FolderWatch(std::filesystem::path folder) : folder_(std::move(folder)) {
  known_ = Look();
  last_ = known_;
}

FolderWatch::FolderState FolderWatch::Look() const {
  FolderState state;
  std::vector<std::filesystem::path> folders{folder_};
  while (!folders.empty() && state.size() < kMaxFiles) {
    const auto entries = host::platform::ListFolder(folders.back());
    folders.pop_back();
    if (!entries) continue;
    for (const host::platform::FolderEntry& entry : *entries) {
      if (entry.is_folder) {
        folders.push_back(entry.path);
        continue;
      }
      const std::filesystem::path path = host::platform::OpenablePath(entry.path);
      std::error_code no_time;
      std::error_code no_size;
      const FileState file{std::filesystem::last_write_time(path, no_time),
                           std::filesystem::file_size(path, no_size)};
      if (!no_time && !no_size) state.emplace(entry.path, file);
    }
  }
  return state;
}

bool FolderWatch::Changed() {
  FolderState now = Look();
  const bool settled = now == last_;
  last_ = std::move(now);
  if (!settled || last_ == known_) return false;
  known_ = last_;
  return true;
}

}  // namespace krv::studio
