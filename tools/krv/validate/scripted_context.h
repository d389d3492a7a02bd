// What an effect is told about a frame, set field by field.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "krv/effect_context.h"

namespace krv::tool {

class ScriptedContext final : public EffectContext {
 public:
  int64_t index = 0;
  int64_t rate_numerator = 25;
  int64_t rate_denominator = 1;
  HostFrame* output = nullptr;
  HostFrame* input = nullptr;
  AudioBlock* audio = nullptr;
  PersonMaskSource* person_mask = nullptr;
  std::map<std::string, ParameterValue, std::less<>> answers;
  // Every other question for a parameter writes this value, and is refused all the same.
  const ParameterValue* refusal = nullptr;

  bool extra_input_requested() const { return extra_input_requested_; }

  int64_t GetFrameIndex() override { return index; }
  void GetFrameRate(int64_t* numerator, int64_t* denominator) override;
  HostFrame* GetOutputFrame() override { return output; }
  HostFrame* GetInputFrame() override { return input; }
  AudioBlock* GetAudioBlock() override { return audio; }
  int32_t GetParameterValue(const char* name, int64_t position, ParameterValue* value) override;
  int32_t QueryProperty(const char* name, int32_t type, void* result, uint32_t size) override;
  void RequestExtraInput(uint32_t value) override { extra_input_requested_ = value != 0; }

 private:
  bool extra_input_requested_ = false;
};

// Records of values, as a host answers with them. A text is borrowed.
ParameterValue IntRecord(int32_t value, int32_t kind = kKindInt);
ParameterValue FloatRecord(float value);
ParameterValue DoubleRecord(double value);
ParameterValue BoolRecord(uint8_t value);
ParameterValue TextRecord(const char* value);

}  // namespace krv::tool
