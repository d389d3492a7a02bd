#include "bench/frame_runner.h"

#include <glad/gl.h>

#include <stdexcept>

namespace krv::tool {

FrameRunner::FrameRunner(const std::shared_ptr<host::PluginHost>& host, const Wishes& wishes,
                         BenchScene* scene, const FrameRing* frames)
    : scene_(scene), frames_(frames) {
  std::string error;
  for (int i = 0; i < wishes.instances; ++i) {
    auto session = host::EffectSession::Create(host, wishes.unique_name, &error);
    if (session == nullptr) throw std::runtime_error(error);
    for (const std::string& assignment : wishes.parameters) {
      if (!session->parameters().Assign(session->effect(), assignment, &error)) {
        throw std::invalid_argument(error);
      }
    }
    session->SetPersonMask(scene);
    sessions_.push_back(std::move(session));
  }
}

void FrameRunner::Run(int64_t frame) {
  host::FrameRequest request;
  request.index = frame;
  request.rate_numerator = BenchScene::kFrameRate;
  request.audio = scene_->Audio(frame);
  host::EffectSession& session = *sessions_[static_cast<size_t>(frame) % sessions_.size()];
  std::string error;
  if (!session.ProcessFrame(request, frames_->input(frame), frames_->output(frame), &error)) {
    throw std::runtime_error(error);
  }
  glFinish();
}

}  // namespace krv::tool
