// Draws figures with the folded form of a built-in shader, through the graphics layer.
#pragma once

#include <memory>
#include <string_view>

#include "effects/folded_shader.h"
#include "graphics/px_graphics.h"
#include "graphics/px_graphics_context.h"
#include "graphics/px_program.h"
#include "shaders/common_canvas.h"
#include "shaders/common_figure.h"
#include "shaders/shader_canvas.h"

namespace krv::test {

// The figure with its spectrum and gradient as the textures of an effect hold them: in 256 steps.
template <class Figure>
Figure InBytes(Figure figure) {
  RoundToBytes(figure);
  return figure;
}
void RoundToBytes(CommonFigure& figure);

// A context must be current for its whole life.
class FoldedCanvas {
 public:
  explicit FoldedCanvas(std::string_view shader);

  // Whether the folded form drew the last picture, and not the plain one.
  bool folded() const { return folded_; }

  // The figure's spectrum and gradient count as InBytes gives them.
  template <class Figure>
  Picture Draw(const Figure& figure, int width, int height, GLenum format) {
    const Uniforms uniforms = StartDraw(figure, width, height);
    SetFigure(uniforms, figure);
    return FinishDraw(figure, width, height, format);
  }

 private:
  class Uniforms : public UniformSetter {
   public:
    explicit Uniforms(PXGraphicsContext* draw) : draw_(draw) {}
    using UniformSetter::Set;
    void Set(const char* name, int value) const override;
    void Set(const char* name, float value) const override;
    void Set(const char* name, float x, float y) const override;

   private:
    PXGraphicsContext* draw_;
  };

  Uniforms StartDraw(const CommonFigure& figure, int width, int height);
  Picture FinishDraw(const CommonFigure& figure, int width, int height, GLenum format);

  std::unique_ptr<FoldedShader> shader_;
  std::shared_ptr<PXProgram> plain_;
  std::shared_ptr<PXGraphics> device_;
  std::unique_ptr<PXGraphicsContext> draw_;
  bool folded_ = false;
};

}  // namespace krv::test
