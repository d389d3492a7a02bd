// The decoded frames of one stream of a media file.
#pragma once

#include <cstdint>
#include <filesystem>

#include "media/av_ptr.h"
#include "media/media_file.h"

namespace krv::host {

// Opens the file for itself, so that several streams of one file are read independently. Damaged
// packets are passed over.
class StreamDecoder {
 public:
  // Throws MediaError when the file or its stream cannot be opened.
  StreamDecoder(const std::filesystem::path& path, StreamKind kind);

  // The next frame, or null at the end of the stream; valid until the next call.
  AVFrame* Next();

  // Goes to the last key frame at or before `timestamp` (in the stream's time base), as far as the
  // container knows. False when it cannot; the position is undefined then.
  bool SeekBefore(int64_t timestamp);

  MediaFile& file() { return file_; }
  AVStream& stream() const { return file_.stream(); }

 private:
  void SendPacket();

  MediaFile file_;
  CodecPtr codec_;
  PacketPtr packet_;
  FramePtr frame_;
};

}  // namespace krv::host
