// An effect that shows its input, darkened by its one parameter "level".
#pragma once

#include "krv/effect.h"
#include "krv/suites.h"

namespace krv::test {

// The host's suite for textures; null without one.
extern GpuDeviceSuite* gpu_devices;

class MinimalEffect final : public KRVEffect {
 public:
  void* Destroy(uint32_t flags) override;
  int32_t Initialize(EffectContext* context) override;
  int32_t Reserved2(EffectContext*) override { return 0; }
  int32_t ClearInputs() override { return 0; }
  int32_t ProcessFrame(EffectContext* context) override;
  int32_t ProcessFrameAgain(EffectContext* context) override { return ProcessFrame(context); }
  int32_t Reserved6(EffectContext*) override { return 0; }
  int32_t ReleaseResources() override;
  int32_t Reserved8(EffectContext*) override { return 0; }
  int32_t Reserved9(EffectContext*) override { return 0; }
  int32_t ApplyParameters(EffectContext* context) override;
  int32_t SetUniform(const char* name, const ParameterValue* value) override;
  int32_t RunPasses(const ImageList&, PXImage&, EffectContext&) override { return 0; }
  int32_t GatherInputs(EffectContext&, ImageList&) override { return 0; }
  int32_t ExpectedInputCount() override { return 0; }
  void CopyUniforms(PXGraphicsContext&, PassRecord&, EffectContext&) override {}
  int32_t PreparePass(PXGraphicsContext&) override { return 0; }

 private:
  float level_ = 1;  // what colours are multiplied with
  int frames_ = 0;
  bool initialised_ = false;
};

}  // namespace krv::test
