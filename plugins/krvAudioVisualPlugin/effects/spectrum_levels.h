// The levels that figures show, from the spectrum image: what the built-in shaders read per pixel,
// worked out once per item, in single precision and the shaders' order of operations.
#pragma once

#include <opencv2/core.hpp>

namespace krv {

class DrawUniforms;

// Of the spectrum and the uniforms of a draw.
class SpectrumLevels {
 public:
  // The spectrum has one row of type CV_8UC4 with the levels in the first channel, and must outlive
  // the object; it is not empty.
  SpectrumLevels(const cv::Mat& spectrum, DrawUniforms& uniforms);

  // Whether the part of the spectrum is one that can be worked out here as in the shaders.
  bool sound() const;

  // The level at u across a flat figure, 0 to 1.
  float Flat(float u) const;
  // The level at u round a halo, 0 to 1.
  float Halo(float u) const;

 private:
  float Loudness() const;
  float Place(float u) const;
  float Sample(float u) const;

  const cv::Mat& spectrum_;
  float intensity_;  // audio gain
  float level_;      // loudness of the frame,
  float lowest_;     // at which the figure is flat,
  float highest_;    // at which it moves fully
  float from_;       // part of the spectrum
  float to_;
  bool mirrored_;
  bool averaged_;
  float flat_gain_;
  float halo_gain_;
};

}  // namespace krv
