#include "gallery/gallery_person.h"

#include <gtest/gtest.h>

#include <cstring>

namespace krv::tool {
namespace {

RenderJob GreyFrame() {
  RenderJob job;
  job.index = 7;
  job.samples = {1, 2, 3};
  job.input.Resize(160, 90);
  job.input.Fill(200, 200, 200, 255);
  return job;
}

TEST(GalleryPerson, StandsInTheMiddleOfPictureAndMask) {
  const RenderJob frame = GreyFrame();
  const RenderJob job = WithPerson(frame, 0);
  EXPECT_EQ(job.mask.Pixel(80, 54)[3], 255);
  EXPECT_LT(job.input.Pixel(80, 54)[1], 50);
  EXPECT_EQ(job.input.Pixel(80, 54)[3], 255);
  EXPECT_EQ(job.mask.Pixel(10, 10)[3], 0);
  EXPECT_EQ(job.input.Pixel(10, 10)[1], 200);
}

TEST(GalleryPerson, LeavesTheFrameAndItsSoundAsTheyAre) {
  const RenderJob frame = GreyFrame();
  const RenderJob job = WithPerson(frame, 0);
  EXPECT_EQ(frame.input.Pixel(80, 54)[1], 200);
  EXPECT_EQ(job.index, 7);
  EXPECT_EQ(job.samples, frame.samples);
}

TEST(GalleryPerson, MovesInALoopThatTheClipHoldsTwice) {
  const auto same = [](const RenderJob& a, const RenderJob& b) {
    return std::memcmp(a.mask.Row(0), b.mask.Row(0), static_cast<size_t>(a.mask.stride()) * 90) ==
           0;
  };
  const RenderJob frame = GreyFrame();
  EXPECT_FALSE(same(WithPerson(frame, 0), WithPerson(frame, 0.4)));
  EXPECT_TRUE(same(WithPerson(frame, 0.1), WithPerson(frame, 1.6)));
}

}  // namespace
}  // namespace krv::tool
