// The few seconds that every effect of a gallery is shown on.
#pragma once

#include <filesystem>
#include <vector>

#include "media/audio_encoder.h"
#include "media/frame_source.h"
#include "render_input.h"

namespace krv::tool {

// Held in memory, since every effect goes over the same frames.
struct GalleryClip {
  host::VideoFormat video;  // square pixels
  host::AudioFormat audio;
  std::vector<RenderJob> frames;  // at least one
};

// The loudest seconds of the inputs, as `krv render` takes them, at most 640 x 360 pixels and 30
// frames per second. The last pictures fade into those before the first, so that the clip can be
// looped. Throws MediaError.
GalleryClip LoadGalleryClip(const std::vector<std::filesystem::path>& inputs);

// The same of the demo clip. Throws MediaError.
GalleryClip MakeDemoGalleryClip();

// Fades the last `fade` pictures into the first ones, which are then dropped: the first picture
// that is left follows the last one. Needs at least 2 * fade frames.
void BlendLoop(std::vector<RenderJob>* frames, size_t fade);

}  // namespace krv::tool
