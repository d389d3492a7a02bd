// The slots of an instance in every order.
#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

FrameCase RefusedFrame() {
  FrameCase frame;
  frame.codes = {kFailed};
  return frame;
}

void ExpectPicture(Bench& bench, Trial& trial, const std::optional<Rows>& expected) {
  bench.examiner().Expect(trial.Render({}) == expected, "the picture of before", "another");
}

}  // namespace

void CheckFrameBeforeInitialise(Bench& bench) {
  bench.Prepare();
  for (const host::EffectListing& effect : bench.ChosenEffects()) {
    bench.examiner().Step("a frame of \"" + effect.unique_name + "\" before slot 1");
    Trial trial(&bench, effect.unique_name);
    trial.Render(RefusedFrame());
    bench.examiner().Step("slot 1 and a frame after one too early");
    if (trial.Initialise()) trial.Render({});
    trial.Release();
  }
}

void CheckFrameAfterRelease(Bench& bench) {
  bench.Prepare();
  for (const host::EffectListing& effect : bench.ChosenEffects()) {
    bench.examiner().Step("a life of \"" + effect.unique_name + "\"");
    Trial trial(&bench, effect.unique_name);
    if (!trial.Initialise()) continue;
    const auto before = trial.Render({});
    trial.Release();
    bench.examiner().Step("a frame after slot 7");
    trial.Render(RefusedFrame());
    bench.examiner().Step("slot 1 after slot 7");
    if (trial.Initialise()) ExpectPicture(bench, trial, before);
    trial.Release();
  }
}

void CheckRepeatedCalls(Bench& bench) {
  bench.Prepare();
  for (const host::EffectListing& effect : bench.ChosenEffects()) {
    Trial trial(&bench, effect.unique_name);
    bench.examiner().Step("slot 7 of \"" + effect.unique_name + "\" before slot 1");
    trial.Release();
    bench.examiner().Step("slot 1");
    if (!trial.Initialise()) continue;
    const auto before = trial.Render({});
    bench.examiner().Step("slot 1 twice");
    trial.Initialise();
    ExpectPicture(bench, trial, before);
    bench.examiner().Step("slot 3 ten times");
    for (int i = 0; i < 10; ++i) {
      const int32_t code = trial.Watch("slot 3", [&] { return trial.effect().ClearInputs(); });
      bench.examiner().ExpectCode("slot 3", code, {kOk});
    }
    ExpectPicture(bench, trial, before);
    bench.examiner().Step("slot 7 twice");
    trial.Release();
    trial.Release();
    bench.examiner().Step("ReleaseKRVEffect after slot 7 without a context");
    bench.gl().ClearCurrent();
    trial.owner().reset();
    bench.gl().MakeCurrent();
  }
}

void CheckFrameWithoutClear(Bench& bench) {
  bench.Prepare();
  GuardedPicture input({});
  GuardedPicture output({});
  input.SetRows(TestPattern(input.shape()));
  host::MemoryFrame input_frame(input.Description(), input.pixels());
  host::MemoryFrame output_frame(output.Description(), output.pixels());
  ScriptedContext context;
  context.input = &input_frame;
  context.output = &output_frame;
  Trial trial(&bench, bench.first_effect().unique_name);
  bench.examiner().Step("slot 1 and a frame");
  if (!trial.Initialise()) return;
  const auto before = trial.Render({});
  for (int i = 0; i < 3; ++i) {
    bench.examiner().Step("a frame without slot 3 before it");
    const int32_t code =
        trial.Watch("slot 4", [&] { return trial.effect().ProcessFrame(&context); });
    bench.examiner().ExpectCode("slot 4", code, {kOk, kFailed});
  }
  bench.examiner().Step("the next frame with slot 3");
  ExpectPicture(bench, trial, before);
  trial.Release();
}

void CheckParametersBeforeInitialise(Bench& bench) {
  bench.Prepare();
  ScriptedContext context;
  Trial trial(&bench, bench.first_effect().unique_name);
  bench.examiner().Step("slots 10 and 11 before slot 1");
  const ParameterValue value = FloatRecord(0.5F);
  int32_t code = trial.Watch("slot 10", [&] { return trial.effect().ApplyParameters(&context); });
  bench.examiner().ExpectCode("slot 10", code, {kOk, kFailed});
  code = trial.Watch("slot 11", [&] { return trial.effect().SetUniform("some_name", &value); });
  bench.examiner().ExpectCode("slot 11", code, {kOk, kFailed});
  bench.examiner().Step("a frame afterwards");
  if (trial.Initialise()) trial.Render({});
  trial.Release();
}

void CheckReservedSlots(Bench& bench) {
  bench.Prepare();
  Trial trial(&bench, bench.first_effect().unique_name);
  ScriptedContext context;
  KRVEffect& effect = trial.effect();
  const auto call_all = [&](EffectContext* argument) {
    const int32_t codes[] = {
        trial.Watch("slot 2", [&] { return effect.Reserved2(argument); }),
        trial.Watch("slot 6", [&] { return effect.Reserved6(argument); }),
        trial.Watch("slot 8", [&] { return effect.Reserved8(argument); }),
        trial.Watch("slot 9", [&] { return effect.Reserved9(argument); }),
    };
    for (const int32_t code : codes) bench.examiner().ExpectCode("a reserved slot", code, {kOk});
  };
  bench.examiner().Step("reserved slots before slot 1");
  call_all(&context);
  bench.examiner().Step("slot 1 and a frame");
  if (!trial.Initialise()) return;
  const auto before = trial.Render({});
  bench.examiner().Step("reserved slots between frames");
  call_all(&context);
  call_all(nullptr);
  ExpectPicture(bench, trial, before);
  trial.Release();
}

void CheckLivesWithoutRelease(Bench& bench) {
  bench.Prepare();
  for (const host::EffectListing& effect : bench.ChosenEffects()) {
    bench.examiner().Step("\"" + effect.unique_name + "\" released without slot 7");
    for (int i = 0; i < 3; ++i) {
      Trial trial(&bench, effect.unique_name);
      if (trial.Initialise()) trial.Render({});
    }
    bench.services().DeleteReleasedFrames();
    bench.examiner().ExpectCount("frames of the host kept",
                                 static_cast<int64_t>(bench.services().LiveFrameCount()), 0);
  }
}

void CheckNullSlotArguments(Bench& bench) {
  bench.Prepare();
  Examiner& examiner = bench.examiner();
  Trial trial(&bench, bench.first_effect().unique_name);
  KRVEffect& effect = trial.effect();
  examiner.Step("slot 1 with null");
  examiner.ExpectCode("slot 1", trial.Watch("slot 1", [&] { return effect.Initialize(nullptr); }),
                      {kOk, kFailed});
  examiner.Step("slot 1 and a frame");
  if (!trial.Initialise()) return;
  const auto before = trial.Render({});
  const ParameterValue value = FloatRecord(0.5F);
  examiner.Step("slot 4 with null");
  examiner.ExpectCode("slot 4", trial.Watch("slot 4", [&] { return effect.ProcessFrame(nullptr); }),
                      {kNothingToDo});
  examiner.Step("slot 5 with null");
  examiner.ExpectCode("slot 5",
                      trial.Watch("slot 5", [&] { return effect.ProcessFrameAgain(nullptr); }),
                      {kNothingToDo});
  examiner.Step("slot 10 with null");
  examiner.ExpectCode("slot 10",
                      trial.Watch("slot 10", [&] { return effect.ApplyParameters(nullptr); }),
                      {kOk, kFailed});
  examiner.Step("slot 11 without a name, a value, both");
  const auto set = [&](const char* name, const ParameterValue* record) {
    return trial.Watch("slot 11", [&] { return effect.SetUniform(name, record); });
  };
  for (const int32_t code : {set(nullptr, &value), set("name", nullptr), set(nullptr, nullptr)}) {
    examiner.ExpectCode("slot 11", code, {kOk, kFailed});
  }
  examiner.Step("a frame afterwards");
  ExpectPicture(bench, trial, before);
  trial.Release();
}

}  // namespace krv::tool
