// What an output file's name and the wish for transparency mean.
#pragma once

#include <filesystem>
#include <string>

namespace krv::host {

enum class OutputKind { kMovie, kPngSequence, kRawFile, kRawStream };

struct OutputFormat {
  OutputKind kind = OutputKind::kMovie;
  // Of movies only: names by which FFmpeg knows them.
  std::string container;
  std::string video_encoder;
  std::string audio_encoder;  // for sound that cannot be copied
  bool alpha = false;
};

// By the name's ending:
//   .mp4 .mkv       H.264; sound without a copy AAC
//   .mov            H.264; with alpha ProRes 4444
//   .webm           VP9, with alpha if wished; sound without a copy Opus
//   .png, folder/   numbered PNG pictures, always with alpha
//   .raw            bare BGRA frames, always with alpha; "-" is the same to standard output
// Throws MediaError for other names, for alpha in .mp4 and .mkv, and for a .png name without one
// number such as %05d.
OutputFormat ChooseOutputFormat(const std::filesystem::path& path, bool transparent);

}  // namespace krv::host
