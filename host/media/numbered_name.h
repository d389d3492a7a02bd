// File names with a number in them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace krv::host {

// "shot_%05d.png": %d, or %0Nd for at least N digits (N from 1 to 9), once.
class NumberedName {
 public:
  // Throws MediaError when the file's name has not exactly one number or another "%".
  static NumberedName Parse(const std::filesystem::path& path);

  std::filesystem::path folder() const { return folder_; }

  // The file's name, without the folder, for a number from 0.
  std::filesystem::path NameOf(int64_t number) const;

 private:
  std::filesystem::path folder_;
  std::string before_;
  std::string after_;
  size_t digits_ = 1;
};

}  // namespace krv::host
