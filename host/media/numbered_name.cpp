#include "media/numbered_name.h"

#include "media/media_error.h"
#include "utf8_path.h"

namespace krv::host {

NumberedName NumberedName::Parse(const std::filesystem::path& path) {
  const std::string name = Utf8(path.filename());
  const auto is_digit = [&name](size_t i) {
    return i < name.size() && name[i] >= '1' && name[i] <= '9';
  };
  NumberedName numbered;
  const size_t percent = name.find('%');
  size_t end = percent + 1;
  if (percent != std::string::npos && end < name.size() && name[end] == '0' && is_digit(end + 1)) {
    numbered.digits_ = static_cast<size_t>(name[end + 1] - '0');
    end += 2;
  }
  const bool closed = percent != std::string::npos && end < name.size() && name[end] == 'd';
  if (!closed || name.find('%', end) != std::string::npos) {
    throw MediaError(Utf8(path) + ": the name of a PNG sequence needs one number such as %05d");
  }
  numbered.folder_ = path.parent_path();
  numbered.before_ = name.substr(0, percent);
  numbered.after_ = name.substr(end + 1);
  return numbered;
}

std::filesystem::path NumberedName::NameOf(int64_t number) const {
  std::string digits = std::to_string(number);
  if (digits.size() < digits_) digits.insert(0, digits_ - digits.size(), '0');
  return PathFromUtf8(before_ + digits + after_);
}

}  // namespace krv::host
