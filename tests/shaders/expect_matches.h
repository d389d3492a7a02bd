// Compares drawn pictures with references.
#pragma once

#include <functional>

#include "shaders/shader_canvas.h"

namespace krv::test {

// Colour and alpha at a place in pixels; the first pixel's centre is (0.5, 0.5).
using PictureFunction = std::function<Pixel(double x, double y)>;

// The largest difference of a channel between two pictures of one size; those that are not a number
// count as none.
double LargestDifference(const Picture& a, const Picture& b);

// How many pixels of two pictures of one size are more than a step of 255 apart, which two ways of
// rounding may come to.
int PixelsApart(const Picture& a, const Picture& b);

// What a picture should be, and what it would be for a spectrum lower or higher by kLevelShift.
struct Expectation {
  PictureFunction exact, quieter, louder;
};

inline constexpr double kLevelShift = 1e-5;

// How far a channel may be off, and by how many pixels rounding may move an edge.
struct Tolerance {
  double difference;
  double place = 1e-4;
};

// Fails the current test, naming the worst pixel, when a channel is off by more than the tolerance
// or is not a number. One pixel in a thousand may instead match what the reference gives as near as
// the tolerance says, or with the shifted spectra: that is where rounding may put a hard edge.
void ExpectMatches(const Picture& drawn, const Expectation& expected, const Tolerance& tolerance);

// The same with Reference(figure, width, height, level_shift), which has an At(x, y).
template <class Reference, class Figure>
void ExpectMatchesReference(const Picture& drawn, const Figure& figure,
                            const Tolerance& tolerance) {
  const Reference exact(figure, drawn.width, drawn.height, 0);
  const Reference quieter(figure, drawn.width, drawn.height, -kLevelShift);
  const Reference louder(figure, drawn.width, drawn.height, kLevelShift);
  const auto at = [](const Reference& reference) -> PictureFunction {
    return [&reference](double x, double y) { return reference.At(x, y); };
  };
  ExpectMatches(drawn, {at(exact), at(quieter), at(louder)}, tolerance);
}

}  // namespace krv::test
