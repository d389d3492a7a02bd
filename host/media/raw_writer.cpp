#include "media/raw_writer.h"

#include <algorithm>
#include <utility>

#include "media/media_error.h"
#include "media/media_url.h"
#include "utf8_path.h"

extern "C" {
#include <libavformat/avio.h>
}

namespace krv::host {

void RawWriter::CloseFile::operator()(AVIOContext* file) const { avio_close(file); }

RawWriter::RawWriter(const std::filesystem::path& path) : name_(Utf8(path)), part_(path) {
  Open(MediaUrl(part_->path()));
}

RawWriter::RawWriter(int descriptor, std::string name) : name_(std::move(name)) {
  Open("pipe:" + std::to_string(descriptor));
}

void RawWriter::Open(const std::string& url) {
  AVIOContext* file = nullptr;
  // Direct: pictures go to the system from where they are.
  CheckAv(avio_open(&file, url.c_str(), AVIO_FLAG_WRITE | AVIO_FLAG_DIRECT), name_);
  file_.reset(file);
}

void RawWriter::Check() const { CheckAv(file_->error, name_); }

// A file says how much it takes at once, and refuses more.
void RawWriter::Put(const uint8_t* bytes, int count) {
  const int most = file_->max_packet_size > 0 ? file_->max_packet_size : count;
  for (int done = 0; done < count; done += most) {
    avio_write(file_.get(), bytes + done, std::min(most, count - done));
  }
}

void RawWriter::Write(const Picture& picture, const std::vector<int16_t>&) {
  const int row_bytes = picture.width() * 4;
  if (picture.stride() == row_bytes) {
    Put(picture.Row(0), row_bytes * picture.height());
  } else {
    for (int y = 0; y < picture.height(); ++y) Put(picture.Row(y), row_bytes);
  }
  Check();
}

void RawWriter::Finish() {
  avio_flush(file_.get());
  Check();
  CheckAv(avio_close(file_.release()), name_);
  if (part_) part_->Commit();
}

}  // namespace krv::host
