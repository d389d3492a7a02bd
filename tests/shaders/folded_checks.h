// Holds the folded form of a built-in shader against the plain form and the reference.
#pragma once

#include <gtest/gtest.h>

#include "shaders/expect_matches.h"
#include "shaders/folded_canvas.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

// The folded form must draw the figure, like the reference and, in bytes, like the plain form. One
// pixel in a thousand may differ from that: where rounding moves a hard edge.
template <class Figure, class Tolerance>
void ExpectFoldsAlike(const ShaderProgram& plain, FoldedCanvas& folded, const Figure& exact,
                      int width, int height, const Tolerance& tolerance) {
  const Figure figure = InBytes(exact);
  const Picture bytes = folded.Draw(figure, width, height, GL_RGBA8);
  EXPECT_TRUE(folded.folded());
  EXPECT_LE(PixelsApart(bytes, DrawFigure(plain, figure, width, height, GL_RGBA8)),
            width * height / 1000);
  ExpectMatches(folded.Draw(figure, width, height, GL_RGBA32F), figure, tolerance);
}

}  // namespace krv::test
