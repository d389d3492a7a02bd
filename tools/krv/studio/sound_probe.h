// The spectrum and the level that shaders get.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "effect_session.h"
#include "temporary_folder.h"

namespace krv::studio {

struct SoundReading {
  static constexpr int kBands = 256;
  // The values of audio_tex from the lowest frequency to the highest, 0 to 1.
  std::array<float, kBands> spectrum{};
  float level = 0;  // audio_left_db, to half a dB
};

// Asks the plug-in itself: an effect that draws what it is given as a row of pixels. On the host's
// thread throughout.
class SoundProbe {
 public:
  // Null on failure, with one line in *error.
  static std::unique_ptr<SoundProbe> Create(std::shared_ptr<host::PluginHost> host,
                                            std::string* error);

  // What shaders get for a frame. Silence when the plug-in fails.
  SoundReading Read(const host::FrameRequest& frame);

 private:
  SoundProbe(std::unique_ptr<host::TemporaryFolder> folder,
             std::unique_ptr<host::EffectSession> session)
      : folder_(std::move(folder)), session_(std::move(session)) {}

  std::unique_ptr<host::TemporaryFolder> folder_;  // of the package
  std::unique_ptr<host::EffectSession> session_;
};

}  // namespace krv::studio
