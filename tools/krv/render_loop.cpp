#include "render_loop.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <string>

#include "media/picture_mask.h"
#include "render_stages.h"

namespace krv::tool {
namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// Adds the time until its end to a stage's.
class StageTimer {
 public:
  explicit StageTimer(double* seconds) : seconds_(seconds), start_(Clock::now()) {}
  ~StageTimer() { *seconds_ += SecondsSince(start_); }
  StageTimer(const StageTimer&) = delete;
  StageTimer& operator=(const StageTimer&) = delete;

 private:
  double* seconds_;
  Clock::time_point start_;
};

// What the plug-in says of a frame in which there is nobody to follow, among other things.
bool TellsOfNobody(const std::string& error) {
  return error.find("Input size error") != std::string::npos;
}

void ShowInput(RenderJob* job) {
  if (job->input.width() == 0) {
    job->output.Fill(0, 0, 0, 0);
    return;
  }
  const auto row_bytes = static_cast<size_t>(job->output.width()) * 4;
  for (int y = 0; y < job->output.height(); ++y) {
    std::memcpy(job->output.Row(y), job->input.Row(y), row_bytes);
  }
}

}  // namespace

bool RenderFrame(const host::VideoFormat& video, const host::AudioFormat& audio,
                 host::EffectSession* session, RenderJob* job) {
  host::FrameRequest request;
  request.index = job->index;
  request.rate_numerator = video.rate.numerator;
  request.rate_denominator = video.rate.denominator;
  request.width = video.width;
  request.height = video.height;
  request.input = job->input.width() > 0 ? job->input.Row(0) : nullptr;
  request.input_stride = job->input.stride();
  request.audio = {job->samples.data(), static_cast<int32_t>(job->span.count),
                   static_cast<uint32_t>(audio.channels), audio.sample_rate, job->span.first};
  job->output.Resize(video.width, video.height);
  const bool has_mask = job->mask.width() > 0;
  host::PictureMask mask(&job->mask);
  if (has_mask) session->SetPersonMask(&mask);
  std::string error;
  const bool rendered =
      session->RenderFrame(request, job->output.Row(0), job->output.stride(), &error);
  if (has_mask) session->SetPersonMask(nullptr);
  if (rendered) return true;
  if (session->WantsPersonMask() && TellsOfNobody(error)) {
    ShowInput(job);
    return false;
  }
  throw EffectError("frame " + std::to_string(job->index) + ": " + error);
}

RenderResult RenderLoop::Run(const std::function<bool()>& interrupted,
                             const std::function<void(int64_t)>& progress) {
  RenderResult result;
  const Clock::time_point start = Clock::now();
  std::atomic<int64_t> written{0};
  RunStages({[&](RenderJob* job) {
               const StageTimer timer(&result.stages.decode);
               return input_->Read(job);
             },
             [&](RenderJob* job) {
               {
                 const StageTimer timer(&result.stages.render);
                 const bool drawn = RenderFrame(input_->video(), input_->audio(), session_, job);
                 if (!drawn) ++result.frames_without_person;
               }
               progress(written);
               result.interrupted = interrupted();
               return !result.interrupted;
             },
             [&](const RenderJob& job) {
               const StageTimer timer(&result.stages.encode);
               sink_->Write(job.output, job.samples);
               ++written;
             }});
  result.frames = written;
  if (result.frames > 0 && result.frames_without_person == result.frames) {
    throw EffectError("nobody to follow was found in any of the " + std::to_string(result.frames) +
                      " frames; --mask takes a matte that shows the person");
  }
  if (result.frames > 0) {
    const StageTimer timer(&result.stages.finish);
    sink_->Finish();
  }
  result.seconds = SecondsSince(start);
  return result;
}

}  // namespace krv::tool
