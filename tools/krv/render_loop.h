// Drives frames through the stages.
#pragma once

#include <functional>

#include "effect_session.h"
#include "media/frame_sink.h"
#include "render_input.h"
#include "render_report.h"

namespace krv::tool {

// Thrown when the effect fails on a frame; what() is one line.
class EffectError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Renders the job's frame into job->output. False when the effect follows a person and there is
// none in this frame: the output is the input then, or transparent without one. Throws EffectError.
bool RenderFrame(const host::VideoFormat& video, const host::AudioFormat& audio,
                 host::EffectSession* session, RenderJob* job);

class RenderLoop {
 public:
  // Borrowed for the object's life.
  RenderLoop(RenderInput* input, host::EffectSession* session, host::FrameSink* sink)
      : input_(input), session_(session), sink_(sink) {}

  // Renders every frame of the input, or until `interrupted` says so after a frame, and finishes
  // the output when there was a frame at all. `progress` gets the number of frames written so far.
  // Both are called on the caller's thread, as the session is; the input and the sink are used on
  // two others until Run ends. At most kFramesInFlight frames are in memory. Throws MediaError and
  // EffectError, the latter also when no frame at all showed a person to follow.
  RenderResult Run(const std::function<bool()>& interrupted,
                   const std::function<void(int64_t)>& progress);

 private:
  RenderInput* input_;
  host::EffectSession* session_;
  host::FrameSink* sink_;
};

}  // namespace krv::tool
