#include "studio/sound_probe.h"

#include <fstream>
#include <string_view>
#include <utility>

#include "package_files.h"
#include "platform/file_system.h"

namespace krv::studio {
namespace {

constexpr std::string_view kDescription = R"({
  "effect_type": "audio_visualization",
  "unique_name": "NAME",
  "display_name": "What shaders get",
  "original": true,
  "opengl_frag": ["probe.frag"],
  "params": []
})";
// Red: the spectrum. Green: the level, where 256 dB are the whole.
constexpr std::string_view kShader = R"(#version 120
uniform sampler2D audio_tex;
uniform float audio_left_db;
uniform vec2 iResolution;
void main() {
  float at = gl_FragCoord.x / iResolution.x;
  gl_FragColor = vec4(texture2D(audio_tex, vec2(at, 0.5)).r, audio_left_db / 256.0, 0.0, 1.0);
}
)";

// The plug-in keeps the first package of a name for the whole process, and this one's folder goes
// with the probe.
std::string NewName() {
  static int count = 0;
  return "krv_studio_sound_probe." + std::to_string(++count);
}

std::string DescriptionWith(const std::string& name) {
  constexpr std::string_view kPlace = "NAME";
  std::string text(kDescription);
  return text.replace(text.find(kPlace), kPlace.size(), name);
}

bool Write(const std::filesystem::path& path, std::string_view text) {
  std::ofstream file(host::platform::OpenablePath(path), std::ios::binary);
  file << text;
  file.close();
  return static_cast<bool>(file);
}

}  // namespace

std::unique_ptr<SoundProbe> SoundProbe::Create(std::shared_ptr<host::PluginHost> host,
                                               std::string* error) {
  auto folder = host::TemporaryFolder::Create(error);
  if (folder == nullptr) return nullptr;
  const std::string name = NewName();
  if (!Write(folder->path() / host::kDescriptionFileName, DescriptionWith(name)) ||
      !Write(folder->path() / "probe.frag", kShader)) {
    *error = "the folder for temporary files cannot be written to";
    return nullptr;
  }
  if (!host->RegisterPackages(folder->path(), error)) return nullptr;
  auto session = host::EffectSession::Create(std::move(host), name, error);
  if (session == nullptr) return nullptr;
  return std::unique_ptr<SoundProbe>(new SoundProbe(std::move(folder), std::move(session)));
}

SoundReading SoundProbe::Read(const host::FrameRequest& frame) {
  SoundReading reading;
  host::FrameRequest request = frame;
  request.width = SoundReading::kBands;
  request.height = 1;
  request.pixel_type = kPixel8;
  request.input = nullptr;
  std::array<uint8_t, size_t{SoundReading::kBands} * 4> pixels{};
  std::string ignored;
  if (!session_->RenderFrame(request, pixels.data(), pixels.size(), &ignored)) return reading;
  for (size_t i = 0; i < reading.spectrum.size(); ++i) {
    reading.spectrum[i] = static_cast<float>(pixels[4 * i + 2]) / 255.0f;
  }
  reading.level = static_cast<float>(pixels[1]) * 256.0f / 255.0f;
  return reading;
}

}  // namespace krv::studio
