// OpenGL contexts that are not there, or not any more.
#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

constexpr uint8_t kBackground = 0xA5;

// A frame without a current context, or in one that the instance does not know; nothing of OpenGL
// can be looked at.
int32_t ProcessBlindly(Bench& bench, Trial& trial, std::initializer_list<int32_t> codes) {
  GuardedPicture picture({});
  picture.FillRows(kBackground);
  host::MemoryFrame input(64, 48, kPixel8);
  host::MemoryFrame output(picture.Description(), picture.pixels());
  ScriptedContext context;
  context.input = &input;
  context.output = &output;
  bench.examiner().Call("slot 3", [&] { return trial.effect().ClearInputs(); });
  const int32_t code =
      bench.examiner().Call("slot 4", [&] { return trial.effect().ProcessFrame(&context); });
  bench.examiner().ExpectCode("slot 4", code, codes);
  bench.examiner().Expect(picture.GuardsAreWhole(), "nothing written beside the rows",
                          "changed bytes there");
  bench.examiner().Expect(code == kOk || picture.RowsHold(kBackground),
                          "an output untouched by a failing frame", "changed pixels");
  return code;
}

}  // namespace

void CheckNoContext(Bench& bench) {
  bench.Prepare();
  Examiner& examiner = bench.examiner();
  for (const host::EffectListing& effect : bench.ChosenEffects()) {
    Trial trial(&bench, effect.unique_name);
    ScriptedContext context;
    examiner.Step("slot 1 of \"" + effect.unique_name + "\" without a context");
    bench.gl().ClearCurrent();
    const int32_t code =
        examiner.Call("slot 1", [&] { return trial.effect().Initialize(&context); });
    examiner.ExpectCode("slot 1", code, {kFailed});
    bench.gl().MakeCurrent();
    examiner.Step("slot 1 and a frame of \"" + effect.unique_name + "\" with one");
    if (!trial.Initialise()) continue;
    const auto before = trial.Render({});
    examiner.Step("a frame of \"" + effect.unique_name + "\" without a context");
    bench.gl().ClearCurrent();
    ProcessBlindly(bench, trial, {kFailed});
    bench.gl().MakeCurrent();
    examiner.Step("the next frame of \"" + effect.unique_name + "\" with one");
    examiner.Expect(trial.Render({}) == before, "the picture of before", "another");
    examiner.Step("ReleaseKRVEffect of \"" + effect.unique_name + "\" without a context");
    bench.gl().ClearCurrent();
    trial.owner().reset();
    bench.gl().MakeCurrent();
  }
}

void CheckLostContext(Bench& bench) {
  bench.Prepare();
  Examiner& examiner = bench.examiner();
  for (const host::EffectListing& effect : bench.ChosenEffects()) {
    std::optional<Rows> before;
    {
      examiner.Step("a frame of \"" + effect.unique_name + "\"");
      Trial trial(&bench, effect.unique_name);
      if (!trial.Initialise()) continue;
      before = trial.Render({});
      examiner.Step("a frame of \"" + effect.unique_name + "\" in another context than slot 1");
      bench.services().DeleteReleasedFrames();
      bench.LoseContext();
      ProcessBlindly(bench, trial, {kOk, kFailed});
      bench.gl_errors().Take();
    }
    examiner.Step("a new instance in the new context");
    Trial trial(&bench, effect.unique_name);
    if (!trial.Initialise()) continue;
    examiner.Expect(trial.Render({}) == before, "the picture of before", "another");
    trial.Release();
  }
}

void CheckContextLostBetweenLives(Bench& bench) {
  bench.Prepare();
  Examiner& examiner = bench.examiner();
  for (const host::EffectListing& effect : bench.ChosenEffects()) {
    Trial trial(&bench, effect.unique_name);
    if (!trial.Initialise()) continue;
    examiner.Step("a frame of \"" + effect.unique_name + "\"");
    const auto before = trial.Render({});
    // The trial keeps to the context that it was made with.
    trial.Release();
    examiner.Step("slots 1 and 4 of \"" + effect.unique_name + "\" in a second context");
    const auto second = Bench::MakeContext();
    second->MakeCurrent();
    Trial moved(&bench, effect.unique_name, second.get());
    std::swap(moved.owner(), trial.owner());
    if (moved.Initialise()) {
      examiner.Expect(moved.Render({}) == before, "the picture of before", "another");
    }
    moved.Release();
    second->ClearCurrent();
    bench.gl().MakeCurrent();
  }
}

}  // namespace krv::tool
