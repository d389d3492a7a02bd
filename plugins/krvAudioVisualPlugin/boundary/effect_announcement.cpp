#include "boundary/effect_announcement.h"

#include <string>

#include "boundary/plugin_registry.h"
#include "krv/types.h"

namespace krv {
namespace {

// Constants that begin every parameter call, and the one inside AddIntParam. Their meaning is the
// host's.
constexpr int32_t kReservedA = -1;
constexpr int32_t kReservedB = 0;
constexpr int32_t kReservedC = 1;

void AnnounceParameter(const ParameterDescription& parameter, EffectRegistrar& registrar) {
  const char* name = parameter.name.c_str();  // identifier and label
  const ParameterValue low = parameter.min_value.View();
  const ParameterValue high = parameter.max_value.View();
  const ParameterValue initial = parameter.default_value.View();
  switch (initial.kind) {
    case kKindInt:
      registrar.AddIntParam(kReservedA, kReservedB, name, name, low.as_int, high.as_int,
                            initial.as_int, kReservedC, parameter.hidden);
      break;
    case kKindFloat:
      registrar.AddFloatParam(kReservedA, kReservedB, name, name, low.as_float, high.as_float,
                              initial.as_float, parameter.hidden);
      break;
    case kKindBool:
      registrar.AddBoolParam(kReservedA, kReservedB, name, name, initial.as_bool, parameter.hidden);
      break;
    case kKindText:
      registrar.AddStringParam(kReservedA, kReservedB, name, name, initial.as_text,
                               parameter.hidden);
      break;
    case kKindColor:
      registrar.AddColorParam(kReservedA, kReservedB, name, name, initial.as_int, low.as_int,
                              high.as_int, parameter.hidden);
      break;
    default:
      break;
  }
}

}  // namespace

int32_t AnnounceEffect(const std::shared_ptr<const EffectDescription>& description,
                       EffectRegistrar& registrar) {
  if (description == nullptr) return kNothingToDo;
  const std::string unique_name = description->UniqueName();
  const std::string display_name = description->DisplayName();
  const bool on_gpu = PluginRegistry::Instance().HasGpuDevice();
  registrar.SetEffectNames(unique_name.c_str(), display_name.c_str());
  registrar.SetEffectFlags(on_gpu ? kEffectFlagsOnGpu : kEffectFlagsInMemory);
  registrar.SetEffectOption(0);
  for (const auto& parameter : description->parameters()) AnnounceParameter(*parameter, registrar);
  return kOk;
}

}  // namespace krv
