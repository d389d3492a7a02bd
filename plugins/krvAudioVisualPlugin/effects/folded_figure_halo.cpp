// The figures of the two halo shaders, folded. Formulas as in shaders/halo_geometry.glsl,
// shaders/halo_spectrum.glsl and the plain shaders.
#include <algorithm>
#include <cmath>
#include <string_view>

#include "effects/draw_uniforms.h"
#include "effects/folded_figure.h"
#include "effects/spectrum_levels.h"

namespace krv {
namespace {

enum Figure : int { kPoints, kEcg, kPulses, kFigures };

constexpr std::array<std::string_view, kFigures> kCounts = {"point_count", "ECG_count",
                                                            "pulse_count"};

// A pixel looks at items up to this far before its own and behind it.
constexpr int kNeighbours = 3;

int Wrapped(int item, int count) { return ((item % count) + count) % count; }

// The levels of items first to last of a ring, whose places in the spectrum wrap round it or go on.
bool FillRing(int first, int last, int count, bool wraps, const SpectrumLevels& levels,
              FoldedFigure& figure) {
  if (last - first >= kMostEntries) return false;
  figure.entries.clear();
  figure.first_entry = static_cast<float>(first);
  figure.level_at_start = levels.Halo(0);
  const auto n = static_cast<float>(count);
  for (int i = first; i <= last; ++i) {
    const auto item = static_cast<float>(wraps ? Wrapped(i, count) : i);
    figure.entries.push_back(levels.Halo(item / n));
  }
  return true;
}

// The pulses that reach the ring; a pulse is `width` gaps wide, the samples span `reach` each way.
bool FillPulses(int count, const SpectrumLevels& levels, DrawUniforms& uniforms,
                FoldedFigure& figure) {
  const float width = uniforms.Float("pulse_width") * 0.1f;
  const float degrees =
      uniforms.Bool("pulse_fill") ? 0.001f : std::abs(uniforms.Float("pulse_line_width") * 0.2f);
  const float reach = 7.0f * degrees * static_cast<float>(count) / 360.0f;
  if (!(width > 0) || !(width + reach < kMostEntries)) return false;
  const int first = static_cast<int>(std::ceil(-reach - width * 0.5f - 0.5f)) - 1;
  const int last = count + static_cast<int>(std::ceil(reach)) + 1;
  return FillRing(first, last, count, false, levels, figure);
}

bool HasRing(DrawUniforms& uniforms, const FigureSources& sources, const SpectrumLevels& levels) {
  return !sources.spectrum.empty() && levels.sound() && uniforms.Float("radius") != 0;
}

// Rays along the plane look at the whole trace, which the folded form does not.
bool LooksAlongThePlane(DrawUniforms& uniforms) {
  return std::abs(int64_t{uniforms.Int("inclination_degree_x")}) % 180 == 90;
}

}  // namespace

bool FoldHaloGeometry(DrawUniforms& uniforms, const FigureSources& sources, FoldedFigure& figure) {
  const int kind = uniforms.Int("geometry_type");
  if (kind < 0 || kind >= kFigures) return false;
  const int count = uniforms.Int(kCounts[static_cast<size_t>(kind)]);
  const SpectrumLevels levels(sources.spectrum, uniforms);
  if (count < 1 || count > kMostEntries || !HasRing(uniforms, sources, levels)) return false;
  if (kind == kEcg && LooksAlongThePlane(uniforms)) return false;
  const bool filled =
      kind == kPulses ? FillPulses(count, levels, uniforms, figure)
                      : FillRing(-kNeighbours, count + kNeighbours, count, true, levels, figure);
  const int coloring = std::min(Coloring(uniforms), 2);  // round the ring
  if (!filled || !HasItsGradient(coloring, sources.gradient, uniforms)) return false;
  figure.choices = {{{"FIGURE", kind},
                     {"GLOW", uniforms.Int("glow") != 0 ? 1 : 0},
                     {"COLORING", coloring},
                     {"SPANS", FoldGradient(coloring, sources.gradient, figure)},
                     {"FILL", kind == kPulses && uniforms.Bool("pulse_fill") ? 1 : 0},
                     {"ENTRIES", RoomForEntries(figure.entries.size())}}};
  return uniforms.sound();
}

bool FoldHaloSpectrum(DrawUniforms& uniforms, const FigureSources& sources, FoldedFigure& figure) {
  const int count = uniforms.Int("step_num");
  const SpectrumLevels levels(sources.spectrum, uniforms);
  if (count < 1 || count > kMostEntries || !HasRing(uniforms, sources, levels)) return false;
  const int coloring = Coloring(uniforms);
  if (!FillRing(-kNeighbours, count + kNeighbours, count, false, levels, figure)) return false;
  if (!HasItsGradient(coloring, sources.gradient, uniforms)) return false;
  const int direction = uniforms.Int("direction");
  figure.choices = {{{"DIRECTION", direction == 0 || direction == 1 ? direction : 2},
                     {"ROUND", uniforms.Int("round") == 0 ? 0 : 1},
                     {"GLOW", uniforms.Int("glow") != 0 ? 1 : 0},
                     {"COLORING", coloring},
                     {"SPANS", FoldGradient(coloring, sources.gradient, figure)},
                     {"ENTRIES", RoomForEntries(figure.entries.size())}}};
  return uniforms.sound();
}

}  // namespace krv
