// Frames that are none: without a buffer, without a size, with a description that makes no sense.
#include <string>

#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

constexpr uint8_t kBackground = 0xA5;

// Says what it is told to say.
class OddFrame final : public HostFrame {
 public:
  OddFrame(const FrameDescription& description, void* pixels, int32_t code = kOk)
      : description_(description), pixels_(pixels), code_(code) {}

  int32_t Describe(FrameDescription* out) override {
    *out = description_;
    return code_;
  }
  void* GetPixels() override { return pixels_; }
  int32_t ReadPixels(void* /*destination*/, int32_t /*destination_stride*/) override {
    return kFailed;
  }

 private:
  FrameDescription description_;
  void* pixels_;
  int32_t code_;
};

class OddFrames {
 public:
  explicit OddFrames(Bench& bench)
      : bench_(bench),
        trial_(&bench, bench.first_effect().unique_name),
        sound_input_(64, 48, kPixel8) {
    bench_.examiner().Step("slot 1 and a frame");
    if (!trial_.Initialise()) throw CannotGoOn("there is no instance to give frames to");
    before_ = trial_.Render({});
  }

  // A frame as output, over a buffer for 64 x 48 pixels of 8 bits, or null.
  void AsOutput(const std::string& what, const FrameDescription& description, bool has_buffer,
                const std::vector<int32_t>& codes, int32_t describe_code = kOk) {
    GuardedPicture picture({});
    picture.FillRows(kBackground);
    OddFrame output(description, has_buffer ? picture.pixels() : nullptr, describe_code);
    const int32_t code = Process("an output " + what, &sound_input_, &output, codes);
    bench_.examiner().Expect(picture.GuardsAreWhole(), "nothing written beside the buffer",
                             "changed bytes there");
    bench_.examiner().Expect(code == kOk || picture.RowsHold(kBackground),
                             "an output untouched by a failing frame", "changed pixels");
  }

  void AsInput(const std::string& what, const FrameDescription& description, bool has_buffer,
               const std::vector<int32_t>& codes, int32_t describe_code = kOk) {
    GuardedPicture picture({});
    const Rows pattern = TestPattern(picture.shape());
    picture.SetRows(pattern);
    GuardedPicture result({});
    result.FillRows(kBackground);
    OddFrame input(description, has_buffer ? picture.pixels() : nullptr, describe_code);
    host::MemoryFrame output(result.Description(), result.pixels());
    const int32_t code = Process("an input " + what, &input, &output, codes);
    bench_.examiner().Expect(picture.GuardsAreWhole() && picture.TakeRows() == pattern,
                             "an input that is only read", "changed bytes");
    bench_.examiner().Expect(code == kOk || result.RowsHold(kBackground),
                             "an output untouched by a failing frame", "changed pixels");
  }

  void NoOutput() { Process("no output frame", &sound_input_, nullptr, {kNothingToDo}); }

  void Finish() {
    bench_.examiner().Step("a frame after odd ones");
    bench_.examiner().Expect(trial_.Render({}) == before_, "the picture of before", "another");
    trial_.Release();
  }

 private:
  int32_t Process(const std::string& what, HostFrame* input, HostFrame* output,
                  const std::vector<int32_t>& codes) {
    bench_.examiner().Step("a frame with " + what);
    ScriptedContext context;
    context.input = input;
    context.output = output;
    bench_.examiner().Call("slot 3", [&] { return trial_.effect().ClearInputs(); });
    const int32_t code =
        bench_.examiner().Call("slot 4", [&] { return trial_.effect().ProcessFrame(&context); });
    const bool allowed = std::find(codes.begin(), codes.end(), code) != codes.end();
    if (code != Examiner::kThrew) {
      bench_.examiner().Expect(allowed, "code " + std::to_string(codes.front()) + " from slot 4",
                               std::to_string(code));
    }
    bench_.gl_errors().Take();  // OpenGL may be asked whether it takes such a frame
    return code;
  }

  Bench& bench_;
  Trial trial_;
  host::MemoryFrame sound_input_;
  std::optional<Rows> before_;
};

struct OddDescription {
  const char* what;
  FrameDescription description;
};

constexpr OddDescription kOddDescriptions[] = {
    {"of width 0", {kPixel8, kFrameInMemory, 0, 48, 256}},
    {"of height 0", {kPixel8, kFrameInMemory, 64, 0, 256}},
    {"of width -64", {kPixel8, kFrameInMemory, -64, 48, 256}},
    {"of height -48", {kPixel8, kFrameInMemory, 64, -48, 256}},
    {"of the smallest width", {kPixel8, kFrameInMemory, INT32_MIN, 48, 256}},
    {"of pixel type 3", {3, kFrameInMemory, 64, 48, 256}},
    {"of pixel type -1", {-1, kFrameInMemory, 64, 48, 256}},
    {"of form 1", {kPixel8, 1, 64, 48, 256}},
    {"of form -1", {kPixel8, -1, 64, 48, 256}},
    {"with a stride of 0", {kPixel8, kFrameInMemory, 64, 48, 0}},
    {"with a stride below its row", {kPixel8, kFrameInMemory, 64, 48, 255}},
    {"with a stride of -256", {kPixel8, kFrameInMemory, 64, 48, -256}},
    {"with the smallest stride", {kPixel8, kFrameInMemory, 64, 48, INT32_MIN}},
    {"on a GPU that the host does not have", {kPixel8, kFrameOnGpu, 64, 48, 256}},
};

constexpr FrameDescription kSound = {kPixel8, kFrameInMemory, 64, 48, 256};

}  // namespace

void CheckFramesWithoutBuffer(Bench& bench) {
  bench.Prepare();
  OddFrames frames(bench);
  frames.NoOutput();
  frames.AsOutput("without a buffer", kSound, false, {kNothingToDo});
  frames.AsInput("without a buffer", kSound, false, {kOk, kFailed});
  frames.Finish();
}

void CheckOddDescriptions(Bench& bench) {
  bench.Prepare();
  OddFrames frames(bench);
  for (const OddDescription& odd : kOddDescriptions) {
    frames.AsOutput(odd.what, odd.description, true, {kFailed, kNothingToDo});
    frames.AsInput(odd.what, odd.description, true, {kFailed, kNothingToDo, kOk});
  }
  frames.AsOutput("that does not describe itself", {}, true, {kFailed, kNothingToDo}, kFailed);
  frames.AsInput("that does not describe itself", {}, true, {kFailed, kNothingToDo, kOk}, kFailed);
  frames.Finish();
}

}  // namespace krv::tool
