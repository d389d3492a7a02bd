// Several instances: in one context, in two, and driven from several threads.
#include <atomic>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

using Pictures = std::vector<std::optional<Rows>>;

constexpr int64_t kFrames = 8;

FrameCase FrameAt(int64_t index) {
  FrameCase frame;
  frame.index = index;
  frame.SetShape({.width = 40 + static_cast<int32_t>(index % 3) * 11, .height = 30});
  return frame;
}

Pictures RenderAlone(Bench& bench, const std::string& name) {
  bench.examiner().Step("frames of \"" + name + "\" alone");
  Pictures pictures;
  Trial trial(&bench, name);
  if (!trial.Initialise()) throw CannotGoOn("there is no instance to compare with");
  for (int64_t index = 0; index < kFrames; ++index) {
    pictures.push_back(trial.RenderOnce(FrameAt(index)));
  }
  trial.Release();
  return pictures;
}

// The names of three instances, of different effects if there are.
std::vector<std::string> ThreeNames(Bench& bench) {
  std::vector<std::string> names;
  for (size_t i = 0; i < 3; ++i) {
    names.push_back(bench.effects()[i * 5 % bench.effects().size()].unique_name);
  }
  return names;
}

// Lives on the calling thread with a context of its own.
void LiveInOwnContext(Bench& bench, const std::string& name, const Pictures& expected, int lives) {
  const auto gl = Bench::MakeContext();
  gl->MakeCurrent();
  for (int life = 0; life < lives; ++life) {
    Trial trial(&bench, name, gl.get());
    if (!trial.Initialise()) break;
    for (int64_t index = 0; index < kFrames; ++index) {
      bench.examiner().Expect(
          trial.RenderOnce(FrameAt(index)) == expected[static_cast<size_t>(index)],
          "the picture of \"" + name + "\" alone", "another");
    }
    trial.Release();
  }
  gl->ClearCurrent();
}

}  // namespace

void CheckInterleavedInstances(Bench& bench) {
  bench.Prepare();
  const std::vector<std::string> names = ThreeNames(bench);
  std::vector<Pictures> expected;
  expected.reserve(names.size());
  for (const std::string& name : names) expected.push_back(RenderAlone(bench, name));
  bench.examiner().Step("frames of three instances in turn");
  std::vector<Trial> trials;
  trials.reserve(names.size());
  for (const std::string& name : names) trials.emplace_back(&bench, name);
  for (Trial& trial : trials) {
    if (!trial.Initialise()) return;
  }
  for (int64_t index = 0; index < kFrames; ++index) {
    for (size_t i = 0; i < trials.size(); ++i) {
      bench.examiner().Expect(
          trials[i].RenderOnce(FrameAt(index)) == expected[i][static_cast<size_t>(index)],
          "the picture of \"" + names[i] + "\" alone", "another");
    }
  }
  bench.examiner().Step("frames of one instance after the others have been released");
  trials[0].Release();
  trials[0].owner().reset();
  trials[2].owner().reset();
  bench.examiner().Expect(trials[1].RenderOnce(FrameAt(0)) == expected[1][0],
                          "the picture of \"" + names[1] + "\" alone", "another");
  trials[1].Release();
}

void CheckTwoContexts(Bench& bench) {
  const int lives = bench.Has(kLarge) ? 10 : 3;
  bench.Prepare();
  const std::vector<std::string> names = ThreeNames(bench);
  const Pictures first = RenderAlone(bench, names[0]);
  const Pictures second = RenderAlone(bench, names[1]);
  bench.examiner().Step("instances in two contexts on two threads");
  std::string reason;
  std::thread other([&] {
    try {
      LiveInOwnContext(bench, names[1], second, lives);
    } catch (const std::exception& error) {
      bench.examiner().Fail(error.what());
    }
  });
  try {
    LiveInOwnContext(bench, names[0], first, lives);
  } catch (const std::exception& error) {
    bench.examiner().Fail(error.what());
  }
  other.join();
  bench.gl().MakeCurrent();
}

void CheckUniformsDuringFrames(Bench& bench) {
  const int64_t frames = bench.Has(kLarge) ? 300 : 60;
  bench.Prepare();
  Trial trial(&bench, bench.first_effect().unique_name);
  if (!trial.Initialise()) return;
  bench.examiner().Step("slot 11 on another thread during frames");
  std::atomic<bool> end = false;
  std::thread other([&] {
    for (int32_t i = 0; !end; ++i) {
      const ParameterValue value = FloatRecord(static_cast<float>(i % 100) / 100);
      const std::string name = "uniform_" + std::to_string(i % 40);
      const int32_t code = bench.examiner().Call(
          "slot 11", [&] { return trial.effect().SetUniform(name.c_str(), &value); });
      if (code != kOk) bench.examiner().ExpectCode("slot 11", code, {kOk, kFailed});
      std::this_thread::yield();
    }
  });
  for (int64_t index = 0; index < frames; ++index) trial.RenderOnce(FrameAt(index));
  end = true;
  other.join();
  trial.Release();
}

void CheckInstancesOfAnotherThread(Bench& bench) {
  bench.Prepare();
  const std::string& name = bench.first_effect().unique_name;
  Trial trial(&bench, name);
  bench.examiner().Step("slot 1 and a frame");
  if (!trial.Initialise()) return;
  const auto before = trial.Render({});
  bench.examiner().Step("the context and its instance on another thread");
  bench.gl().ClearCurrent();
  std::thread other([&] {
    bench.gl().MakeCurrent();
    bench.examiner().Expect(trial.RenderOnce({}) == before, "the picture of before", "another");
    bench.gl().ClearCurrent();
  });
  other.join();
  bench.gl().MakeCurrent();
  bench.examiner().Step("the context and its instance back on the first thread");
  bench.examiner().Expect(trial.Render({}) == before, "the picture of before", "another");
  trial.Release();
}

}  // namespace krv::tool
