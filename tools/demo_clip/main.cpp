// krv_demo_clip OUT.mp4: a clip of 12 s with music, to show effects on.
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "demo_clip.h"
#include "media/media_error.h"
#include "platform/process.h"
#include "platform/standard_streams.h"
#include "utf8_path.h"

int main(int argc, char** argv) {
  krv::host::platform::PrepareStandardStreams();
  const std::vector<std::string> arguments = krv::host::platform::ProgramArguments(argc, argv);
  if (arguments.size() != 1) {
    std::fputs("usage: krv_demo_clip OUT.mp4\n", stderr);
    return 2;
  }
  krv::host::SilenceAvLog();
  try {
    krv::demo::WriteDemoClip(krv::host::PathFromUtf8(arguments.front()), {1280, 720},
                             [] { return true; });
  } catch (const std::exception& error) {
    std::fprintf(stderr, "krv_demo_clip: %s\n", error.what());
    return 2;
  }
  return 0;
}
