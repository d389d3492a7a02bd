#include "studio/keyframe_file.h"

#include "check/finding.h"
#include "keyframes/keyframe_reader.h"
#include "studio/saved_file.h"

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
  return SaveFile(file, text, "give another name, in a folder that is there and open to you",
                  error);
}

}  // namespace krv::studio
