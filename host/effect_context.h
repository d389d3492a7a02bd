// What an effect instance is told about one frame.
#pragma once

#include <cstdint>
#include <optional>

#include "krv/effect_context.h"
#include "parameter_values.h"

namespace krv::host {

// Everything about one frame. Pointers are borrowed and may be null.
struct FrameSetup {
  int64_t index = 0;
  int64_t rate_numerator = 25;  // frames per second
  int64_t rate_denominator = 1;
  HostFrame* output = nullptr;
  HostFrame* input = nullptr;
  AudioBlock* audio = nullptr;                  // null for silence
  const ParameterSource* parameters = nullptr;  // null for the declared defaults
  PersonMaskSource* person_mask = nullptr;      // null when the host has no mask
};

class FrameContext final : public EffectContext {
 public:
  explicit FrameContext(const FrameSetup& setup) : setup_(setup) {}

  // Whether the instance asked for a person mask.
  bool extra_input_requested() const { return extra_input_requested_; }

  int64_t GetFrameIndex() override;
  void GetFrameRate(int64_t* numerator, int64_t* denominator) override;
  HostFrame* GetOutputFrame() override;
  HostFrame* GetInputFrame() override;
  AudioBlock* GetAudioBlock() override;
  int32_t GetParameterValue(const char* name, int64_t position, ParameterValue* value) override;
  int32_t QueryProperty(const char* name, int32_t type, void* result, uint32_t size) override;
  void RequestExtraInput(uint32_t value) override;

 private:
  FrameSetup setup_;
  std::optional<HostValue> value_;  // keeps a text alive until the next question
  bool extra_input_requested_ = false;
};

}  // namespace krv::host
