#include "render_stages.h"

#include <exception>
#include <thread>
#include <utility>

#include "bounded_queue.h"

namespace krv::tool {
namespace {

// Jobs go round: idle, read, drawn, idle again. No push waits: each queue has room for all of them.
struct JobQueues {
  BoundedQueue<RenderJob> idle{kFramesInFlight};
  BoundedQueue<RenderJob> read{kFramesInFlight};
  BoundedQueue<RenderJob> drawn{kFramesInFlight};

  void Cancel() {
    idle.Cancel();
    read.Cancel();
    drawn.Cancel();
  }
};

// A stage's thread.
class StageThread {
 public:
  StageThread(JobQueues* queues, std::function<void()> work)
      : queues_(queues), work_(std::move(work)), thread_([this] { Run(); }) {}
  ~StageThread() {
    if (!thread_.joinable()) return;
    queues_->Cancel();
    thread_.join();
  }
  StageThread(const StageThread&) = delete;
  StageThread& operator=(const StageThread&) = delete;

  // Waits for the end of the work, and throws what it threw.
  void Finish() {
    thread_.join();
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  void Run() {
    try {
      work_();
    } catch (...) {
      failure_ = std::current_exception();
    }
  }

  JobQueues* queues_;
  std::function<void()> work_;
  std::exception_ptr failure_;
  std::thread thread_;  // last: it uses the others
};

// Closes the way to the next stage, however this one ends.
class ClosedAtEnd {
 public:
  explicit ClosedAtEnd(BoundedQueue<RenderJob>* queue) : queue_(queue) {}
  ~ClosedAtEnd() { queue_->Close(); }
  ClosedAtEnd(const ClosedAtEnd&) = delete;
  ClosedAtEnd& operator=(const ClosedAtEnd&) = delete;

 private:
  BoundedQueue<RenderJob>* queue_;
};

void ReadAll(const RenderStages& stages, JobQueues* queues) {
  const ClosedAtEnd closed(&queues->read);
  while (auto job = queues->idle.Pop()) {
    if (!stages.read(&*job) || !queues->read.Push(std::move(*job))) return;
  }
}

// True when the last frame that was read is drawn, false when drawing ended before.
bool DrawAll(const RenderStages& stages, JobQueues* queues) {
  const ClosedAtEnd closed(&queues->drawn);
  while (auto job = queues->read.Pop()) {
    const bool go_on = stages.draw(&*job);
    if (!queues->drawn.Push(std::move(*job)) || !go_on) return false;
  }
  return true;
}

void WriteAll(const RenderStages& stages, JobQueues* queues) {
  try {
    while (auto job = queues->drawn.Pop()) {
      stages.write(*job);
      queues->idle.Push(std::move(*job));
    }
  } catch (...) {
    queues->Cancel();  // no other stage has anything left to do
    throw;
  }
}

}  // namespace

void RunStages(const RenderStages& stages) {
  JobQueues queues;
  for (size_t i = 0; i < kFramesInFlight; ++i) queues.idle.Push({});
  StageThread reader(&queues, [&] { ReadAll(stages, &queues); });
  StageThread writer(&queues, [&] { WriteAll(stages, &queues); });
  bool drew_all = false;
  std::exception_ptr failure;
  try {
    drew_all = DrawAll(stages, &queues);
  } catch (...) {
    failure = std::current_exception();
  }
  // Stages further on were at earlier frames.
  writer.Finish();
  if (failure) std::rethrow_exception(failure);
  // A failure to read counts only where drawing came that far.
  if (drew_all) reader.Finish();
}

}  // namespace krv::tool
