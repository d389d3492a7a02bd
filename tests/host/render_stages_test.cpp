#include "render_stages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <latch>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace krv::tool {
namespace {

constexpr int64_t kNever = -1;

// Stages that note what they do, and fail or end where they are told to.
class Stages {
 public:
  int64_t frames = 20;
  int64_t read_failure = kNever;
  int64_t draw_failure = kNever;
  int64_t write_failure = kNever;
  int64_t last_drawn = kNever;  // an interrupt after this frame
  std::chrono::milliseconds read_time{0};
  std::chrono::milliseconds draw_time{0};
  std::chrono::milliseconds write_time{0};

  std::vector<int64_t> written;
  std::set<const uint8_t*> buffers;
  std::atomic<int64_t> most_behind{0};  // frames read and not yet written

  // What the run throws; empty when it ends well.
  std::string Run() {
    try {
      RunStages({[this](RenderJob* job) { return Read(job); },
                 [this](RenderJob* job) { return Draw(job); },
                 [this](const RenderJob& job) { Write(job); }});
    } catch (const std::runtime_error& failure) {
      return failure.what();
    }
    return "";
  }

 private:
  static void Fail(bool now, const char* what) {
    if (now) throw std::runtime_error(what);
  }

  bool Read(RenderJob* job) {
    std::this_thread::sleep_for(read_time);
    Fail(next_ == read_failure, "read");
    if (next_ == frames) return false;
    job->input.Resize(16, 16);
    job->index = next_++;
    ++behind_;
    if (behind_ > most_behind) most_behind = behind_.load();
    return true;
  }

  bool Draw(RenderJob* job) {
    EXPECT_EQ(std::this_thread::get_id(), caller_);
    std::this_thread::sleep_for(draw_time);
    Fail(job->index == draw_failure, "draw");
    return job->index != last_drawn;
  }

  void Write(const RenderJob& job) {
    std::this_thread::sleep_for(write_time);
    Fail(job.index == write_failure, "write");
    buffers.insert(job.input.Row(0));
    written.push_back(job.index);
    --behind_;
  }

  std::thread::id caller_ = std::this_thread::get_id();
  int64_t next_ = 0;
  std::atomic<int64_t> behind_{0};
};

std::vector<int64_t> Upto(int64_t end) {
  std::vector<int64_t> frames;
  for (int64_t frame = 0; frame < end; ++frame) frames.push_back(frame);
  return frames;
}

constexpr std::chrono::milliseconds kSlow(3);

TEST(RenderStages, EveryFrameIsWrittenOnceInOrderWhicheverStageIsSlow) {
  for (int slow = 0; slow < 4; ++slow) {
    Stages stages;
    if (slow == 1) stages.read_time = kSlow;
    if (slow == 2) stages.draw_time = kSlow;
    if (slow == 3) stages.write_time = kSlow;
    EXPECT_EQ(stages.Run(), "") << slow;
    EXPECT_EQ(stages.written, Upto(20)) << slow;
  }
}

TEST(RenderStages, NoFramesAreNoFailure) {
  Stages stages;
  stages.frames = 0;
  EXPECT_EQ(stages.Run(), "");
  EXPECT_TRUE(stages.written.empty());
}

TEST(RenderStages, FewFramesAreInMemoryAndTheirBuffersAreUsedAgain) {
  Stages stages;
  stages.frames = 100;
  stages.write_time = std::chrono::milliseconds(1);
  EXPECT_EQ(stages.Run(), "");
  EXPECT_LE(stages.most_behind, static_cast<int64_t>(kFramesInFlight));
  EXPECT_LE(stages.buffers.size(), kFramesInFlight);
}

TEST(RenderStages, TheStagesWorkAtTheSameTime) {
  // Each waits for the other two to be at work; with stages in turn the test would never end.
  std::latch all_at_work(3);
  int64_t next = 0;
  RunStages({[&](RenderJob* job) {
               job->index = next++;
               if (job->index == 2) all_at_work.arrive_and_wait();
               return job->index < 10;
             },
             [&](RenderJob* job) {
               if (job->index == 1) all_at_work.arrive_and_wait();
               return true;
             },
             [&](const RenderJob& job) {
               if (job.index == 0) all_at_work.arrive_and_wait();
             }});
  EXPECT_TRUE(all_at_work.try_wait());
}

TEST(RenderStages, AFailureComesAfterTheFramesBeforeIt) {
  for (int64_t frame = 0; frame < 20; ++frame) {
    Stages read;
    read.read_failure = frame;
    EXPECT_EQ(read.Run(), "read");
    EXPECT_EQ(read.written, Upto(frame));
    Stages draw;
    draw.draw_failure = frame;
    EXPECT_EQ(draw.Run(), "draw");
    EXPECT_EQ(draw.written, Upto(frame));
    Stages write;
    write.write_failure = frame;
    EXPECT_EQ(write.Run(), "write");
    EXPECT_EQ(write.written, Upto(frame));
  }
}

TEST(RenderStages, OfSeveralFailuresTheEarliestFramesCounts) {
  for (const std::chrono::milliseconds write_time : {std::chrono::milliseconds(0), kSlow}) {
    Stages stages;
    stages.write_time = write_time;
    stages.read_failure = 9;
    stages.draw_failure = 8;
    stages.write_failure = 7;
    EXPECT_EQ(stages.Run(), "write");
    Stages two;
    two.write_time = write_time;
    two.read_failure = 9;
    two.draw_failure = 8;
    EXPECT_EQ(two.Run(), "draw");
    EXPECT_EQ(two.written, Upto(8));
  }
}

TEST(RenderStages, AfterAnInterruptTheDrawnFramesAreWrittenAndNoOthers) {
  for (const std::chrono::milliseconds write_time : {std::chrono::milliseconds(0), kSlow}) {
    Stages stages;
    stages.write_time = write_time;
    stages.last_drawn = 6;
    stages.read_failure = 8;  // nobody wants this frame any more
    EXPECT_EQ(stages.Run(), "");
    EXPECT_EQ(stages.written, Upto(7));
  }
}

}  // namespace
}  // namespace krv::tool
