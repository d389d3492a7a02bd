// An effect over the gallery's clip.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "effect_session.h"
#include "gallery/gallery_clip.h"

namespace krv::tool {

struct EffectPreview {
  host::Picture still;  // the frame that the effect changes most
  std::string film;     // a WebM file's bytes, with sound
};

// Renders every frame of the clip; `scratch` is the file that the film is written to on the way.
// `go_on` is asked after each frame; nothing comes back once it says no. Throws MediaError and
// EffectError.
std::optional<EffectPreview> RenderPreview(GalleryClip* clip, host::EffectSession* session,
                                           const std::filesystem::path& scratch,
                                           const std::function<bool()>& go_on);

}  // namespace krv::tool
