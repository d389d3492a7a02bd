#include "studio/clip.h"

#include "media/audio_timeline.h"

#include <algorithm>
#include <cmath>

namespace krv::studio {

int64_t Clip::FrameAt(double position) const {
  constexpr double kSlack = 1e-6;  // frames; times are rounded
  const auto frame = static_cast<int64_t>(std::floor(position * video_.rate.PerSecond() + kSlack));
  return std::clamp<int64_t>(frame, 0, frame_count_ - 1);
}

void Clip::ReadSound(int64_t frame, tool::RenderJob* job) const {
  job->index = frame;
  job->span = host::SamplesOfFrame(frame, video_.rate, sound_.format.sample_rate);
  sound_.Read(job->span.first, job->span.count, &job->samples);
}

}  // namespace krv::studio
