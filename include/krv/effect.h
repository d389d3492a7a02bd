// KRVEffect: one applied effect. Made by CreateKRVEffect, given back to ReleaseKRVEffect.
#pragma once

#include <cstdint>

#include "krv/effect_context.h"
#include "krv/types.h"

namespace krv {

// The plug-in's own types, named here only so that the table has its 17 slots.
struct ImageList;
class PXGraphicsContext;
class PXImage;
struct PassRecord;

// Order of calls: slot 1 once; per frame slot 3, then slot 4; slot 7; ReleaseKRVEffect. After slot
// 7 slot 1 may be called again.
//
// All operations need the host's OpenGL context current on the calling thread, always the same
// context between slot 1 and slot 7, except slots 3 and 11, and ReleaseKRVEffect after slot 7.
// Released without slot 7, an instance must be released with that context current, or its GL
// objects live on until the context ends.
//
// GL state: calls leave program 0, framebuffer 0, no array, pixel-pack or pixel-unpack buffer, and
// texture unit 0 active. The textures bound to GL_TEXTURE_2D of the units that a draw used, at most
// 8, are left unbound. Viewports beyond the first may have the first one's rectangle, scissor box
// and scissor test. All other state is as it was before the call.
// Of the host's state depth test and mask, blending, scissor, stencil and alpha test, face culling,
// polygon mode, logic operation, discarding, conversion to sRGB, colour mask, clear colour,
// viewport, vertex array, samplers and pixel-store values do not reach a draw. These do, and have
// to be off: clip planes and distances, polygon stipple and smoothing, a fragment colour clamp,
// transform feedback, conditional rendering.
class KRVEffect {
 public:
  // Slot 0. Destroys the object and, when bit 0 of `flags` is set, frees it. Returns the object's
  // address. Hosts call ReleaseKRVEffect instead.
  virtual void* Destroy(uint32_t flags) = 0;
  // Slot 1 [gl-thread]. Creates the graphics device and builds the programs, once. 0, or 4: no
  // current context, or a shader could not be loaded (a log line says which).
  virtual int32_t Initialize(EffectContext* context) = 0;
  // Slot 2. Does nothing; 0.
  virtual int32_t Reserved2(EffectContext* context) = 0;
  // Slot 3 [any-thread, not during slot 4]. Empties the input list: call it before every frame. 0.
  virtual int32_t ClearInputs() = 0;
  // Slot 4 [gl-thread]. Processes one frame: reads the context's input frame, audio and
  // parameters, and writes its output frame. 0; 2: no context, or no output frame; 4: any other
  // failure. On failure a frame in memory is untouched.
  virtual int32_t ProcessFrame(EffectContext* context) = 0;
  // Slot 5 [gl-thread]. As slot 4.
  virtual int32_t ProcessFrameAgain(EffectContext* context) = 0;
  // Slot 6. Does nothing; 0.
  virtual int32_t Reserved6(EffectContext* context) = 0;
  // Slot 7 [gl-thread]. Releases what slots 1 and 4 made on the GPU. 0.
  virtual int32_t ReleaseResources() = 0;
  // Slots 8 and 9. Do nothing; 0.
  virtual int32_t Reserved8(EffectContext* context) = 0;
  virtual int32_t Reserved9(EffectContext* context) = 0;
  // Slot 10 [gl-thread]. Asks the context for every parameter at its frame index and stores the
  // values. Slot 4 does it itself. 0, or 4.
  virtual int32_t ApplyParameters(EffectContext* context) = 0;
  // Slot 11 [any-thread, also during slots 1, 4 and 7]. Stores one value under a uniform's name for
  // every pass. The value is copied; texts are ignored. 0, or 4.
  virtual int32_t SetUniform(const char* name, const ParameterValue* value) = 0;

  // Slots 12 to 16 are the instance's own; a host never calls them.
  virtual int32_t RunPasses(const ImageList& inputs, PXImage& target, EffectContext& context) = 0;
  virtual int32_t GatherInputs(EffectContext& context, ImageList& inputs) = 0;
  virtual int32_t ExpectedInputCount() = 0;
  virtual void CopyUniforms(PXGraphicsContext& draw, PassRecord& record,
                            EffectContext& context) = 0;
  virtual int32_t PreparePass(PXGraphicsContext& draw) = 0;

 protected:
  ~KRVEffect() = default;
};

}  // namespace krv
