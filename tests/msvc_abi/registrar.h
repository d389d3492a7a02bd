// A registrar that writes down what it is told.
#pragma once

#include "interfaces.h"
#include "recorder.h"

namespace abi {

class RecordingRegistrar final : public EffectRegistrar {
 public:
  // Each call's operation and its arguments in order, for instance
  // `AddFloatParam -1 0 speed speed 0.5 4 1.25 0`.
  Recorder calls;

  int32_t SetEffectNames(const char* unique_name, const char* display_name) override;
  int32_t SetEffectFlags(uint32_t flags) override;
  int32_t SetEffectOption(int32_t option) override;
  int32_t Reserved3() override { return Unexpected(3); }
  int32_t AddFloatParam(int32_t a, int32_t b, const char* name, const char* label, float minimum,
                        float maximum, float initial, uint32_t hidden) override;
  int32_t AddIntParam(int32_t a, int32_t b, const char* name, const char* label, int32_t minimum,
                      int32_t maximum, int32_t initial, int32_t c, uint32_t hidden) override;
  int32_t AddColorParam(int32_t a, int32_t b, const char* name, const char* label, int32_t initial,
                        int32_t minimum, int32_t maximum, uint32_t hidden) override;
  int32_t AddBoolParam(int32_t a, int32_t b, const char* name, const char* label, uint8_t initial,
                       uint32_t hidden) override;
  int32_t Reserved8() override { return Unexpected(8); }
  int32_t Reserved9() override { return Unexpected(9); }
  int32_t Reserved10() override { return Unexpected(10); }
  int32_t Reserved11() override { return Unexpected(11); }
  int32_t Reserved12() override { return Unexpected(12); }
  int32_t Reserved13() override { return Unexpected(13); }
  int32_t AddStringParam(int32_t a, int32_t b, const char* name, const char* label,
                         const char* initial, uint32_t hidden) override;

 private:
  int32_t Unexpected(int slot);
};

}  // namespace abi
