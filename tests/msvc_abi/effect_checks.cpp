// Creation, release, and the operations that draw nothing.
#include "checks.h"
#include "effect_context.h"
#include "report.h"

namespace abi {
namespace {

void CheckRefusal(Host& host, const char* unique_name, int32_t kind, const char* what) {
  int untouched = 0;
  auto* const before = reinterpret_cast<KRVEffect*>(&untouched);
  KRVEffect* effect = before;
  ExpectEqual(host.plugin.create(unique_name, kind, &effect), kNothingToDo, what);
  Expect(effect == before, "a refused CreateKRVEffect leaves its output alone");
}

// Runs the destructor once.
void CheckRelease(Host& host, const char* what) {
  const char* const expected[] = {"1: <audio_visual> Audio Effect Destory"};
  ExpectLines(host.suites.util.log, expected, what);
  host.suites.util.log.Clear();
}

}  // namespace

KRVEffect* Host::Create(const char* unique_name) {
  KRVEffect* effect = nullptr;
  ExpectEqual(plugin.create(unique_name, device_kind(), &effect), kOk, "CreateKRVEffect");
  Expect(effect != nullptr, "CreateKRVEffect stores an instance");
  return effect;
}

void CheckCreation(Host& host) {
  CheckRefusal(host, "nobody", host.device_kind(), "CreateKRVEffect of an unknown name");
  CheckRefusal(host, "every_kind", host.on_gpu() ? kMemoryDevice : kGpuDevice,
               "CreateKRVEffect for the other kind of device");
  host.suites.util.log.Clear();
  host.plugin.release(nullptr);
  ExpectEqual(host.suites.util.log.count(), 0, "lines logged by ReleaseKRVEffect of null");
  if (KRVEffect* effect = host.Create("every_kind")) {
    host.plugin.release(effect);
    CheckRelease(host, "ReleaseKRVEffect");
  }
  if (KRVEffect* effect = host.Create("every_kind")) {
    delete effect;
    CheckRelease(host, "delete of an effect");
  }
}

void CheckOperations(Host& host) {
  KRVEffect* effect = host.Create("person");
  if (effect == nullptr) return;
  static FrameContext context;
  context.requests.Clear();
  ExpectEqual(effect->Reserved2(&context), kOk, "KRVEffect slot 2");
  ExpectEqual(effect->Reserved6(&context), kOk, "KRVEffect slot 6");
  ExpectEqual(effect->Reserved8(&context), kOk, "KRVEffect slot 8");
  ExpectEqual(effect->Reserved9(&context), kOk, "KRVEffect slot 9");
  ExpectEqual(context.requests.count(), 0, "further inputs requested before slot 1");
  ExpectEqual(effect->Initialize(&context), kOk, "KRVEffect::Initialize");
  const char* const expected[] = {"1"};
  ExpectLines(context.requests, expected, "EffectContext::RequestExtraInput");

  Recorder& log = host.suites.util.log;
  log.Clear();
  ExpectEqual(effect->ProcessFrame(nullptr), kNothingToDo, "KRVEffect::ProcessFrame of null");
  const char* const complaint[] = {"4: <audio_visual> Effect context null error"};
  ExpectLines(log, complaint, "the log of KRVEffect::ProcessFrame of null");
  ExpectEqual(effect->SetUniform(nullptr, nullptr), kFailed, "KRVEffect::SetUniform of null");
  ExpectEqual(effect->ClearInputs(), kOk, "KRVEffect::ClearInputs");
  ExpectEqual(effect->ReleaseResources(), kOk, "KRVEffect::ReleaseResources");
  delete effect;
}

}  // namespace abi
