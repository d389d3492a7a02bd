// The plug-in's public headers, read by this compiler, mean the same tables and records as the
// declarations that the rest of the host uses.
#include "krv/plugin.h"

#include <stddef.h>

#include "checks.h"
#include "effect_context.h"
#include "registrar.h"
#include "report.h"

namespace abi {
namespace {

static_assert(sizeof(krv::ParameterValue) == sizeof(ParameterValue));
static_assert(offsetof(krv::ParameterValue, as_text) == offsetof(ParameterValue, as_text));
static_assert(sizeof(krv::FrameDescription) == sizeof(FrameDescription));
static_assert(offsetof(krv::FrameDescription, stride) == offsetof(FrameDescription, stride));
static_assert(sizeof(krv::DeviceInfo) == sizeof(DeviceInfo));
static_assert(offsetof(krv::DeviceInfo, name) == offsetof(DeviceInfo, name));
static_assert(sizeof(krv::PluginInfo) == sizeof(PluginInfo));
static_assert(offsetof(krv::PluginInfo, reserved) == offsetof(PluginInfo, reserved));

// The same object, seen through the public header.
template <class Public, class Own>
Public& As(Own& object) {
  return *reinterpret_cast<Public*>(&object);
}

void CheckRegistrar() {
  static RecordingRegistrar own;
  own.calls.Clear();
  auto& registrar = As<krv::EffectRegistrar>(own);
  registrar.SetEffectNames("a", "b");
  registrar.SetEffectFlags(krv::kEffectFlagsOnGpu);
  registrar.SetEffectOption(0);
  registrar.AddFloatParam(-1, 0, "f", "g", 0.5f, 1.5f, 2.5f, 1);
  registrar.AddIntParam(-1, 0, "i", "j", 1, 2, 3, 4, 5);
  registrar.AddColorParam(-1, 0, "c", "d", 1, 2, 3, 4);
  registrar.AddBoolParam(-1, 0, "b", "c", 1, 2);
  registrar.AddStringParam(-1, 0, "s", "t", "u", 1);
  const char* const expected[] = {
      "SetEffectNames a b",
      "SetEffectFlags 0x808112",
      "SetEffectOption 0",
      "AddFloatParam -1 0 f g 0.5 1.5 2.5 1",
      "AddIntParam -1 0 i j 1 2 3 4 5",
      "AddColorParam -1 0 c d 1 2 3 4",
      "AddBoolParam -1 0 b c 1 2",
      "AddStringParam -1 0 s t u 1",
  };
  ExpectLines(own.calls, expected, "EffectRegistrar: by the public header");
}

void CheckContext() {
  static FrameContext own;
  own.index = -9;
  auto& context = As<krv::EffectContext>(own);
  ExpectEqual(context.GetFrameIndex(), -9, "EffectContext::GetFrameIndex by the public header");
  krv::ParameterValue value{.kind = krv::kKindFloat, .reserved = 0, .as_float = 0.5f};
  context.GetParameterValue("level", -9, &value);
  context.RequestExtraInput(7);
  const char* const asked[] = {"level at -9: kind 5, 0.5"};
  ExpectLines(own.asked, asked, "EffectContext::GetParameterValue by the public header");
  const char* const requests[] = {"7"};
  ExpectLines(own.requests, requests, "EffectContext::RequestExtraInput by the public header");
  own.asked.Clear();
  own.requests.Clear();
}

void CheckEffect(Host& host) {
  KRVEffect* own = host.Create("person");
  if (own == nullptr) return;
  auto& effect = As<krv::KRVEffect>(*own);
  ExpectEqual(effect.ProcessFrame(nullptr), kNothingToDo,
              "KRVEffect::ProcessFrame by the public header");
  ExpectEqual(effect.ApplyParameters(nullptr), kFailed,
              "KRVEffect::ApplyParameters by the public header");
  ExpectEqual(effect.ReleaseResources(), kOk, "KRVEffect::ReleaseResources by the public header");
  host.suites.util.log.Clear();
  Expect(effect.Destroy(1) == own, "KRVEffect::Destroy returns the object's address");
  ExpectEqual(host.suites.util.log.count(), 1, "lines logged by KRVEffect::Destroy");
}

}  // namespace

void CheckPublicHeaders(Host& host) {
  CheckRegistrar();
  CheckContext();
  CheckEffect(host);
}

}  // namespace abi
