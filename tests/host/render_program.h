// The built program's `krv render`, run as a user runs it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "host/host_test_files.h"
#include "host/media_maker.h"
#include "media/picture.h"
#include "support/process.h"

namespace krv::host {

// Media files and outputs lie in media_.folder(), packages in the folder of FilesTest.
class RenderProgramTest : public FilesTest {
 protected:
  // Runs `krv render` with these arguments. "@NAME" stands for the path of NAME in media_.folder().
  test::ProgramOutcome Render(const std::string& arguments);

  // As above, and expects success.
  void RenderWell(const std::string& arguments);

  // The whole line of arguments of Render's program call.
  std::string Line(const std::string& arguments) const;

  // The pictures of a sequence written to "@FOLDER/", by frame.
  std::map<int64_t, Picture> ReadPictures(const std::string& folder) const;

  MediaMaker media_;
};

// Bit for bit.
bool SamePicture(const Picture& a, const Picture& b);

// Of all bytes of two pictures; 256 when they differ in size.
int LargestDifference(const Picture& a, const Picture& b);

}  // namespace krv::host
