#include "shaders/folded_canvas.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <opencv2/core.hpp>

#include "graphics/px_image.h"
#include "shaders/builtin_shaders.h"

namespace krv::test {
namespace {

uint8_t Byte(float value) { return static_cast<uint8_t>(std::lround(value * 255)); }

cv::Mat SpectrumRow(const CommonFigure& figure) {
  cv::Mat row(1, static_cast<int>(figure.spectrum.size()), CV_8UC4);
  for (int i = 0; i < row.cols; ++i) {
    const uint8_t level = Byte(figure.spectrum[static_cast<size_t>(i)]);
    row.at<cv::Vec4b>(0, i) = {level, 0, 0, 255};
  }
  return row;
}

cv::Mat GradientRow(const CommonFigure& figure) {
  cv::Mat row(1, static_cast<int>(figure.gradient.size()), CV_8UC4);
  for (int i = 0; i < row.cols; ++i) {
    const auto& stop = figure.gradient[static_cast<size_t>(i)];
    row.at<cv::Vec4b>(0, i) = {Byte(stop[2]), Byte(stop[1]), Byte(stop[0]), Byte(stop[3])};
  }
  return row;
}

template <class Channel>
Picture Read(const PXImage& image, int width, int height, double scale) {
  std::vector<std::array<Channel, 4>> texels(static_cast<size_t>(width) * height);
  EXPECT_TRUE(ReadTexture(image, texels.data(), width * static_cast<int>(sizeof(texels[0]))));
  // Pictures of the plug-in are blue first.
  Picture picture{width, height, {}};
  for (const auto& t : texels) {
    picture.pixels.push_back({t[2] * scale, t[1] * scale, t[0] * scale, t[3] * scale});
  }
  return picture;
}

}  // namespace

void RoundToBytes(CommonFigure& figure) {
  for (float& level : figure.spectrum) level = static_cast<float>(Byte(level)) / 255.0f;
  for (auto& stop : figure.gradient) {
    for (float& channel : stop) channel = static_cast<float>(Byte(channel)) / 255.0f;
  }
}

void FoldedCanvas::Uniforms::Set(const char* name, int value) const {
  draw_->AddUniform(name, UniformType::kInt, &value, sizeof(value));
}

void FoldedCanvas::Uniforms::Set(const char* name, float value) const {
  draw_->AddUniform(name, UniformType::kFloat, &value, sizeof(value));
}

void FoldedCanvas::Uniforms::Set(const char* name, float x, float y) const {
  const std::array<float, 2> value = {x, y};
  draw_->AddUniform(name, UniformType::kVec2, value.data(), sizeof(value));
}

FoldedCanvas::FoldedCanvas(std::string_view shader)
    : shader_(FoldedShader::Create(shader)),
      plain_(CreateProgram(std::string(*FindBuiltinShader(shader)), {})),
      device_(CreateGraphics(GraphicsKind::kOpenGl)) {}

FoldedCanvas::Uniforms FoldedCanvas::StartDraw(const CommonFigure& figure, int width, int height) {
  draw_ = CreateGraphicsContext();
  const Uniforms uniforms(draw_.get());
  SetCommon(uniforms, figure);
  uniforms.Set("iResolution", static_cast<float>(width), static_cast<float>(height));
  return uniforms;
}

Picture FoldedCanvas::FinishDraw(const CommonFigure& figure, int width, int height, GLenum format) {
  const bool floats = format == GL_RGBA32F;
  const auto target = CreateImage(static_cast<uint32_t>(width), static_cast<uint32_t>(height),
                                  PixelLayout::kBgra, floats ? DataType::kFloat : DataType::kUint8,
                                  static_cast<uint32_t>(width) * (floats ? 16 : 4), nullptr);
  const cv::Mat spectrum = SpectrumRow(figure);
  const cv::Mat gradient = GradientRow(figure);
  static_assert(kAudioUnit == 0 && kGradientUnit == 1);
  draw_->images = {CreateImage(spectrum, PixelLayout::kRgba),
                   CreateImage(gradient, PixelLayout::kBgra)};
  draw_->program = plain_;
  shader_->Fold(*draw_, {spectrum, gradient});
  folded_ = draw_->program != plain_;
  device_->SetTarget(target.get());
  EXPECT_EQ(device_->Render(*draw_), 0);
  device_->SetTarget(nullptr);
  return floats ? Read<float>(*target, width, height, 1)
                : Read<uint8_t>(*target, width, height, 1.0 / 255);
}

}  // namespace krv::test
