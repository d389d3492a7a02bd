// EffectRegistrar: how the plug-in announces an effect and its parameters to the host.
#pragma once

#include <cstdint>

#include "krv/types.h"

namespace krv {

// Flag words of EffectRegistrar::SetEffectFlags.
inline constexpr uint32_t kEffectFlagsOnGpu = 0x808112;     // a host GPU device is in use
inline constexpr uint32_t kEffectFlagsInMemory = 0x808032;  // frames lie in the host's memory

// Called during RegisterKRVEffect and RegisterKRVEffectFromConfPath only, on the calling thread:
// slots 0, 1, 2 once each, in that order, then one call per parameter in the order in which the
// package declares them. No result is examined. `reserved` arguments are constants. `hidden` is 1
// for a parameter that the user is not meant to see, else 0.
class EffectRegistrar {
 public:
  // Slot 0. `unique_name` is for CreateKRVEffect, `display_name` for people (may be empty).
  virtual int32_t SetEffectNames(const char* unique_name, const char* display_name) = 0;
  // Slot 1. kEffectFlagsOnGpu or kEffectFlagsInMemory.
  virtual int32_t SetEffectFlags(uint32_t flags) = 0;
  // Slot 2. `option` is 0.
  virtual int32_t SetEffectOption(int32_t option) = 0;
  // Slot 3. Not called.
  virtual int32_t Reserved3() = 0;
  // Slot 4. reserved_a = -1, reserved_b = 0.
  virtual int32_t AddFloatParam(int32_t reserved_a, int32_t reserved_b, const char* name,
                                const char* label, float minimum, float maximum,
                                float default_value, uint32_t hidden) = 0;
  // Slot 5. reserved_a = -1, reserved_b = 0, reserved_c = 1.
  virtual int32_t AddIntParam(int32_t reserved_a, int32_t reserved_b, const char* name,
                              const char* label, int32_t minimum, int32_t maximum,
                              int32_t default_value, int32_t reserved_c, uint32_t hidden) = 0;
  // Slot 6. Colours are 0xRRGGBB. Mind the order: the default comes first here.
  virtual int32_t AddColorParam(int32_t reserved_a, int32_t reserved_b, const char* name,
                                const char* label, int32_t default_value, int32_t minimum,
                                int32_t maximum, uint32_t hidden) = 0;
  // Slot 7. `default_value` is 0 or 1.
  virtual int32_t AddBoolParam(int32_t reserved_a, int32_t reserved_b, const char* name,
                               const char* label, uint8_t default_value, uint32_t hidden) = 0;
  // Slots 8 to 13. Not called.
  virtual int32_t Reserved8() = 0;
  virtual int32_t Reserved9() = 0;
  virtual int32_t Reserved10() = 0;
  virtual int32_t Reserved11() = 0;
  virtual int32_t Reserved12() = 0;
  virtual int32_t Reserved13() = 0;
  // Slot 14. `default_value` is valid for the call only.
  virtual int32_t AddStringParam(int32_t reserved_a, int32_t reserved_b, const char* name,
                                 const char* label, const char* default_value, uint32_t hidden) = 0;

 protected:
  ~EffectRegistrar() = default;
};

}  // namespace krv
