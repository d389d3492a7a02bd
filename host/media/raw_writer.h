// Pictures as they are, without sound, for other programs.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "media/av_ptr.h"
#include "media/frame_sink.h"
#include "media/part_file.h"

struct AVIOContext;

namespace krv::host {

// Frame after frame, row after row from the top, four bytes a pixel: blue, green, red, straight
// alpha. There is no header and nothing in between.
class RawWriter final : public FrameSink {
 public:
  // Into a file. Throws MediaError.
  explicit RawWriter(const std::filesystem::path& path);

  // Into a file descriptor of the C library, which stays open; `name`: of the output in messages.
  // What was written stays written. Throws MediaError.
  RawWriter(int descriptor, std::string name);

  void Write(const Picture& picture, const std::vector<int16_t>& samples) override;
  void Finish() override;

 private:
  struct CloseFile {
    void operator()(AVIOContext* file) const;
  };

  void Open(const std::string& url);
  void Put(const uint8_t* bytes, int count);
  void Check() const;  // throws when a write has failed

  std::string name_;
  std::optional<PartFile> part_;  // of a file
  std::unique_ptr<AVIOContext, CloseFile> file_;
};

}  // namespace krv::host
