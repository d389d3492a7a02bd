#include "render_output.h"

#include "media/media_writer.h"
#include "media/png_sequence_writer.h"

namespace krv::tool {

std::unique_ptr<host::FrameSink> MakeOutput(const RenderOptions& options,
                                            const RenderInput& input) {
  if (options.format.kind == host::OutputKind::kPngSequence) {
    return std::make_unique<host::PngSequenceWriter>(options.output, options.frames.first);
  }
  host::MovieSettings settings;
  settings.output = options.format;
  settings.video = input.video();
  settings.quality = options.quality;
  settings.audio = input.audio();
  if (options.frames.IsEverything() && host::CanCopyAudio(options.format, input.audio_path())) {
    settings.copy = host::AudioCopy{input.audio_path(), input.audio_origin()};
  }
  return std::make_unique<host::MediaWriter>(options.output, settings);
}

}  // namespace krv::tool
