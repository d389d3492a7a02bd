#include "studio/keyframe_file.h"

#include <fstream>

#include "check/finding.h"
#include "keyframes/keyframe_reader.h"
#include "media/media_error.h"
#include "media/part_file.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::studio {

std::optional<tool::ParameterTracks> LoadKeyframes(const std::filesystem::path& file,
                                                   const host::EffectListing& effect,
                                                   const host::FrameRate& rate,
                                                   std::string* error) {
  tool::Findings findings;
  auto tracks = tool::ReadKeyframes(file, effect, rate, &findings);
  if (tracks) return tracks;
  *error = tool::ToText(findings.front());
  const size_t more = findings.size() - 1;
  if (more > 0) *error += " (and " + std::to_string(more) + " more)";
  return std::nullopt;
}

bool SaveKeyframes(const std::filesystem::path& file, const std::string& text, std::string* error) {
  try {
    host::PartFile part(file);
    std::ofstream out(host::platform::OpenablePath(part.path()), std::ios::binary);
    out << text;
    out.close();
    if (!out) {
      throw host::MediaError(host::Utf8(file) +
                             ": cannot be written; give a folder that is there and open to you");
    }
    part.Commit();
  } catch (const host::MediaError& failure) {
    *error = failure.what();
    return false;
  }
  return true;
}

}  // namespace krv::studio
