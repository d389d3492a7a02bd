#include "version_text.h"

#include <sodium.h>

#include <CLI/Version.hpp>
#include <nlohmann/json.hpp>
#include <opencv2/core/utility.hpp>
#include <string>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/avutil.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#ifdef KRV_STUDIO
#include <SDL_version.h>
#include <imgui.h>
#endif

namespace krv::tool {
namespace {

std::string Dotted(int major, int minor, int patch) {
  return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
}

std::string OfAv(unsigned version) {
  return Dotted(AV_VERSION_MAJOR(version), AV_VERSION_MINOR(version), AV_VERSION_MICRO(version));
}

std::string Line(const std::string& name, const std::string& version) {
  constexpr size_t kWidth = 15;
  return "\n" + name + std::string(kWidth - name.size(), ' ') + version;
}

#ifdef KRV_STUDIO

std::string OfSdl() {
  SDL_version version;
  SDL_GetVersion(&version);
  return Dotted(version.major, version.minor, version.patch);
}

#endif

}  // namespace

std::string VersionText() {
  std::string text = "krv " KRV_VERSION;
  text += Line("FFmpeg", av_version_info());
  text += Line("libavcodec", OfAv(avcodec_version()));
  text += Line("libavformat", OfAv(avformat_version()));
  text += Line("libavutil", OfAv(avutil_version()));
  text += Line("libswresample", OfAv(swresample_version()));
  text += Line("libswscale", OfAv(swscale_version()));
  text += Line("OpenCV", cv::getVersionString());
  text += Line("FFTW", KRV_FFTW_VERSION);
  text += Line("libsodium", sodium_version_string());
#ifdef KRV_STUDIO
  text += Line("SDL", OfSdl());
  text += Line("Dear ImGui", ImGui::GetVersion());
#endif
  text += Line("nlohmann JSON", Dotted(NLOHMANN_JSON_VERSION_MAJOR, NLOHMANN_JSON_VERSION_MINOR,
                                       NLOHMANN_JSON_VERSION_PATCH));
  text += Line("CLI11", CLI11_VERSION);
  return text;
}

}  // namespace krv::tool
