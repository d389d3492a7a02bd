#include "studio/stage.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <future>
#include <utility>

#include "studio/stage_worker.h"

namespace krv::studio {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kLookInterval(120);  // between looks at the package's files
constexpr milliseconds kIdle(8);            // while there is nothing to draw
constexpr double kForget = 0.1;             // weight of the newest frame in the usual time

struct Cancelled {};

}  // namespace

// What the thread keeps from turn to turn.
class Stage::Turns {
 public:
  Turns(Stage* stage, StageWorker* worker) : stage_(stage), worker_(worker) {
    worker_->package().Load();
    PublishPackage();
  }

  void Run() {
    std::unique_lock lock(stage_->mutex_);
    while (!stage_->quit_) {
      std::optional<ExportOrder> order = std::exchange(stage_->order_, std::nullopt);
      const bool changed = settings_revision_ != stage_->settings_revision_;
      if (changed) {
        settings_ = stage_->settings_;
        settings_revision_ = stage_->settings_revision_;
      }
      lock.unlock();
      if (order) Export(*order);
      const bool drawn = Turn(changed);
      lock.lock();
      if (!drawn && !stage_->quit_) stage_->wake_.wait_for(lock, kIdle);
    }
  }

 private:
  // Whether a frame was drawn.
  bool Turn(bool changed) {
    LivePackage& package = worker_->package();
    if (Clock::now() - looked_ > kLookInterval) {
      looked_ = Clock::now();
      if (package.Refresh()) {
        PublishPackage();
        changed = true;
      }
    }
    package.SetQuality(settings_.quality);
    const int64_t frame = DueFrame();
    if (frame == shown_ && !changed) return false;
    const Clock::time_point start = Clock::now();
    worker_->Draw(frame, settings_, &back_);
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    usual_seconds_ += kForget * (seconds - usual_seconds_);
    shown_ = frame;
    {
      const std::lock_guard lock(stage_->mutex_);
      std::swap(stage_->latest_, back_);
      stage_->latest_is_new_ = true;
    }
    stage_->options_.on_news();
    return true;
  }

  // The frame that is due when it will have been drawn.
  int64_t DueFrame() const {
    const PlayerClock& clock = *stage_->options_.clock;
    const double now = stage_->options_.now();
    const double position = clock.Position(now);
    if (!clock.Playing(now)) return stage_->options_.clip->FrameAt(position);
    const double ahead = position + usual_seconds_;
    const bool over = clock.loop() && ahead >= clock.length();
    return stage_->options_.clip->FrameAt(over ? ahead - clock.length() : ahead);
  }

  void PublishPackage() {
    LivePackage& package = worker_->package();
    PackageState state;
    state.version = ++version_;
    state.ready = package.session() != nullptr;
    state.findings = package.findings();
    state.unique_name = package.unique_name();
    state.package_quality = package.own_quality();
    if (state.ready) {
      state.effect = package.session()->effect();
      state.wants_person = package.session()->WantsPersonMask();
    }
    {
      const std::lock_guard lock(stage_->mutex_);
      stage_->package_ = std::move(state);
    }
    stage_->loaded_.notify_all();
    stage_->options_.on_news();
  }

  void PublishExport(const ExportState& state) {
    {
      const std::lock_guard lock(stage_->mutex_);
      stage_->export_ = state;
    }
    stage_->options_.on_news();
  }

  void Export(const ExportOrder& order) {
    const auto report = [this](const ExportState& state) {
      {
        const std::lock_guard lock(stage_->mutex_);
        if (stage_->cancel_ || stage_->quit_) throw Cancelled();
      }
      PublishExport(state);
    };
    ExportState state;
    state.output = order.output;
    try {
      state = worker_->Render({order.output, order.transparent, order.values}, report);
    } catch (const Cancelled&) {
      state.phase = ExportState::Phase::kCancelled;
    } catch (const std::exception& error) {
      state.phase = ExportState::Phase::kFailed;
      state.message = error.what();
    }
    PublishExport(state);
  }

  Stage* stage_;
  StageWorker* worker_;
  PreviewSettings settings_;
  uint64_t settings_revision_ = 0;
  int64_t version_ = 0;
  StageFrame back_;
  int64_t shown_ = -1;
  double usual_seconds_ = 0;
  Clock::time_point looked_;
};

std::unique_ptr<Stage> Stage::Create(StageOptions options, const PreviewSettings& settings,
                                     std::string* error) {
  std::unique_ptr<Stage> stage(new Stage(std::move(options)));
  stage->settings_ = settings;
  stage->settings_revision_ = 1;
  std::promise<std::string> started;
  auto answer = started.get_future();
  stage->thread_ = std::thread([&stage = *stage, started = std::move(started)]() mutable {
    stage.Work(std::move(started));
  });
  *error = answer.get();
  return error->empty() ? std::move(stage) : nullptr;
}

Stage::~Stage() {
  {
    const std::lock_guard lock(mutex_);
    quit_ = true;
  }
  wake_.notify_all();
  if (thread_.joinable()) thread_.join();
}

void Stage::Work(std::promise<std::string> started) {
  std::string error;
  try {
    const auto worker = StageWorker::Create(options_, &error);
    if (worker == nullptr) {
      started.set_value(error);
      return;
    }
    started.set_value({});
    Turns(this, worker.get()).Run();
  } catch (const std::exception& failure) {
    const std::lock_guard lock(mutex_);
    failure_ = failure.what();
  }
  loaded_.notify_all();
  options_.on_news();
}

void Stage::SetPreview(const PreviewSettings& settings) {
  {
    const std::lock_guard lock(mutex_);
    settings_ = settings;
    ++settings_revision_;
  }
  wake_.notify_all();
}

bool Stage::TakeFrame(StageFrame* frame) {
  const std::lock_guard lock(mutex_);
  if (!latest_is_new_) return false;
  std::swap(latest_, *frame);
  latest_is_new_ = false;
  return true;
}

void Stage::AwaitPackage() {
  std::unique_lock lock(mutex_);
  loaded_.wait(lock, [this] { return package_.version > 0 || !failure_.empty(); });
}

PackageState Stage::package() const {
  const std::lock_guard lock(mutex_);
  return package_;
}

ExportState Stage::export_state() const {
  const std::lock_guard lock(mutex_);
  return export_;
}

std::string Stage::failure() const {
  const std::lock_guard lock(mutex_);
  return failure_;
}

void Stage::StartExport(const std::string& output, bool transparent,
                        const tool::ParameterTracks& values) {
  {
    const std::lock_guard lock(mutex_);
    cancel_ = false;
    export_ = {};
    export_.phase = ExportState::Phase::kPreparing;
    export_.output = output;
    order_ = ExportOrder{output, transparent, values};
  }
  wake_.notify_all();
}

void Stage::CancelExport() {
  const std::lock_guard lock(mutex_);
  cancel_ = true;
}

void Stage::ForgetExport() {
  const std::lock_guard lock(mutex_);
  export_ = {};
}

}  // namespace krv::studio
