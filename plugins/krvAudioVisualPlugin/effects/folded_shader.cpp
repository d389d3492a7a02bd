#include "effects/folded_shader.h"

#include <algorithm>
#include <string>

#include "effects/draw_uniforms.h"
#include "graphics/px_graphics_context.h"
#include "graphics/px_program.h"

namespace krv {
namespace {

constexpr size_t kMostVariants = 4;

std::string WithChoices(std::string_view source, std::span<const ShaderChoice> choices) {
  const size_t first_line = source.find('\n') + 1;
  std::string text(source.substr(0, first_line));
  for (const ShaderChoice& choice : choices) {
    if (choice.name.empty()) continue;
    text.append("#define ").append(choice.name).append(" ");
    text.append(std::to_string(choice.value)).append("\n");
  }
  return text.append(source.substr(first_line));
}

uint32_t BytesOf(std::span<const float> values) {
  return static_cast<uint32_t>(values.size_bytes());
}

void AddTables(PXGraphicsContext& draw, const FoldedFigure& figure) {
  const auto [least, largest] = std::ranges::minmax(figure.entries);
  const std::array<float, 2> range = {least, largest};
  draw.AddUniform("entries", UniformType::kFloat, figure.entries.data(), BytesOf(figure.entries));
  draw.AddUniform("entry_range", UniformType::kVec2, range.data(), BytesOf(range));
  draw.AddUniform("first_entry", UniformType::kFloat, &figure.first_entry, sizeof(float));
  draw.AddUniform("level_at_start", UniformType::kFloat, &figure.level_at_start, sizeof(float));
  draw.AddUniform("stops", UniformType::kVec4, figure.stops.data(), BytesOf(figure.stops));
}

}  // namespace

std::unique_ptr<FoldedShader> FoldedShader::Create(std::string_view file_name) {
  struct Form {
    std::string_view file_name;
    FoldFunction fold;
  };
  static constexpr Form kForms[] = {{"audio_visualization_geometry.frag", FoldFlat},
                                    {"audio_visualization_halo_geometry.frag", FoldHaloGeometry},
                                    {"audio_visualization_halo_spectrum.frag", FoldHaloSpectrum}};
  const auto source = FindFoldedShader(file_name);
  const auto* form = std::ranges::find(kForms, file_name, &Form::file_name);
  if (!source || form == std::end(kForms)) return nullptr;
  return std::unique_ptr<FoldedShader>(new FoldedShader(form->fold, *source));
}

void FoldedShader::Fold(PXGraphicsContext& draw, const FigureSources& sources) {
  DrawUniforms uniforms(draw.uniforms);
  figure_.seen_anywhere = true;
  if (!fold_(uniforms, sources, figure_)) return;
  const auto& program = ProgramFor(figure_.choices);
  if (program == nullptr) return;
  draw.program = program;
  AddTables(draw, figure_);
  if (figure_.seen_anywhere || !sources.transparent_is_unseen) return;
  draw.only_in_regions = true;
  figure_.seen.Take(draw.regions);
}

const std::shared_ptr<PXProgram>& FoldedShader::ProgramFor(
    const std::array<ShaderChoice, 8>& choices) {
  ++uses_;
  const auto known = std::ranges::find(variants_, choices, &Variant::choices);
  if (known != variants_.end()) {
    known->last_used = uses_;
    return known->program;
  }
  if (variants_.size() == kMostVariants) {
    variants_.erase(std::ranges::min_element(variants_, {}, &Variant::last_used));
  }
  auto program =
      CreateProgram(WithChoices(source_.fragment, choices), WithChoices(source_.vertex, choices));
  if (program != nullptr && !IsLinked(*program)) program.reset();
  return variants_.emplace_back(choices, std::move(program), uses_).program;
}

}  // namespace krv
