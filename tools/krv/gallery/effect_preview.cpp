#include "gallery/effect_preview.h"

#include <fstream>
#include <opencv2/core.hpp>
#include <sstream>
#include <utility>

#include "gallery/gallery_person.h"
#include "media/media_error.h"
#include "media/media_writer.h"
#include "platform/file_system.h"
#include "render_loop.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

constexpr int kQuality = 36;  // of VP9; films are small on the page

std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(host::platform::OpenablePath(path), std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  if (!file) throw host::MediaError(host::Utf8(path) + ": cannot be read");
  return bytes.str();
}

// How much of a picture the effect has changed, in sums of bytes.
double Difference(const host::Picture& before, const host::Picture& after) {
  const auto as_mat = [](const host::Picture& picture) {
    return cv::Mat(picture.height(), picture.width(), CV_8UC4, const_cast<uint8_t*>(picture.Row(0)),
                   static_cast<size_t>(picture.stride()));
  };
  return cv::norm(as_mat(before), as_mat(after), cv::NORM_L1);
}

}  // namespace

std::optional<EffectPreview> RenderPreview(GalleryClip* clip, host::EffectSession* session,
                                           const std::filesystem::path& scratch,
                                           const std::function<bool()>& go_on) {
  host::MovieSettings settings;
  settings.output = host::ChooseOutputFormat(scratch, false);
  settings.video = clip->video;
  settings.quality.crf = kQuality;
  settings.audio = clip->audio;
  host::MediaWriter writer(scratch, settings);
  EffectPreview preview;
  double most_change = -1;
  const double rate = clip->video.rate.PerSecond();
  for (RenderJob& frame : clip->frames) {
    RenderJob with_person;
    if (session->WantsPersonMask()) {
      with_person = WithPerson(frame, static_cast<double>(frame.index) / rate);
    }
    RenderJob& job = session->WantsPersonMask() ? with_person : frame;
    RenderFrame(clip->video, clip->audio, session, &job);
    writer.Write(job.output, job.samples);
    const double change = Difference(job.input, job.output);
    if (change > most_change) {
      most_change = change;
      preview.still = std::move(job.output);
    }
    job.output = host::Picture();
    if (!go_on()) return std::nullopt;
  }
  writer.Finish();
  preview.film = ReadBytes(scratch);
  return preview;
}

}  // namespace krv::tool
