// Calls that were made, as lines of text.
#pragma once

namespace abi {

class Recorder {
 public:
  static constexpr int kMaxLines = 64;
  static constexpr int kMaxLength = 512;  // with the NUL; what is longer is cut

  // printf-style. Past kMaxLines the last line is overwritten.
  void Record(const char* format, ...);
  // As Record, with the arguments after the format that a variadic function got.
  void RecordList(const char* format, __builtin_va_list arguments);

  void Clear() { count_ = 0; }
  int count() const { return count_; }
  // Null when there are not so many.
  const char* line(int index) const { return index < count_ ? lines_[index] : nullptr; }

 private:
  int count_ = 0;
  char lines_[kMaxLines][kMaxLength] = {};
};

}  // namespace abi
