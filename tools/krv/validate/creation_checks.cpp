// CreateKRVEffect and ReleaseKRVEffect.
#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

constexpr size_t kLongText = 1 << 20;  // bytes

// What the caller's pointer holds before; it points to no instance.
KRVEffect* Untouched() {
  static uint64_t nothing[8] = {};
  return reinterpret_cast<KRVEffect*>(nothing);
}

void Refuse(Bench& bench, const std::string& what, const char* name, int32_t kind) {
  Examiner& examiner = bench.examiner();
  examiner.Step("CreateKRVEffect with " + what);
  KRVEffect* effect = Untouched();
  const int32_t code = examiner.Call(
      "CreateKRVEffect", [&] { return bench.plugin().create_effect(name, kind, &effect); });
  examiner.ExpectCode("CreateKRVEffect", code, {kNothingToDo});
  examiner.Expect(effect == Untouched(), "the pointer left alone", "a changed one");
}

}  // namespace

void CheckUnknownNames(Bench& bench) {
  bench.Start();
  Refuse(bench, "a name before anything is registered", "audio_visualization", kDeviceKindMemory);
  bench.Prepare();
  const std::string& name = bench.first_effect().unique_name;
  Refuse(bench, "an empty name", "", kDeviceKindMemory);
  Refuse(bench, "the start of a name", name.substr(0, name.size() - 1).c_str(), kDeviceKindMemory);
  Refuse(bench, "more than a name", (name + "x").c_str(), kDeviceKindMemory);
  Refuse(bench, "a name of 1 MB", std::string(kLongText, 'x').c_str(), kDeviceKindMemory);
  Refuse(bench, "a name that is not UTF-8", "\xff\xfe", kDeviceKindMemory);
  Refuse(bench, "a name with placeholders", "%s%n%d", kDeviceKindMemory);
}

void CheckDeviceKinds(Bench& bench) {
  bench.Prepare();
  const char* const name = bench.first_effect().unique_name.c_str();
  for (const int32_t kind : {1, 2, 3, -1, INT32_MAX, INT32_MIN}) {
    Refuse(bench, "kind " + std::to_string(kind) + " of a host without a GPU device", name, kind);
  }
  bench.Start({.device_apis = {kDeviceOpenGl}});
  for (const int32_t kind : {0, 1, 3, -1, INT32_MAX, INT32_MIN}) {
    Refuse(bench, "kind " + std::to_string(kind) + " of a host with a GPU device", name, kind);
  }
}

void CheckCreationNullArguments(Bench& bench) {
  bench.Prepare();
  Examiner& examiner = bench.examiner();
  Refuse(bench, "no name", nullptr, kDeviceKindMemory);
  examiner.Step("CreateKRVEffect with no place for the instance");
  const char* const name = bench.first_effect().unique_name.c_str();
  const int32_t code = examiner.Call("CreateKRVEffect", [&] {
    return bench.plugin().create_effect(name, kDeviceKindMemory, nullptr);
  });
  examiner.ExpectCode("CreateKRVEffect", code, {kNothingToDo});
  examiner.Step("ReleaseKRVEffect of null");
  examiner.Call("ReleaseKRVEffect", [&] {
    bench.plugin().release_effect(nullptr);
    return kOk;
  });
}

void CheckShortLives(Bench& bench) {
  constexpr int kLives = 1000;
  bench.Prepare();
  for (const host::EffectListing& effect : bench.ChosenEffects()) {
    bench.examiner().Step("\"" + effect.unique_name + "\" created and released 1,000 times");
    for (int i = 0; i < kLives; ++i) bench.Create(effect.unique_name);
  }
  bench.examiner().ExpectCount("frames of the host kept",
                               static_cast<int64_t>(bench.services().LiveFrameCount()), 0);
}

}  // namespace krv::tool
