// What the plug-in announces about its effects, kept for the host.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "krv/registrar.h"

namespace krv::host {

// One announced parameter. Limits and defaults are kept as doubles, which hold every 32-bit integer
// and float exactly.
struct ParameterListing {
  std::string name;
  std::string label;
  ParameterKind kind;             // kKindInt, kKindFloat, kKindBool, kKindText or kKindColor
  double minimum = 0;             // not for booleans and texts
  double maximum = 0;             // not for booleans and texts
  double default_number = 0;      // a boolean's is 0 or 1; not for texts
  std::string default_text = {};  // texts only
  bool hidden = false;            // not meant for the user to see

  // Whether values have to lie in minimum..maximum. Announced limits that leave no room count as
  // none: a package without limits announces 0 and 0.
  bool HasRange() const;
};

// One announced effect, in the order of the announcement.
struct EffectListing {
  std::string unique_name;
  std::string display_name;
  uint32_t flags = 0;
  std::vector<ParameterListing> parameters;

  // The last parameter of that name, or null. The last, since a later declaration of a name
  // replaces an earlier one.
  const ParameterListing* Find(std::string_view name) const;
};

// "int", "float", "bool", "text" or "colour".
const char* ParameterKindName(ParameterKind kind);

// Records the calls of one announcement. Use a new one for each.
class RecordingRegistrar final : public EffectRegistrar {
 public:
  const EffectListing& effect() const { return effect_; }

  int32_t SetEffectNames(const char* unique_name, const char* display_name) override;
  int32_t SetEffectFlags(uint32_t flags) override;
  int32_t SetEffectOption(int32_t option) override;
  int32_t Reserved3() override;
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
  int32_t Reserved8() override;
  int32_t Reserved9() override;
  int32_t Reserved10() override;
  int32_t Reserved11() override;
  int32_t Reserved12() override;
  int32_t Reserved13() override;
  int32_t AddStringParam(int32_t reserved_a, int32_t reserved_b, const char* name,
                         const char* label, const char* default_value, uint32_t hidden) override;

 private:
  EffectListing effect_;
};

}  // namespace krv::host
