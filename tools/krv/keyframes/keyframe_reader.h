// Reads a file of keyframes.
#pragma once

#include <filesystem>
#include <optional>

#include "check/finding.h"
#include "keyframes/parameter_tracks.h"
#include "media/frame_rate.h"
#include "registrar.h"

namespace krv::tool {

// The file as packages/params.schema.json describes it, for the parameters of `effect` in a clip of
// that rate. Nothing when there is an error; the findings name file, line, place and remedy of
// each.
std::optional<ParameterTracks> ReadKeyframes(const std::filesystem::path& file,
                                             const host::EffectListing& effect,
                                             const host::FrameRate& rate, Findings* findings);

}  // namespace krv::tool
