// The flat shader's figures, folded. Formulas as in shaders/audio_visualization_geometry.frag.glsl.
#include <algorithm>
#include <cmath>
#include <string_view>

#include "effects/draw_uniforms.h"
#include "effects/flat_figure.h"
#include "effects/flat_regions.h"
#include "effects/folded_figure.h"
#include "effects/spectrum_levels.h"

namespace krv {
namespace {

constexpr std::array<std::string_view, kFlatFigures> kCounts = {
    "spectrum_count", "point_count",         "line_count",
    "pulse_count",    "circle_column_count", "rectangle_column_count"};

// The least number of items that show anything.
int LeastItems(int figure) { return figure == kLines ? 2 : 1; }

// How many blocks stand over the first.
float BlocksAbove(const Blocks& blocks, float level, int direction) {
  const float rest = blocks.quad_height * level - 2.0f * blocks.half_height;
  const float above = rest > 0 ? std::floor(rest / blocks.pitch + blocks.rounding) : 0.0f;
  return direction == 0 ? above : std::floor(above * 0.5f) * 2.0f;
}

// The height that a level stands for, in heights of the rectangle, over the base or about the
// middle.
float CurveHeight(float level, int direction) {
  if (direction == 0) return level;
  const float v = level - 0.5f;
  return std::abs(v) < 0.05f ? 0.0f : std::clamp(v, -0.5f, 0.5f);
}

// The place in the spectrum of item i of n, which the offset turns round.
float ItemPlace(int i, int count, float offset) {
  const auto n = static_cast<float>(count);
  const float at = static_cast<float>(i) + offset * n;
  const float index = std::floor(at - n * std::floor(at / n));
  return index < n ? index / n : 0.0f;
}

void FillRow(int figure, int direction, int count, const SpectrumLevels& levels,
             DrawUniforms& uniforms, std::vector<float>& entries) {
  const float offset = uniforms.Float("offset_x");
  const Blocks blocks = IsColumns(figure) ? BlocksOf(figure, uniforms) : Blocks{};
  for (int i = 0; i < count; ++i) {
    const float level = levels.Flat(ItemPlace(i, count, offset));
    if (figure == kBars) {
      entries.push_back(level);
    } else if (IsColumns(figure)) {
      entries.push_back(BlocksAbove(blocks, level, direction));
    } else {
      entries.push_back(CurveHeight(level, direction));
    }
  }
}

// The pulses that reach the figure, from the first on, and one more at either end.
bool FillPulses(int direction, int count, const SpectrumLevels& levels, DrawUniforms& uniforms,
                FoldedFigure& figure) {
  const auto n = static_cast<float>(count);
  const float offset = uniforms.Float("offset_x");
  const float width = uniforms.Float("pulse_width") * 0.2f;  // of a pulse, in widths of the figure
  if (!(width > 0)) return false;
  figure.first_entry = std::ceil((offset - width) * n) - 1.0f;
  const float last = std::floor((offset + 1.0f) * n) + 1.0f;
  if (!(last - figure.first_entry < kMostEntries)) return false;
  for (float i = figure.first_entry; i <= last; i += 1.0f) {
    figure.entries.push_back(CurveHeight(levels.Flat(i / n), direction));
  }
  return true;
}

// Sizes for which the folded form's formulas do not hold, or nothing is to be seen.
bool HasUnusualSizes(int figure, DrawUniforms& uniforms) {
  constexpr float kFarthest = 100;
  if (uniforms.Float("scale_x") == 0 || uniforms.Float("scale_y") == 0) return true;
  if (!(std::abs(uniforms.Float("offset_x")) <= kFarthest)) return true;
  if (figure == kBars) {
    return uniforms.Float("spectrum_width") < 0 || uniforms.Float("spectrum_round") < 0;
  }
  return IsColumns(figure) && !(BlocksOf(figure, uniforms).pitch > 1e-4f);
}

}  // namespace

bool FoldFlat(DrawUniforms& uniforms, const FigureSources& sources, FoldedFigure& figure) {
  const int kind = uniforms.Int("geometry_type");
  if (kind < 0 || kind >= kFlatFigures || sources.spectrum.empty()) return false;
  const int count = uniforms.Int(kCounts[static_cast<size_t>(kind)]);
  if (count < LeastItems(kind) || count > kMostEntries) return false;
  if (HasUnusualSizes(kind, uniforms)) return false;

  const int direction = uniforms.Int("direction");
  const SpectrumLevels levels(sources.spectrum, uniforms);
  if (!levels.sound()) return false;
  figure.entries.clear();
  figure.first_entry = 0;
  if (kind != kPulses) {
    FillRow(kind, direction, count, levels, uniforms, figure.entries);
  } else if (!FillPulses(direction, count, levels, uniforms, figure)) {
    return false;
  }

  const int coloring = Coloring(uniforms);
  if (!HasItsGradient(coloring, sources.gradient, uniforms)) return false;
  const bool turned = uniforms.Int("rotate_x") != 0 || uniforms.Int("rotate_y") != 0;
  figure.choices = {{{"FIGURE", kind},
                     {"DIRECTION", direction == 0 || direction == 1 ? direction : 2},
                     {"GLOW", uniforms.Int("glow") != 0 ? 1 : 0},
                     {"COLORING", coloring},
                     {"SPANS", FoldGradient(coloring, sources.gradient, figure)},
                     {"FILL", kind == kPulses && uniforms.Bool("pulse_fill") ? 1 : 0},
                     {"TURNED", turned ? 1 : 0},
                     {"ENTRIES", RoomForEntries(figure.entries.size())}}};
  const auto [width, height] = uniforms.Vec2("iResolution");
  figure.seen.Start(static_cast<int32_t>(width), static_cast<int32_t>(height));
  figure.seen_anywhere = !AddSeenItems(uniforms, figure);
  return uniforms.sound();
}

}  // namespace krv
