// A numbered sequence of pictures, without sound.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "media/frame_sink.h"
#include "media/numbered_name.h"
#include "media/png_encoder.h"

namespace krv::host {

// How the pictures of a sequence are called; `path` as the writer takes it. Throws MediaError.
NumberedName NameOfPictures(const std::filesystem::path& path);

// Pictures are written into a hidden folder beside the sequence and moved to their names by Finish;
// older files of the same names are replaced, others in the folder stay.
class PngSequenceWriter final : public FrameSink {
 public:
  // `path`: "folder/" for folder/frame_%06d.png, or a name with one number. The number is the
  // frame's, from `first_frame`. Throws MediaError.
  PngSequenceWriter(const std::filesystem::path& path, int64_t first_frame);
  ~PngSequenceWriter() override;

  void Write(const Picture& picture, const std::vector<int16_t>& samples) override;
  void Finish() override;

 private:
  NumberedName name_;
  std::filesystem::path part_folder_;
  PngEncoder encoder_;
  int64_t first_;
  int64_t next_;
};

}  // namespace krv::host
