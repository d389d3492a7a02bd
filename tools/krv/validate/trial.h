// One instance under watch: every call on it is followed by a look at everything that it may have
// done besides.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "audio_block.h"
#include "validate/bench.h"
#include "validate/guarded_picture.h"
#include "validate/scripted_context.h"

namespace krv::tool {

// Sound that differs from frame to frame: two channels, 1764 samples each.
class TestSound {
 public:
  explicit TestSound(int64_t frame_index);
  AudioBlock* block() { return &block_; }

 private:
  std::vector<int16_t> samples_;
  host::BorrowedAudioBlock block_;
};

// A person in the middle of the picture.
class TestPerson final : public PersonMaskSource {
 public:
  TestPerson();
  uint8_t GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) override;

 private:
  std::vector<uint8_t> pixels_;
};

// One frame to render.
struct FrameCase {
  PictureShape input = {};
  PictureShape output = {};
  int64_t index = 7;
  int64_t rate_numerator = 25;
  int64_t rate_denominator = 1;
  AudioBlock* audio = nullptr;              // null: a TestSound
  PersonMaskSource* person_mask = nullptr;  // null: a TestPerson
  std::map<std::string, ParameterValue, std::less<>> answers = {};
  const ParameterValue* refusal = nullptr;
  bool has_input = true;
  bool in_place = false;  // the output is its own input
  bool on_gpu = false;
  // The codes allowed; without kOk an untouched picture is expected.
  std::vector<int32_t> codes = {kOk};

  void SetShape(const PictureShape& shape) { input = output = shape; }
};

class Trial {
 public:
  // Creates an instance; throws CannotGoOn. Both must outlive the trial.
  Trial(Bench* bench, const std::string& unique_name, host::GlContext* gl = nullptr);

  KRVEffect& effect() { return *effect_; }
  EffectPtr& owner() { return effect_; }
  const std::string& name() const { return name_; }

  // Slots 1 and 7 under watch; 0 is expected.
  bool Initialise();
  void Release();

  // Renders the frame twice, the second time in the middle of the host's own drawing, and compares.
  // The picture, or nothing on failure.
  std::optional<Rows> Render(const FrameCase& frame);
  // Once, for speed: everything else is looked at all the same.
  std::optional<Rows> RenderOnce(const FrameCase& frame);

  // A call of a slot: its code, and the state that it leaves behind.
  template <class Operation>
  int32_t Watch(const std::string& slot, Operation&& operation);

 private:
  // How the host is while a frame is drawn: in the middle of its own drawing, or not.
  enum class HostState { kPlain, kDrawing };

  std::optional<Rows> RenderIn(HostState state, const FrameCase& frame);
  std::optional<Rows> RenderInMemory(HostState state, const FrameCase& frame);
  std::optional<Rows> RenderOnGpu(HostState state, const FrameCase& frame);
  int32_t Process(HostState state, const FrameCase& frame, HostFrame* input, HostFrame* output);
  int32_t ProcessWith(const FrameCase& frame, ScriptedContext* context);
  void LookAtPixels(const FrameCase& frame, int32_t code, const GuardedPicture& output,
                    uint8_t background);
  void LookAtState(const std::string& slot, const GlState& before);

  Bench& bench_;
  Examiner& examiner_;
  host::GlContext& gl_;
  const bool owns_errors_;  // OpenGL's errors are collected in the bench's own context only
  std::string name_;
  EffectPtr effect_;
};

// Calls `look` with an initialised instance of each of the bench's chosen effects.
void ForChosenEffects(Bench& bench, const std::function<void(Trial&)>& look);

template <class Operation>
int32_t Trial::Watch(const std::string& slot, Operation&& operation) {
  const GlState before = ReadGlState();
  if (owns_errors_) bench_.gl_errors().Take();
  const int32_t code = examiner_.Call(slot, std::forward<Operation>(operation));
  LookAtState(slot, before);
  return code;
}

}  // namespace krv::tool
