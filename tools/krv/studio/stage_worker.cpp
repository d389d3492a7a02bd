#include "studio/stage_worker.h"

#include <chrono>
#include <utility>

#include "media/media_error.h"
#include "render_loop.h"
#include "render_output.h"
#include "render_report.h"

namespace krv::studio {
namespace {

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

host::FrameRequest RequestFor(const Clip& clip, const tool::RenderJob& job) {
  host::FrameRequest request;
  request.index = job.index;
  request.rate_numerator = clip.video().rate.numerator;
  request.rate_denominator = clip.video().rate.denominator;
  request.audio = {job.samples.data(), static_cast<int32_t>(job.span.count),
                   static_cast<uint32_t>(clip.sound().format.channels),
                   clip.sound().format.sample_rate, job.span.first};
  return request;
}

}  // namespace

std::unique_ptr<StageWorker> StageWorker::Create(const StageOptions& options, std::string* error) {
  auto host = host::PluginHost::Create({.plugin = options.plugin}, error);
  if (host == nullptr || !host->MakeContextCurrent(error)) return nullptr;
  auto probe = SoundProbe::Create(host, error);
  if (probe == nullptr) return nullptr;
  auto package = std::make_unique<LivePackage>(host, options.package);
  return std::unique_ptr<StageWorker>(
      new StageWorker(options.clip, std::move(host), std::move(probe), std::move(package)));
}

bool StageWorker::ReadInput(int64_t index, host::PictureSize size, StageFrame* frame) {
  host::EffectSession* session = package_->session();
  const bool with_person = session != nullptr && session->WantsPersonMask();
  const bool there = index == read_index_ && with_person == read_with_person_ &&
                     size.width == job_.input.width() && size.height == job_.input.height();
  if (there) return true;
  try {
    clip_->Read(index, size, with_person, &job_);
  } catch (const std::exception& error) {
    frame->problem = error.what();
    read_index_ = -1;
    return false;
  }
  read_index_ = index;
  read_with_person_ = with_person;
  return true;
}

void StageWorker::DrawEffect(const PreviewSettings& settings, StageFrame* frame) {
  host::EffectSession* session = package_->session();
  session->SetParameterSource(&settings.values);
  host::VideoFormat video = clip_->video();
  video.width = settings.size.width;
  video.height = settings.size.height;
  try {
    if (!tool::RenderFrame(video, clip_->sound().format, session, &job_)) {
      frame->problem = "Nobody to follow in this frame: it is shown as it came.";
    }
    std::swap(frame->picture, job_.output);
  } catch (const std::exception& error) {
    frame->problem = error.what();
    host::CopyPicture(job_.input, &frame->picture);
  }
  session->SetParameterSource(nullptr);
}

void StageWorker::Draw(int64_t index, const PreviewSettings& settings, StageFrame* frame) {
  frame->index = index;
  frame->problem.clear();
  Clock::time_point start = Clock::now();
  const bool read = ReadInput(index, settings.size, frame);
  frame->input_ms = MillisecondsSince(start);
  frame->effect_ms = 0;
  if (!read) return;
  frame->sound = probe_->Read(RequestFor(*clip_, job_));
  if (package_->session() == nullptr) {
    host::CopyPicture(job_.input, &frame->picture);
    return;
  }
  start = Clock::now();
  DrawEffect(settings, frame);
  frame->effect_ms = MillisecondsSince(start);
}

ExportState StageWorker::Render(const Export& order,
                                const std::function<void(const ExportState&)>& report) {
  ExportState state;
  state.output = order.output;
  state.phase = ExportState::Phase::kPreparing;
  report(state);
  // Before a clip is written for it.
  tool::RenderArguments wish;
  wish.output = order.output;
  wish.transparent = order.transparent;
  tool::ParseRenderOptions(wish);
  std::string error;
  const auto session = package_->MakeSession(order.transparent, &error);
  if (session == nullptr) throw host::MediaError(error);
  session->SetParameterSource(&order.values);

  tool::RenderArguments arguments =
      clip_->ExportArguments(session->WantsPersonMask(), [&state, &report](double share) {
        state.share = share;
        report(state);
      });
  arguments.output = order.output;
  arguments.transparent = order.transparent;
  const tool::RenderOptions options = tool::ParseRenderOptions(arguments);
  tool::RenderInput input(options);
  const auto sink = tool::MakeOutput(options, input);
  state.phase = ExportState::Phase::kRendering;
  state.total = input.ExpectedFrames();
  report(state);
  const Clock::time_point start = Clock::now();
  const tool::RenderResult result = tool::RenderLoop(&input, session.get(), sink.get())
                                        .Run([] { return false; },
                                             [&state, &report, start](int64_t frames) {
                                               state.frames = frames;
                                               state.seconds = MillisecondsSince(start) / 1000;
                                               report(state);
                                             });
  state.phase = ExportState::Phase::kDone;
  state.frames = result.frames;
  state.seconds = result.seconds;
  state.message = tool::Summary(result, options.output);
  return state;
}

}  // namespace krv::studio
