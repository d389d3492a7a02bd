// The clip that is made on the way.
#include <optional>
#include <utility>

#include "demo_music.h"
#include "demo_picture.h"
#include "gallery/gallery_person.h"
#include "media/audio_timeline.h"
#include "media/media_error.h"
#include "media/media_writer.h"
#include "studio/clip.h"
#include "temporary_folder.h"
#include "utf8_path.h"

namespace krv::studio {
namespace {

namespace fs = std::filesystem;

constexpr host::PictureSize kSize{1280, 720};
constexpr int kSampleRate = 48000;
constexpr int kFineQuality = 12;  // of the files that an export starts from

class DemoClip final : public Clip {
 public:
  DemoClip() {
    name_ = "Demo clip";
    video_ = {kSize.width, kSize.height, {30, 1}, 1, 1};
    sound_.format = {kSampleRate, 2, 0};
    sound_.samples = demo::MakeMusic(kSampleRate);
    frame_count_ = host::FramesForSamples(sound_.Length(), video_.rate, kSampleRate);
  }

  void Read(int64_t frame, host::PictureSize size, bool with_person,
            tool::RenderJob* job) override {
    ReadSound(frame, job);
    const double seconds = static_cast<double>(frame) / video_.rate.PerSecond();
    if (size.width != drawn_.width || size.height != drawn_.height) {
      picture_.emplace(size.width, size.height);
      drawn_ = size;
    }
    picture_->Draw(seconds, &job->input);
    if (with_person) {
      *job = tool::WithPerson(*job, seconds);
    } else {
      job->mask = host::Picture();
    }
  }

  tool::RenderArguments ExportArguments(bool with_person,
                                        const std::function<void(double)>& go_on) override {
    if (folder_ == nullptr || written_with_person_ != with_person) Write(with_person, go_on);
    tool::RenderArguments arguments;
    arguments.inputs = {host::Utf8(folder_->path() / kMovie)};
    if (with_person) arguments.mask = host::Utf8(folder_->path() / kMatte);
    return arguments;
  }

 private:
  static constexpr const char* kMovie = "demo.mp4";
  static constexpr const char* kMatte = "matte.mp4";

  void Write(bool with_person, const std::function<void(double)>& go_on) {
    std::string error;
    auto folder = host::TemporaryFolder::Create(&error);
    if (folder == nullptr) throw host::MediaError(error);
    host::MediaWriter movie(folder->path() / kMovie, Settings(folder->path() / kMovie));
    std::optional<host::MediaWriter> matte;
    if (with_person) matte.emplace(folder->path() / kMatte, Settings(folder->path() / kMatte));
    tool::RenderJob job;
    for (int64_t frame = 0; frame < frame_count_; ++frame) {
      go_on(static_cast<double>(frame) / static_cast<double>(frame_count_));
      Read(frame, kSize, with_person, &job);
      movie.Write(job.input, job.samples);
      if (matte) matte->Write(job.mask, job.samples);
    }
    movie.Finish();
    if (matte) matte->Finish();
    folder_ = std::move(folder);
    written_with_person_ = with_person;
  }

  host::MovieSettings Settings(const fs::path& path) const {
    host::MovieSettings settings;
    settings.output = host::ChooseOutputFormat(path, false);
    settings.video = video_;
    settings.quality.crf = kFineQuality;
    settings.audio = sound_.format;
    return settings;
  }

  std::optional<demo::DemoPicture> picture_;
  host::PictureSize drawn_;                        // picture_'s
  std::unique_ptr<host::TemporaryFolder> folder_;  // of the written files; null before
  bool written_with_person_ = false;
};

}  // namespace

std::unique_ptr<Clip> MakeDemoClip() { return std::make_unique<DemoClip>(); }

}  // namespace krv::studio
