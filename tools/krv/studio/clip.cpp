#include "studio/clip.h"

#include "media/audio_timeline.h"

namespace krv::studio {

void Clip::ReadSound(int64_t frame, tool::RenderJob* job) const {
  job->index = frame;
  job->span = host::SamplesOfFrame(frame, video_.rate, sound_.format.sample_rate);
  sound_.Read(job->span.first, job->span.count, &job->samples);
}

}  // namespace krv::studio
