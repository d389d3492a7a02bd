#include "validate/trial.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace krv::tool {
namespace {

using Clock = std::chrono::steady_clock;

constexpr uint8_t kBackground = 0xA5;
constexpr uint8_t kOtherBackground = 0x3C;

constexpr int32_t kSampleFrames = 1764;  // 1/25 s at 44.1 kHz
constexpr uint32_t kChannels = 2;
constexpr int32_t kSampleRate = 44100;

constexpr int32_t kPersonSize = 64;  // pixels each way

std::vector<int16_t> Samples(int64_t frame_index) {
  std::vector<int16_t> samples(size_t{kSampleFrames} * kChannels);
  const double tone = 0.02 + 0.01 * static_cast<double>(frame_index % 13);
  for (size_t i = 0; i < samples.size(); ++i) {
    const size_t position = i / kChannels;
    samples[i] = static_cast<int16_t>(12000 * std::sin(tone * static_cast<double>(position)));
  }
  return samples;
}

// The place of the first difference, for people.
std::string Difference(const Rows& a, const Rows& b, const PictureShape& shape) {
  if (a.size() != b.size()) return "another size";
  const auto at =
      static_cast<int64_t>(std::mismatch(a.begin(), a.end(), b.begin()).first - a.begin());
  const int64_t row = shape.RowBytes();
  return "another one at x " + std::to_string(at % row / host::BytesPerPixel(shape.pixel_type)) +
         ", y " + std::to_string(at / row);
}

}  // namespace

TestSound::TestSound(int64_t frame_index)
    : samples_(Samples(frame_index)),
      block_({samples_.data(), kSampleFrames, kChannels, kSampleRate, 0}) {}

TestPerson::TestPerson() : pixels_(size_t{kPersonSize} * kPersonSize * 4) {
  for (int32_t y = 0; y < kPersonSize; ++y) {
    for (int32_t x = 0; x < kPersonSize; ++x) {
      const int32_t dx = x - kPersonSize / 2;
      const int32_t dy = y - kPersonSize / 2;
      const bool inside = 4 * dx * dx + dy * dy < kPersonSize * kPersonSize / 6;
      pixels_[static_cast<size_t>(y * kPersonSize + x) * 4 + 3] = inside ? 255 : 0;
    }
  }
}

uint8_t TestPerson::GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) {
  *pixels = pixels_.data();
  *width = *height = kPersonSize;
  *stride = kPersonSize * 4;
  return 1;
}

Trial::Trial(Bench* bench, const std::string& unique_name, host::GlContext* gl)
    : bench_(*bench),
      examiner_(bench->examiner()),
      gl_(gl == nullptr ? bench->gl() : *gl),
      owns_errors_(gl == nullptr),
      name_(unique_name),
      effect_(bench->Create(unique_name)) {}

bool Trial::Initialise() {
  ScriptedContext context;
  const int32_t code = Watch("slot 1", [&] { return effect_->Initialize(&context); });
  return examiner_.ExpectCode("slot 1 of \"" + name_ + "\"", code, {kOk});
}

void Trial::Release() {
  const int32_t code = Watch("slot 7", [&] { return effect_->ReleaseResources(); });
  examiner_.ExpectCode("slot 7", code, {kOk});
  bench_.services().DeleteReleasedFrames();
}

void Trial::LookAtState(const std::string& slot, const GlState& before) {
  if (!examiner_.Expect(gl_.IsCurrent(), "the host's context current after " + slot, "another")) {
    gl_.MakeCurrent();
    return;
  }
  const std::vector<std::string> changes = ForbiddenChanges(before, ReadGlState());
  examiner_.Expect(changes.empty(), "the GL state left in order by " + slot,
                   changes.empty() ? "" : changes.front());
  if (!owns_errors_) return;
  const std::vector<std::string> errors = bench_.gl_errors().Take();
  examiner_.Expect(errors.empty(), "no GL error in " + slot, errors.empty() ? "" : errors.front());
}

int32_t Trial::Process(HostState state, const FrameCase& frame, HostFrame* input,
                       HostFrame* output) {
  TestSound sound(frame.index);
  TestPerson person;
  ScriptedContext context;
  context.index = frame.index;
  context.rate_numerator = frame.rate_numerator;
  context.rate_denominator = frame.rate_denominator;
  context.input = frame.in_place ? output : frame.has_input ? input : nullptr;
  context.output = output;
  context.audio = frame.audio == nullptr ? sound.block() : frame.audio;
  context.person_mask = frame.person_mask == nullptr ? &person : frame.person_mask;
  context.answers = frame.answers;
  context.refusal = frame.refusal;
  if (state == HostState::kPlain) return ProcessWith(frame, &context);
  const HostileGlState drawing;
  return ProcessWith(frame, &context);
}

int32_t Trial::ProcessWith(const FrameCase& frame, ScriptedContext* context) {
  examiner_.Call("slot 3", [&] { return effect_->ClearInputs(); });
  const auto start = Clock::now();
  const int32_t code = Watch("slot 4", [&] { return effect_->ProcessFrame(context); });
  examiner_.TookFrame(Clock::now() - start);
  bench_.services().DeleteReleasedFrames();
  if (code == Examiner::kThrew) return code;
  const bool allowed = std::find(frame.codes.begin(), frame.codes.end(), code) != frame.codes.end();
  examiner_.Expect(allowed,
                   frame.codes.front() == kOk ? "a frame from slot 4" : "a refusal by slot 4",
                   "code " + std::to_string(code));
  return code;
}

void Trial::LookAtPixels(const FrameCase& frame, int32_t code, const GuardedPicture& output,
                         uint8_t background) {
  examiner_.Expect(output.GuardsAreWhole(), "nothing written beside the rows of the output",
                   "changed bytes there");
  if (code != kOk) {
    const bool untouched = frame.in_place ? output.TakeRows() == TestPattern(frame.output)
                                          : output.RowsHold(background);
    examiner_.Expect(untouched, "an output untouched by a failing frame", "changed pixels");
    return;
  }
  examiner_.Expect(!output.RowsHold(background), "a written output", "one that was not touched");
  examiner_.Expect(IsFinite(output.TakeRows(), frame.output.pixel_type), "numbers in all pixels",
                   "one that is none");
}

std::optional<Rows> Trial::RenderInMemory(HostState state, const FrameCase& frame) {
  const uint8_t background = state == HostState::kPlain ? kBackground : kOtherBackground;
  const Rows pattern = TestPattern(frame.input);
  GuardedPicture input(frame.input);
  input.SetRows(pattern);
  GuardedPicture output(frame.output);
  output.FillRows(background);
  if (frame.in_place) output.SetRows(pattern);
  host::MemoryFrame input_frame(input.Description(), input.pixels());
  host::MemoryFrame output_frame(output.Description(), output.pixels());
  const int32_t code = Process(state, frame, &input_frame, &output_frame);
  examiner_.Expect(input.GuardsAreWhole() && input.TakeRows() == pattern,
                   "an input that is only read", "changed bytes");
  LookAtPixels(frame, code, output, background);
  if (code != kOk) return std::nullopt;
  return output.TakeRows();
}

std::optional<Rows> Trial::RenderOnGpu(HostState state, const FrameCase& frame) {
  const auto texture = [](const PictureShape& shape) {
    std::string error;
    auto created = host::TextureFrame::Create(shape.width, shape.height, shape.pixel_type, &error);
    if (created == nullptr) throw CannotGoOn(error);
    return created;
  };
  const auto input = texture(frame.input);
  const auto output = texture(frame.output);
  const Rows pattern = TestPattern(frame.input);
  input->Upload(pattern.data(), frame.input.RowBytes());
  Rows rows(TestPattern(frame.output).size(),
            state == HostState::kPlain ? kBackground : kOtherBackground);
  output->Upload((frame.in_place ? pattern : rows).data(), frame.output.RowBytes());
  const int32_t code = Process(state, frame, input.get(), output.get());
  Rows left = pattern;
  input->ReadPixels(left.data(), frame.input.RowBytes());
  examiner_.Expect(left == pattern, "an input texture that is only read", "changed pixels");
  if (code != kOk) return std::nullopt;
  output->ReadPixels(rows.data(), frame.output.RowBytes());
  return rows;
}

std::optional<Rows> Trial::RenderIn(HostState state, const FrameCase& frame) {
  return frame.on_gpu ? RenderOnGpu(state, frame) : RenderInMemory(state, frame);
}

std::optional<Rows> Trial::RenderOnce(const FrameCase& frame) {
  return RenderIn(HostState::kPlain, frame);
}

std::optional<Rows> Trial::Render(const FrameCase& frame) {
  auto first = RenderIn(HostState::kPlain, frame);
  const auto second = RenderIn(HostState::kDrawing, frame);
  if (!examiner_.Expect(first.has_value() == second.has_value(),
                        "the same result in the middle of the host's own drawing", "another") ||
      !first) {
    return std::nullopt;
  }
  // Every byte of both has been written, for what lay under them differed.
  examiner_.Expect(*first == *second, "the same picture for the same frame",
                   Difference(*first, *second, frame.output));
  return first;
}

void ForChosenEffects(Bench& bench, const std::function<void(Trial&)>& look) {
  for (const host::EffectListing& effect : bench.ChosenEffects()) {
    bench.examiner().Step("slot 1 of \"" + effect.unique_name + "\"");
    Trial trial(&bench, effect.unique_name);
    if (!trial.Initialise()) continue;
    look(trial);
    bench.examiner().Step("slot 7 of \"" + effect.unique_name + "\"");
    trial.Release();
  }
}

}  // namespace krv::tool
