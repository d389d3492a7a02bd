// A folder that is being filled, and the files in it.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace krv::tool {

// Thrown when a package cannot be made; what() is one line that names the file or folder.
class PackagingError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The contents of a file, byte for byte. Throws PackagingError.
std::string ReadWholeFile(const std::filesystem::path& file);

// The absolute path of a file or folder that need not be there yet, without "." and ".." and, as
// far as it is there, links.
std::filesystem::path PlainPath(const std::filesystem::path& path);

// Writes a file in place of what is there, also of what is write-protected. Throws PackagingError.
void ReplaceFile(const std::filesystem::path& file, std::string_view contents);

// Removed again with everything in it, unless it is kept.
class NewFolder {
 public:
  // Makes the folder. Throws PackagingError, also when there is something of this name already.
  explicit NewFolder(std::filesystem::path path);
  ~NewFolder();
  NewFolder(const NewFolder&) = delete;
  NewFolder& operator=(const NewFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  void Keep() { kept_ = true; }

 private:
  std::filesystem::path path_;
  bool kept_ = false;
};

// Copies what a folder holds into a new one. Throws PackagingError, also when the new one lies in
// it.
void CopyInto(const std::filesystem::path& from, const NewFolder& to);

}  // namespace krv::tool
