// The last stage of a render.
#pragma once

#include <memory>

#include "media/frame_sink.h"
#include "render_input.h"
#include "render_options.h"

namespace krv::tool {

// The output the options ask for. The sound is copied when everything is rendered and the container
// takes its codec. Throws MediaError.
std::unique_ptr<host::FrameSink> MakeOutput(const RenderOptions& options, const RenderInput& input);

}  // namespace krv::tool
