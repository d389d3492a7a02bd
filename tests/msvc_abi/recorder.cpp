#include "recorder.h"

#include "c_library.h"

namespace abi {

void Recorder::Record(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  RecordList(format, arguments);
  va_end(arguments);
}

void Recorder::RecordList(const char* format, __builtin_va_list arguments) {
  if (count_ < kMaxLines) ++count_;
  vsnprintf(lines_[count_ - 1], kMaxLength, format, arguments);
  lines_[count_ - 1][kMaxLength - 1] = '\0';
}

}  // namespace abi
