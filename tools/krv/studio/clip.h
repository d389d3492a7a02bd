// What the studio plays.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "media/frame_source.h"
#include "media/still_source.h"
#include "render_input.h"
#include "render_options.h"
#include "studio/sound_track.h"

namespace krv::studio {

// Pictures in any order, and all of the sound. After it is made, Read and ExportArguments on one
// thread, the rest on any. Operations throw MediaError.
class Clip {
 public:
  virtual ~Clip() = default;

  const std::string& name() const { return name_; }  // for people
  const host::VideoFormat& video() const { return video_; }
  const SoundTrack& sound() const { return sound_; }
  int64_t frame_count() const { return frame_count_; }    // at least 1
  double Length() const { return TimeOf(frame_count_); }  // seconds
  double TimeOf(int64_t frame) const {                    // seconds
    return static_cast<double>(frame) / video_.rate.PerSecond();
  }
  // The frame that is shown at a position in seconds; that of a frame's time is the frame itself.
  int64_t FrameAt(double position) const;

  // Fills everything of the job but its output, the picture scaled to `size`. `with_person`: the
  // effect follows somebody.
  virtual void Read(int64_t frame, host::PictureSize size, bool with_person,
                    tool::RenderJob* job) = 0;

  // The inputs of a render of this clip. A clip that has no files writes them first, and asks
  // `go_on` at every frame, with the share that is done, whether to; throws what that throws.
  virtual tool::RenderArguments ExportArguments(bool with_person,
                                                const std::function<void(double)>& go_on) = 0;

 protected:
  void ReadSound(int64_t frame, tool::RenderJob* job) const;

  std::string name_;
  host::VideoFormat video_;
  SoundTrack sound_;
  int64_t frame_count_ = 1;
};

// The clip of the inputs that `krv render` takes: a video with sound, sound alone, or both; with
// those of its options that name inputs.
std::unique_ptr<Clip> OpenClip(const tool::RenderArguments& inputs);

// The demo: music and a moving background made on the way, and somebody in it when wanted.
std::unique_ptr<Clip> MakeDemoClip();

}  // namespace krv::studio
