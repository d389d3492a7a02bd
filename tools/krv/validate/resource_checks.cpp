// What stays behind: memory, handles, OpenGL's objects, the host's frames.
#include <algorithm>
#include <limits>
#include <string>

#include "platform/process.h"
#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

// Growth is judged by the best of some rounds: what is lost for good is lost in every one.
constexpr int kRounds = 3;
constexpr int64_t kMemoryNoise = 3 << 20;  // bytes of a round
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Sanitizers keep freed blocks, and a history of their own.
constexpr bool kMemoryIsJudged = false;
#else
constexpr bool kMemoryIsJudged = true;
#endif

constexpr int64_t kMost = std::numeric_limits<int64_t>::max();

struct Growth {
  int64_t bytes = kMost;
  int64_t handles = kMost;
  GlObjects objects = {kMost, kMost, kMost, kMost, kMost};
};

constexpr struct {
  const char* what;
  int64_t GlObjects::*count;
} kObjectKinds[] = {{"textures", &GlObjects::textures},
                    {"buffers", &GlObjects::buffers},
                    {"framebuffers", &GlObjects::framebuffers},
                    {"programs", &GlObjects::programs},
                    {"shaders", &GlObjects::shaders}};

// The same in every round: sizes come and go, but what they need is there after the first.
FrameCase FrameAt(int64_t index) {
  FrameCase frame;
  frame.index = index;
  frame.SetShape({.width = 64 + 32 * static_cast<int32_t>(index % 3), .height = 48});
  return frame;
}

// `round` is called once more before, to get going.
template <class Round>
Growth LeastGrowth(Round&& round) {
  Growth least;
  round();
  for (int i = 0; i < kRounds; ++i) {
    const GlObjects objects = CountGlObjects();
    const int64_t bytes = host::platform::ResidentBytes();
    const int64_t handles = host::platform::OpenHandles();
    round();
    least.bytes = std::min(least.bytes, host::platform::ResidentBytes() - bytes);
    least.handles = std::min(least.handles, host::platform::OpenHandles() - handles);
    const GlObjects after = CountGlObjects();
    for (const auto& [what, count] : kObjectKinds) {
      least.objects.*count = std::min(least.objects.*count, after.*count - objects.*count);
    }
  }
  return least;
}

void Judge(Bench& bench, const Growth& growth) {
  Examiner& examiner = bench.examiner();
  examiner.Expect(!kMemoryIsJudged || growth.bytes < kMemoryNoise, "memory that does not grow",
                  std::to_string(growth.bytes >> 10) + " KiB more in every round");
  examiner.Expect(growth.handles <= 0, "no more open files and handles",
                  std::to_string(growth.handles) + " more in every round");
  for (const auto& [what, count] : kObjectKinds) {
    examiner.Expect(growth.objects.*count <= 0, std::string("no more GL ") + what,
                    std::to_string(growth.objects.*count) + " more in every round");
  }
  examiner.Expect(bench.services().LiveFrameCount() <= 1, "the host's frames given back",
                  std::to_string(bench.services().LiveFrameCount()) + " kept");
}

void Live(Trial& trial, int64_t frames) {
  if (!trial.Initialise()) return;
  for (int64_t index = 0; index < frames; ++index) trial.RenderOnce(FrameAt(index));
  trial.Release();
}

}  // namespace

void CheckManyFrames(Bench& bench) {
  const int64_t frames = bench.Has(kEverything) ? 1500 : bench.Has(kLarge) ? 600 : 150;
  bench.Prepare();
  Trial trial(&bench, bench.first_effect().unique_name);
  if (!trial.Initialise()) return;
  const auto render = [&] {
    for (int64_t index = 0; index < frames; ++index) trial.RenderOnce(FrameAt(index));
  };
  bench.examiner().Step("rounds of " + std::to_string(frames) + " frames");
  Judge(bench, LeastGrowth(render));
  trial.Release();
}

void CheckFullLives(Bench& bench) {
  const int lives = bench.Has(kEverything) ? 250 : bench.Has(kLarge) ? 60 : 12;
  constexpr int64_t kFrames = 2;
  bench.Prepare();
  const auto effects = bench.ChosenEffects();
  const auto live = [&] {
    for (int i = 0; i < lives; ++i) {
      Trial trial(&bench, effects[static_cast<size_t>(i) % effects.size()].unique_name);
      Live(trial, kFrames);
    }
  };
  bench.examiner().Step("rounds of " + std::to_string(lives) + " lives of " +
                        std::to_string(kFrames) + " frames");
  Judge(bench, LeastGrowth(live));
  bench.examiner().ExpectCount("frames of the host kept",
                               static_cast<int64_t>(bench.services().LiveFrameCount()), 0);
}

void CheckFailedLives(Bench& bench) {
  const int lives = bench.Has(kLarge) ? 300 : 50;
  bench.Prepare();
  const auto live = [&] {
    for (int i = 0; i < lives; ++i) {
      Trial trial(&bench, bench.first_effect().unique_name);
      bench.gl().ClearCurrent();
      ScriptedContext context;
      bench.examiner().Call("slot 1", [&] { return trial.effect().Initialize(&context); });
      bench.gl().MakeCurrent();
    }
  };
  bench.examiner().Step("rounds of lives whose slot 1 has no context");
  Judge(bench, LeastGrowth(live));
}

}  // namespace krv::tool
