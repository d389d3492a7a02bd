#include "render_output.h"

#include "media/media_writer.h"
#include "media/png_sequence_writer.h"
#include "media/raw_writer.h"
#include "platform/standard_streams.h"

namespace krv::tool {

std::unique_ptr<host::FrameSink> MakeOutput(const RenderOptions& options,
                                            const RenderInput& input) {
  if (options.format.kind == host::OutputKind::kPngSequence) {
    return std::make_unique<host::PngSequenceWriter>(options.output, options.frames.first);
  }
  if (options.format.kind == host::OutputKind::kRawFile) {
    return std::make_unique<host::RawWriter>(options.output);
  }
  if (options.format.kind == host::OutputKind::kRawStream) {
    return std::make_unique<host::RawWriter>(host::platform::TakeStandardOutput(),
                                             "standard output");
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
