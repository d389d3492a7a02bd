#include "packaging/new_folder.h"

#include <fstream>
#include <sstream>
#include <utility>

#include "folder_tree.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::tool {

namespace fs = std::filesystem;
namespace platform = host::platform;

std::string ReadWholeFile(const fs::path& file) {
  std::ifstream in(platform::OpenablePath(file), std::ios::binary);
  std::ostringstream text;
  if (!platform::IsFile(file) || !in || (in.peek() != EOF && !(text << in.rdbuf()))) {
    throw PackagingError(host::Utf8(file) + ": there is no such file, or it cannot be read");
  }
  return text.str();
}

fs::path PlainPath(const fs::path& path) {
  const fs::path absolute = fs::absolute(path);
  std::error_code error;
  fs::path plain = fs::weakly_canonical(absolute, error);
  return error ? absolute.lexically_normal() : plain;
}

void ReplaceFile(const fs::path& file, std::string_view contents) {
  std::error_code ignored;
  platform::Remove(file, ignored);
  std::ofstream out(platform::OpenablePath(file), std::ios::binary | std::ios::trunc);
  out << contents;
  out.close();
  if (!out) throw PackagingError(host::Utf8(file) + ": cannot be written");
}

NewFolder::NewFolder(fs::path path) : path_(std::move(path)) {
  const std::string name = host::Utf8(path_);
  if (platform::IsFile(path_) || platform::IsFolder(path_)) {
    throw PackagingError(name + ": exists already; give another name, or remove it");
  }
  const fs::path parent = path_.parent_path();
  if (!parent.empty() && !platform::IsFolder(parent)) {
    throw PackagingError(name + ": there is no folder " + host::Utf8(parent));
  }
  std::error_code error;
  if (platform::CreateFolder(path_, error)) return;
  throw PackagingError(name + ": cannot be made" +
                       (error ? ": " + error.message() : std::string()));
}

NewFolder::~NewFolder() {
  if (!kept_) host::RemoveTree(path_);
}

void CopyInto(const fs::path& from, const NewFolder& to) {
  for (fs::path above = PlainPath(to.path()); above.has_relative_path();
       above = above.parent_path()) {
    if (platform::IsSameFile(above, from)) {
      throw PackagingError(host::Utf8(to.path()) + ": lies in " + host::Utf8(from) +
                           "; give a folder outside of it");
    }
  }
  try {
    host::CopyTree(from, to.path());
  } catch (const std::exception& failure) {
    throw PackagingError("cannot copy " + host::Utf8(from) + ": " + failure.what());
  }
}

}  // namespace krv::tool
