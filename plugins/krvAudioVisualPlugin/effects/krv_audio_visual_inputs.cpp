// The input textures of a frame, and its audio.
#include <algorithm>
#include <array>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "audio/level_smoothing.h"
#include "boundary/effect_image.h"
#include "effects/frame_timing.h"
#include "effects/krv_audio_visual.h"
#include "effects/mask_box.h"
#include "effects/person_mask.h"
#include "graphics/px_image.h"
#include "krv/effect_context.h"

namespace krv {
namespace {

constexpr uint8_t kSilentChannels = 2;
constexpr int32_t kSilentFrames = 1764;
constexpr std::array<int16_t, size_t{kSilentChannels} * kSilentFrames> kSilence{};

struct AudioSamples {
  int32_t frames = kSilentFrames;
  uint8_t channels = kSilentChannels;
  const int16_t* samples = kSilence.data();
};

AudioSamples ReadAudio(AudioBlock* block) {
  if (block == nullptr) return {};
  AudioSamples audio;
  audio.channels = static_cast<uint8_t>(block->GetChannelCount() & 255);
  audio.frames = block->GetSampleFrames();
  block->GetSampleRate();
  block->GetStartSample();
  audio.samples = block->GetSamples();
  const bool usable = audio.channels > 0 && audio.frames >= 2 && audio.samples != nullptr;
  return usable ? audio : AudioSamples{};
}

// A texture cannot be read while it is drawn into.
bool IsAlsoOutput(const EffectImage& input, const EffectImage* output) {
  return output != nullptr && output->on_gpu() && output->TextureName() == input.TextureName();
}

std::shared_ptr<PXImage> CopyOf(PXImage& image) {
  cv::Mat pixels;
  image.Download(pixels);
  if (pixels.empty()) return nullptr;
  DataType type = DataType::kUint8;
  if (pixels.depth() == CV_16U) type = DataType::kUint16;
  if (pixels.depth() == CV_32F) type = DataType::kFloat;
  return CreateImage(static_cast<uint32_t>(pixels.cols), static_cast<uint32_t>(pixels.rows),
                     PixelLayout::kBgra, type, static_cast<uint32_t>(pixels.step[0]), pixels.data);
}

std::shared_ptr<PXImage> ImageOfTexture(const std::shared_ptr<EffectImage>& frame,
                                        const EffectImage* output) {
  auto image = CreateImageFromFrame(frame, nullptr);
  return image != nullptr && IsAlsoOutput(*frame, output) ? CopyOf(*image) : image;
}

// A texture that no pass reads.
std::shared_ptr<PXImage> MakeUnreadImage() {
  constexpr std::array<uint8_t, 4> kTransparent{};
  return CreateImage(1, 1, PixelLayout::kBgra, DataType::kUint8, 4, kTransparent.data());
}

}  // namespace

void KRVAudioVisual::AddInput(const char* name, std::shared_ptr<PXImage> image) {
  if (image == nullptr) return;
  SetIntUniform(name, static_cast<int32_t>(inputs_.images.size()));
  inputs_.images.push_back(std::move(image));
}

int32_t KRVAudioVisual::GatherInputs(EffectContext& context, ImageList& inputs) {
  PXImage* background = GatherBackground(context);
  times_.Mark("upload");
  const bool shows_someone = GatherMask(context, background);
  times_.Mark("mask");
  if (shows_someone) {
    if (gradient_texture_ != nullptr) AddInput("gradient_color_tex", gradient_texture_);
    GatherAudio(context);
    times_.Mark("audio");
  }
  inputs = inputs_;
  return kOk;
}

// A frame in memory is not uploaded before a pass reads it, where nothing else does. Null when the
// host gives no frame, or one without a picture.
PXImage* KRVAudioVisual::GatherBackground(EffectContext& context) {
  input_frame_ = EffectImage::Wrap(context.GetInputFrame());
  if (input_frame_ == nullptr || !input_frame_->HasBuffer()) {
    input_frame_.reset();
    return nullptr;
  }
  if (input_frame_->on_gpu()) {
    background_.reset();
    AddInput("background_tex", ImageOfTexture(input_frame_, output_frame_.get()));
    return inputs_.images.empty() ? nullptr : inputs_.images.back().get();
  }
  if (Traits().original || !ChooseCompositor().ReadsInputTexture()) {
    ReuseImageOverFrame(background_, input_frame_);
    if (unread_background_ == nullptr) unread_background_ = MakeUnreadImage();
    if (background_ != nullptr) AddInput("background_tex", unread_background_);
  } else {
    ReuseImageFromFrame(background_, input_frame_, input_frame_->pixels());
    AddInput("background_tex", background_);
  }
  return background_.get();
}

// One mask at most: that of `mask` replaces the person's.
bool KRVAudioVisual::GatherMask(EffectContext& context, PXImage* background) {
  mask_.release();
  if (background == nullptr) return true;
  cv::Mat mask;
  if (Traits().uses_human_segment) mask = PersonMask(context, *background);
  if (Traits().uses_mask) mask = EightBitPicture(*background);
  if (mask.empty()) return true;

  const MaskBox box = FindMaskBox(mask);
  if (box.IsEmpty()) return false;
  const auto width = static_cast<float>(mask.cols);
  const auto height = static_cast<float>(mask.rows);
  mask_left_right_ = {box.left / width, (box.left + box.width) / width};
  mask_bottom_top_ = {box.top / height, (box.top + box.height) / height};
  ReuseImage(mask_image_, mask, PixelLayout::kBgra);
  AddInput("mask_tex", mask_image_);
  mask_ = mask;
  return true;
}

int32_t KRVAudioVisual::ExpectedInputCount() {
  return 2 + (Traits().uses_human_segment ? 1 : 0) + (Traits().uses_mask ? 1 : 0) +
         (gradient_texture_ != nullptr ? 1 : 0);
}

void KRVAudioVisual::GatherAudio(EffectContext& context) {
  const AudioSamples audio = ReadAudio(context.GetAudioBlock());
  cv::Mat spectrum;
  float level = 0;
  audio_->Process(spectrum, audio.frames, audio.channels, audio.samples, level);
  if (spectrum.cols > kWidestTexture) {  // a frame of seconds
    cv::resize(spectrum, spectrum, cv::Size(kWidestTexture, 1), 0, 0, cv::INTER_AREA);
  }

  const auto frame_rate = static_cast<float>(FramesPerSecond(context));
  const int64_t frame_index = context.GetFrameIndex();
  if (!previous_spectrum_.empty() && level_smoothing_ != 0 && frame_index != last_frame_index_) {
    SmoothSpectrum(previous_spectrum_, spectrum, level_smoothing_, frame_rate);
  } else {
    previous_spectrum_ = spectrum;
  }
  last_frame_index_ = frame_index;
  ReuseImage(audio_image_, previous_spectrum_, PixelLayout::kRgba);
  AddInput("audio_tex", audio_image_);

  left_level_ = SmoothLevel(left_level_, level, level_smoothing_, frame_rate);
  right_level_ = left_level_;
  SetFloatUniform("audio_left_db", left_level_);
  SetFloatUniform("audio_right_db", right_level_);
}

}  // namespace krv
