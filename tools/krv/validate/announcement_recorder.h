// What a plug-in announces, looked at call by call.
#pragma once

#include <string>

#include "krv/registrar.h"
#include "validate/examiner.h"

namespace krv::tool {

class AnnouncementRecorder final : public EffectRegistrar {
 public:
  // `flags`: those of the host's devices.
  AnnouncementRecorder(Examiner* examiner, uint32_t flags) : examiner_(*examiner), flags_(flags) {}

  // Looks at the announcement as a whole; to be called after it.
  void Finish();

  const std::string& unique_name() const { return unique_name_; }
  int calls() const { return calls_; }

  int32_t SetEffectNames(const char* unique_name, const char* display_name) override;
  int32_t SetEffectFlags(uint32_t flags) override;
  int32_t SetEffectOption(int32_t option) override;
  int32_t Reserved3() override { return Reserved(); }
  int32_t AddFloatParam(int32_t reserved_a, int32_t reserved_b, const char* name, const char* label,
                        float minimum, float maximum, float default_value,
                        uint32_t hidden) override;
  int32_t AddIntParam(int32_t reserved_a, int32_t reserved_b, const char* name, const char* label,
                      int32_t minimum, int32_t maximum, int32_t default_value, int32_t reserved_c,
                      uint32_t hidden) override;
  int32_t AddColorParam(int32_t reserved_a, int32_t reserved_b, const char* name, const char* label,
                        int32_t default_value, int32_t minimum, int32_t maximum,
                        uint32_t hidden) override;
  int32_t AddBoolParam(int32_t reserved_a, int32_t reserved_b, const char* name, const char* label,
                       uint8_t default_value, uint32_t hidden) override;
  int32_t Reserved8() override { return Reserved(); }
  int32_t Reserved9() override { return Reserved(); }
  int32_t Reserved10() override { return Reserved(); }
  int32_t Reserved11() override { return Reserved(); }
  int32_t Reserved12() override { return Reserved(); }
  int32_t Reserved13() override { return Reserved(); }
  int32_t AddStringParam(int32_t reserved_a, int32_t reserved_b, const char* name,
                         const char* label, const char* default_value, uint32_t hidden) override;

 private:
  int32_t Reserved();
  // The calls before it: the first three slots come once each, in order, before all parameters.
  void ExpectPlace(int place, const char* call);
  void LookAtParameter(int32_t reserved_a, int32_t reserved_b, const char* name, const char* label,
                       uint32_t hidden);

  Examiner& examiner_;
  const uint32_t flags_;
  int calls_ = 0;
  std::string unique_name_;
};

}  // namespace krv::tool
