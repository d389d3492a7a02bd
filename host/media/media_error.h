// How the media classes fail.
#pragma once

#include <stdexcept>
#include <string>

namespace krv::host {

// Thrown by every class of host/media. what() is one line for the user, without a program's name.
class MediaError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws "SUBJECT: REASON" when `code`, the result of an FFmpeg call, is an error; else returns it.
int CheckAv(int code, const std::string& subject);

// Keeps FFmpeg's libraries from writing to the error output; what matters arrives as MediaError.
// For the whole process.
void SilenceAvLog();

}  // namespace krv::host
