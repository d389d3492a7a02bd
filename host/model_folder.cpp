#include "model_folder.h"

#include "platform/file_system.h"

namespace krv::host {

std::filesystem::path ModelFolder(const std::filesystem::path& program_folder) {
  std::filesystem::path beside = program_folder / "models";
  const std::filesystem::path data = program_folder / ".." / "share" / "krv";
  if (platform::IsFolder(beside) || !platform::IsFolder(data)) return beside;
  return (data / "models").lexically_normal();
}

}  // namespace krv::host
