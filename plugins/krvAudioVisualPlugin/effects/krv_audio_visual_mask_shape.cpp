#include "effects/krv_audio_visual_mask_shape.h"

#include <new>
#include <string_view>
#include <utility>

#include "effects/mask_outlines.h"
#include "effects/mask_shape_sizes.h"
#include "effects/parameter_conversion.h"
#include "effects/shape_mask_algo_point_normal.h"
#include "effects/shrink.h"
#include "graphics/px_graphics_context.h"
#include "graphics/px_image.h"

namespace krv {
namespace {

constexpr int kWorkingMaskSide = 480;  // pixels

// A sampler needs a texture even where there is nothing to read.
std::shared_ptr<PXImage> PointTexture(const cv::Mat& points) {
  const cv::Mat texels = points.empty() ? cv::Mat::zeros(1, 1, CV_32FC4) : points;
  return CreateImage(static_cast<uint32_t>(texels.cols), 1, PixelLayout::kRgba, DataType::kFloat,
                     static_cast<uint32_t>(texels.step[0]), texels.data);
}

}  // namespace

KRVAudioVisualMaskShape::KRVAudioVisualMaskShape(
    std::shared_ptr<const EffectDescription> description)
    : KRVAudioVisual(std::move(description)) {}

void* KRVAudioVisualMaskShape::Destroy(uint32_t flags) {
  this->KRVAudioVisualMaskShape::~KRVAudioVisualMaskShape();
  if ((flags & 1) != 0) ::operator delete(this);
  return this;  // NOLINT(clang-analyzer-cplusplus.NewDelete): the address alone
}

int32_t KRVAudioVisualMaskShape::SetUniform(const char* name, const ParameterValue* value) {
  if (name == nullptr || value == nullptr) return kFailed;
  const std::string_view key = name;
  if (key == "point_gap" || key == "point_size") {
    auto& factor = key == "point_gap" ? point_gap_ : point_size_;
    factor = ConvertToKind(FloatValue(0), *value).as_float;
    return kOk;
  }
  if (key == "max_length") {
    max_length_ = static_cast<float>(ConvertToKind(IntValue(0), *value).as_int);
  }
  return KRVAudioVisual::SetUniform(name, value);
}

int32_t KRVAudioVisualMaskShape::GatherInputs(EffectContext& context, ImageList& inputs) {
  KRVAudioVisual::GatherInputs(context, inputs);
  const cv::Mat points = TracePoints();
  points_count_ = points.cols;
  AddInput("mask_point_tex", PointTexture(points));
  inputs = this->inputs();
  return kOk;
}

int32_t KRVAudioVisualMaskShape::ExpectedInputCount() {
  return KRVAudioVisual::ExpectedInputCount() + 1;
}

void KRVAudioVisualMaskShape::CopyUniforms(PXGraphicsContext& draw, PassRecord& record,
                                           EffectContext& context) {
  draw.AddUniform("points_count", UniformType::kInt, &points_count_, sizeof(points_count_));
  KRVAudioVisual::CopyUniforms(draw, record, context);
}

cv::Mat KRVAudioVisualMaskShape::TracePoints() {
  cv::Mat points;
  if (mask().empty()) return points;
  const cv::Mat working_mask = ShrinkToShorterSide(mask(), kWorkingMaskSide);
  const Outlines outlines = FindOutlines(working_mask);
  const MaskShapeSizes sizes =
      SizesFor(ExtentOf(outlines), working_mask.size(), {point_size_, point_gap_, max_length_});
  SetFloatUniform("current_point_size", sizes.point_size);
  SetFloatUniform("available_region_x1", sizes.region_x1);
  SetFloatUniform("available_region_x2", sizes.region_x2);
  SetFloatUniform("available_region_y1", sizes.region_y1);
  SetFloatUniform("available_region_y2", sizes.region_y2);
  ShapeMaskAlgo_Point_Normal algorithm(WholeSpacing(sizes.spacing));
  algorithm.FindPoints(working_mask, outlines, points);
  return points;
}

}  // namespace krv
