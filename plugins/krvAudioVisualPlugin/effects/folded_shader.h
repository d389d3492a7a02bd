// The folded form of a built-in shader: the programs made of it, and the draws that use them.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "effects/folded_figure.h"
#include "shaders/builtin_shaders.h"

namespace krv {

class PXGraphicsContext;
class PXProgram;

// Draws a built-in shader's figures at a fraction of the cost of its plain form: what is the same
// for all pixels is worked out per frame, and a program is made for each choice of its switches.
// The pictures are the same, but for rounding. The programs in use stay; of more than four kinds,
// the one that was not used for longest goes. GL thread.
class FoldedShader {
 public:
  // Null for a shader that has no folded form.
  static std::unique_ptr<FoldedShader> Create(std::string_view file_name);

  // Gives a draw of the plain form, with all its uniforms, the program of the folded form and what
  // that reads besides. Leaves the draw as it is where there is no folded form of it.
  void Fold(PXGraphicsContext& draw, const FigureSources& sources);

 private:
  struct Variant {
    std::array<ShaderChoice, 8> choices;
    std::shared_ptr<PXProgram> program;  // null: the driver does not take it
    uint64_t last_used;
  };
  using FoldFunction = bool (*)(DrawUniforms&, const FigureSources&, FoldedFigure&);

  FoldedShader(FoldFunction fold, const FoldedShaderSource& source)
      : fold_(fold), source_(source) {}
  const std::shared_ptr<PXProgram>& ProgramFor(const std::array<ShaderChoice, 8>& choices);

  FoldFunction fold_;
  FoldedShaderSource source_;
  FoldedFigure figure_;
  std::vector<Variant> variants_;
  uint64_t uses_ = 0;
};

}  // namespace krv
