// The plug-in and the host write through the same C runtime, msvcrt.dll, whose file descriptor 1 is
// everybody's standard output.
#include "platform/stdout_capture.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <random>

#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::host::platform {
namespace {

constexpr int kStandardOutput = 1;

// A new file that is gone when it is closed; -1 on failure.
int OpenTemporaryFile(const std::filesystem::path& path) {
  return _wopen(OpenablePath(path).c_str(),
                _O_RDWR | _O_CREAT | _O_EXCL | _O_BINARY | _O_TEMPORARY | _O_NOINHERIT,
                _S_IREAD | _S_IWRITE);
}

}  // namespace

std::unique_ptr<StdoutCapture> StdoutCapture::Start(std::string* error) {
  std::random_device random;
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("krv-output-" + std::to_string(random()));
  const int file = OpenTemporaryFile(path);
  if (file < 0) {
    *error = "cannot create " + Utf8(path) + ": " + std::strerror(errno);
    return nullptr;
  }
  std::fflush(stdout);
  const int saved = _dup(kStandardOutput);
  if (saved < 0 || _dup2(file, kStandardOutput) < 0) {
    *error = std::string("cannot redirect standard output: ") + std::strerror(errno);
    if (saved >= 0) _close(saved);
    _close(file);
    return nullptr;
  }
  return std::unique_ptr<StdoutCapture>(new StdoutCapture(saved, file));
}

StdoutCapture::~StdoutCapture() {
  Stop();
  _close(file_);
}

std::string StdoutCapture::Stop() {
  std::string text;
  if (saved_ < 0) return text;
  std::fflush(stdout);
  _dup2(saved_, kStandardOutput);
  _close(saved_);
  saved_ = -1;
  char buffer[4096];
  _lseek(file_, 0, SEEK_SET);
  for (int count; (count = _read(file_, buffer, sizeof(buffer))) > 0;) {
    text.append(buffer, static_cast<size_t>(count));
  }
  return text;
}

}  // namespace krv::host::platform
