#include "platform/stdout_capture.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace krv::host::platform {

std::unique_ptr<StdoutCapture> StdoutCapture::Start(std::string* error) {
  std::string name = (std::filesystem::temp_directory_path() / "krv-output-XXXXXX").string();
  const int file = mkstemp(name.data());
  if (file < 0) {
    *error = "cannot create " + name + ": " + std::strerror(errno);
    return nullptr;
  }
  unlink(name.c_str());
  std::fflush(stdout);
  const int saved = dup(STDOUT_FILENO);
  if (saved < 0 || dup2(file, STDOUT_FILENO) < 0) {
    *error = std::string("cannot redirect standard output: ") + std::strerror(errno);
    if (saved >= 0) close(saved);
    close(file);
    return nullptr;
  }
  return std::unique_ptr<StdoutCapture>(new StdoutCapture(saved, file));
}

StdoutCapture::~StdoutCapture() {
  Stop();
  close(file_);
}

std::string StdoutCapture::Stop() {
  std::string text;
  if (saved_ < 0) return text;
  std::fflush(stdout);
  dup2(saved_, STDOUT_FILENO);
  close(saved_);
  saved_ = -1;
  char buffer[4096];
  lseek(file_, 0, SEEK_SET);
  for (ssize_t count; (count = read(file_, buffer, sizeof(buffer))) > 0;) {
    text.append(buffer, static_cast<size_t>(count));
  }
  return text;
}

}  // namespace krv::host::platform
