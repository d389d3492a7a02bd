// One effect applied to a sequence of frames, as a video editor does it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "audio_block.h"
#include "frame.h"
#include "gl_context.h"
#include "krv/effect.h"
#include "parameter_values.h"
#include "plugin_host.h"
#include "registrar.h"

namespace krv::host {

class PackageCopy;

struct SessionOptions {
  std::filesystem::path plugin = {};                 // the plug-in's file
  std::vector<std::filesystem::path> packages = {};  // folders searched for packages
  std::string unique_name = {};                      // the effect
  DeviceUse device = DeviceUse::kMemory;
  GlContext::Renderer renderer = GlContext::Renderer::kAny;
  // Renders the effect alone, with straight alpha, instead of laying it over the input.
  bool without_blend = false;
};

// One frame to render. Pointers are borrowed for the call.
struct FrameRequest {
  int64_t index = 0;
  int64_t rate_numerator = 25;  // frames per second
  int64_t rate_denominator = 1;
  int32_t width = 0;   // pixels, of input and output
  int32_t height = 0;  // pixels
  PixelType pixel_type = kPixel8;
  // Blue, green, red, alpha, top row first; null for a transparent black picture.
  const void* input = nullptr;
  int32_t input_stride = 0;  // bytes from row to row
  FrameAudio audio;
};

// Owns one instance of an effect, from slot 1 to slot 7 and release. All calls, the destructor
// included, on one thread, on which the session makes the host's context current.
class EffectSession {
 public:
  // Loads and starts the plug-in, registers the packages and initialises one instance. Null on
  // failure, with one line in *error. Only one session of this form at a time: see PluginHost.
  static std::unique_ptr<EffectSession> Create(const SessionOptions& options, std::string* error);

  // One instance of an effect that is registered with `host` already. Null on failure, with one
  // line in *error.
  static std::unique_ptr<EffectSession> Create(std::shared_ptr<PluginHost> host,
                                               std::string_view unique_name, std::string* error);

  ~EffectSession();
  EffectSession(const EffectSession&) = delete;
  EffectSession& operator=(const EffectSession&) = delete;

  // The effect as the plug-in announced it: the parameters that can be set.
  const EffectListing& effect() const { return effect_; }

  // The values of the coming frames; parameters without one keep their default.
  ParameterValues& parameters() { return parameters_; }

  // Renders one frame from one of the caller's frames into another: slots 3 and 4, and nothing
  // beside them. The request's index, rate and audio count. The host's context must be current.
  // False on failure, with one line in *error.
  bool ProcessFrame(const FrameRequest& request, HostFrame* input, HostFrame* output,
                    std::string* error);

  // Takes the values of the coming frames from `source` instead, which must outlive the session;
  // null goes back to parameters().
  void SetParameterSource(const ParameterSource* source) { source_ = source; }

  // Renders one frame into `output`, height rows `output_stride` bytes apart. Frames may come in
  // any order and change their size. False on failure, with one line in *error that says the
  // plug-in's reason; the output is untouched then.
  bool RenderFrame(const FrameRequest& request, void* output, int32_t output_stride,
                   std::string* error);

  // Whether the effect asked for a person mask.
  bool WantsPersonMask() const { return wants_person_mask_; }

  // The mask source offered to the coming frames, or null for none. Borrowed.
  void SetPersonMask(PersonMaskSource* source) { person_mask_ = source; }

  PluginHost& host() { return *host_; }

 private:
  EffectSession(std::shared_ptr<PluginHost> host, EffectListing effect);
  bool Initialize(const std::string& registered_name, std::string* error);
  // Puts the plug-in's reason into *error; false.
  bool Fail(const std::string& what, int32_t code, std::string* error);
  bool RenderInMemory(const FrameRequest& request, void* output, int32_t output_stride,
                      std::string* error);
  bool RenderOnGpu(const FrameRequest& request, void* output, int32_t output_stride,
                   std::string* error);
  // What stands for an input that is missing, of the request's size and type.
  MemoryFrame& BlackFrame(const FrameRequest& request);
  bool Process(const FrameRequest& request, HostFrame* input, HostFrame* output,
               std::string* error);

  std::shared_ptr<PluginHost> host_;
  EffectListing effect_;
  std::unique_ptr<PackageCopy> package_copy_;  // null unless without_blend
  KRVEffect* instance_ = nullptr;
  bool wants_person_mask_ = false;
  PersonMaskSource* person_mask_ = nullptr;
  ParameterValues parameters_;
  const ParameterSource* source_ = nullptr;
  std::unique_ptr<MemoryFrame> black_frame_;      // kept from frame to frame, nobody writes it
  std::unique_ptr<TextureFrame> input_texture_;   // kept from frame to frame, GPU only
  std::unique_ptr<TextureFrame> output_texture_;  // kept from frame to frame, GPU only
};

}  // namespace krv::host
