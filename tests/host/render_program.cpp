#include "host/render_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "media/still_source.h"
#include "utf8_path.h"

namespace krv::host {

std::string RenderProgramTest::Line(const std::string& arguments) const {
  std::string line = "render ";
  for (const char c : arguments) {
    if (c == '@') {
      line += Utf8(media_.folder() / "");
    } else {
      line += c;
    }
  }
  return line;
}

test::ProgramOutcome RenderProgramTest::Render(const std::string& arguments) {
  return test::RunProgram(KRV_PROGRAM, Line(arguments));
}

void RenderProgramTest::RenderWell(const std::string& arguments) {
  const test::ProgramOutcome outcome = Render(arguments);
  ASSERT_EQ(outcome.code, 0) << arguments << "\n" << outcome.error_output;
}

std::map<int64_t, Picture> RenderProgramTest::ReadPictures(const std::string& folder) const {
  std::map<int64_t, Picture> pictures;
  for (const auto& entry : std::filesystem::directory_iterator(media_.folder() / folder)) {
    const std::string name = Utf8(entry.path().stem());  // frame_000012
    pictures[std::stoll(name.substr(name.find('_') + 1))] = LoadPicture(entry.path(), {});
  }
  return pictures;
}

bool SamePicture(const Picture& a, const Picture& b) {
  if (a.width() != b.width() || a.height() != b.height()) return false;
  for (int y = 0; y < a.height(); ++y) {
    if (std::memcmp(a.Row(y), b.Row(y), static_cast<size_t>(a.width()) * 4) != 0) return false;
  }
  return true;
}

int LargestDifference(const Picture& a, const Picture& b) {
  if (a.width() != b.width() || a.height() != b.height()) return 256;
  int largest = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int i = 0; i < 4 * a.width(); ++i) {
      largest = std::max(largest, std::abs(a.Row(y)[i] - b.Row(y)[i]));
    }
  }
  return largest;
}

}  // namespace krv::host
