#include "studio/sound_device.h"

#include <cstdint>

#include "studio/studio.h"

namespace krv::studio {

namespace {
constexpr Uint16 kBuffer = 1024;  // samples per channel
}

std::unique_ptr<SoundDevice> SoundDevice::Open(SoundFeeder* feeder,
                                               const host::AudioFormat& format) {
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return nullptr;
  std::unique_ptr<SoundDevice> device(new SoundDevice(feeder, format.channels));
  SDL_AudioSpec wish{};
  wish.freq = format.sample_rate;
  wish.format = AUDIO_S16SYS;
  wish.channels = static_cast<Uint8>(format.channels);
  wish.samples = kBuffer;
  wish.callback = Fill;
  wish.userdata = device.get();
  device->device_ = SDL_OpenAudioDevice(nullptr, 0, &wish, nullptr, 0);  // SDL converts
  if (device->device_ == 0) return nullptr;
  SDL_PauseAudioDevice(device->device_, 0);
  return device;
}

SoundDevice::~SoundDevice() {
  if (device_ != 0) SDL_CloseAudioDevice(device_);
  SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

void SoundDevice::Fill(void* self, Uint8* bytes, int length) {
  const auto* device = static_cast<SoundDevice*>(self);
  const int count = length / static_cast<int>(sizeof(int16_t)) / device->channels_;
  device->feeder_->Fill(reinterpret_cast<int16_t*>(bytes), count, Studio::Now());
}

}  // namespace krv::studio
