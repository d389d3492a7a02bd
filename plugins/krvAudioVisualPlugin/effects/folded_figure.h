// A figure of a built-in shader, folded for one frame: what its folded form is compiled for, and
// what it reads instead of the spectrum and the gradient.
#pragma once

#include <array>
#include <opencv2/core.hpp>
#include <span>
#include <string_view>
#include <vector>

#include "effects/seen_regions.h"

namespace krv {

class DrawUniforms;

inline constexpr int kMostEntries = 512;
inline constexpr int kMostStops = 6;

// A macro of the folded shader's source.
struct ShaderChoice {
  std::string_view name;
  int value;

  bool operator==(const ShaderChoice&) const = default;
};

struct FoldedFigure {
  // Of a fixed number and order for one shader; unused ones have no name.
  std::array<ShaderChoice, 8> choices{};
  // "entries": what each item shows. Their least and largest are "entry_range".
  std::vector<float> entries;
  // "first_entry": the item that the table begins with.
  float first_entry = 0;
  // "level_at_start": the level of a ring's item 0.
  float level_at_start = 0;
  // "stops" of a gradient that is compiled in: red, green, blue and position, 0 to 1.
  std::array<float, size_t{kMostStops} * 4> stops{};
  // Where there is more to be seen than transparent pixels, unless that is anywhere.
  SeenRegions seen;
  bool seen_anywhere = true;
};

// What a frame's figure is made of. Empty where the frame has none.
struct FigureSources {
  const cv::Mat& spectrum;  // one row, CV_8UC4, levels in the first channel
  const cv::Mat& gradient;  // as ParseGradient makes it
  // Whether pixels without opacity may have any colour: nothing but a blend by opacity reads them.
  bool transparent_is_unseen = false;
};

// Fold the figure that a draw with these uniforms would show. False where only the plain form draws
// it: no figure, sizes out of all proportion, more items than a table holds, values that are not
// numbers. What `figure` held before is overwritten; its memory is used again.
bool FoldFlat(DrawUniforms& uniforms, const FigureSources& sources, FoldedFigure& figure);
bool FoldHaloGeometry(DrawUniforms& uniforms, const FigureSources& sources, FoldedFigure& figure);
bool FoldHaloSpectrum(DrawUniforms& uniforms, const FigureSources& sources, FoldedFigure& figure);

// How many entries a folded shader's table has room for, so that few programs do for all counts.
int RoomForEntries(size_t count);

// The choice of colouring that all built-in shaders share: 0 the single colour, 1 the hue circle, 2
// and 3 the gradient in the direction 0 and any other.
int Coloring(DrawUniforms& uniforms);

// Sets the figure's stops for a colouring. The number of spans between them; 0 when the colouring
// has no gradient, or one that is not sorted or has fewer than two or more than kMostStops stops.
int FoldGradient(int coloring, const cv::Mat& gradient, FoldedFigure& figure);

// Whether a gradient, where the colouring has one, is what the draw's uniforms tell of.
bool HasItsGradient(int coloring, const cv::Mat& gradient, DrawUniforms& uniforms);

}  // namespace krv
