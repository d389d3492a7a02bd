// The loudspeakers.
#pragma once

#include <SDL.h>

#include <memory>

#include "studio/sound_feeder.h"

namespace krv::studio {

class SoundDevice {
 public:
  // Plays what the feeder gives from now on; it outlives the device. Null when there is no device:
  // then the player's clock runs by itself.
  static std::unique_ptr<SoundDevice> Open(SoundFeeder* feeder, const host::AudioFormat& format);
  ~SoundDevice();
  SoundDevice(const SoundDevice&) = delete;
  SoundDevice& operator=(const SoundDevice&) = delete;

 private:
  SoundDevice(SoundFeeder* feeder, int channels) : feeder_(feeder), channels_(channels) {}
  static void Fill(void* self, Uint8* bytes, int length);

  SoundFeeder* feeder_;
  int channels_;
  SDL_AudioDeviceID device_ = 0;
};

}  // namespace krv::studio
