// The mask shape effect: what its shader is told about the outlines of a mask.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

#include "effects/effect_fixture.h"
#include "effects/test_mask.h"

namespace krv::test {
namespace {

using testing::ElementsAre;

constexpr char kPoints[] = "uniform sampler2D mask_point_tex; uniform int points_count;";
constexpr char kRegion[] =
    "uniform float available_region_x1; uniform float available_region_x2; "
    "uniform float available_region_y1; uniform float available_region_y2;";
constexpr char kRegionExpression[] =
    "vec4(available_region_x1, available_region_x2, available_region_y1, available_region_y2)";
constexpr char kCountExpression[] = "vec4(float(points_count), 0.0, 0.0, 1.0)";
constexpr char kInputSizeError[] = "<audio_visual> Input size error";

class MaskShapeFrames : public EffectTest {
 protected:
  MaskShapeFrames() { context_.person_mask = &mask_; }

  // The name chooses the class of effect.
  static Package ShapePackage(std::string_view expression, std::string_view declarations,
                              const std::vector<std::string>& inputs = {"human_segment"}) {
    static int count = 0;
    Package package = ValuePackage(expression, declarations);
    package.description["unique_name"] =
        "test_audio_visualization_mask_shape_" + std::to_string(count++);
    package.description["input_list"] = inputs;
    package.description["params"] = {Param("point_size", kKindFloat, 1),
                                     Param("point_gap", kKindFloat, 1),
                                     Param("max_length", kKindInt, 10)};
    return package;
  }

  Values Seen(std::string_view expression, std::string_view declarations) {
    return Shown(*host_.Make(ShapePackage(expression, declarations)));
  }

  // Point `index` of `count`, which the frame must have.
  static std::string Point(int index, int count) {
    return "texture2D(mask_point_tex, vec2((" + std::to_string(index) + ".0 + 0.5) / " +
           std::to_string(count) + ".0, 0.5))";
  }

  // 100 pixels wide, 60 high: sized from 60, 18 large, 24 apart, a point every 33 pixels.
  TestMask mask_{200, 100, {50, 20, 100, 60}};
};

TEST_F(MaskShapeFrames, PointsRunAlongTheOutline) {
  // 316 pixels round the outermost pixels' middles.
  EXPECT_EQ(Seen(kCountExpression, kPoints)[0], 10);
  const Values first = Seen(Point(0, 10), kPoints);
  EXPECT_NEAR(first[0], 50 / 200.0, 1e-5);
  EXPECT_NEAR(first[1], 20 / 100.0, 1e-5);
  const Values second = Seen(Point(1, 10), kPoints);  // 33 pixels down the left side
  EXPECT_NEAR(second[0], 50 / 200.0, 1e-5);
  EXPECT_NEAR(second[1], 53 / 100.0, 1e-5);
  EXPECT_LT(second[2], 0);
}

TEST_F(MaskShapeFrames, ThePointTextureIsTheLastInput) {
  const std::string units =
      "uniform int background_tex; uniform int mask_tex; uniform int audio_tex; "
      "uniform int mask_point_tex;";
  EXPECT_EQ(Seen("vec4(float(background_tex), float(mask_tex), float(audio_tex), "
                 "float(mask_point_tex))",
                 units),
            (Values{0, 1, 2, 3}));
}

TEST_F(MaskShapeFrames, TheFrameIsUnderTheFigure) {
  FillValues(input_, {0.25, 0.5, 0.75, 1});
  EXPECT_EQ(Seen("texture2D(background_tex, vec2(0.5))", "uniform sampler2D background_tex;"),
            (Values{0.25, 0.5, 0.75, 1}));
}

TEST_F(MaskShapeFrames, TheRegionIsWhatPointsReach) {
  const Values region = Seen(kRegionExpression, kRegion);  // 18 + 10 pixels round the outline
  EXPECT_NEAR(region[0], 22 / 200.0, 1e-5);
  EXPECT_NEAR(region[1], 178 / 200.0, 1e-5);
  EXPECT_NEAR(region[2], -8 / 100.0, 1e-5);
  EXPECT_NEAR(region[3], 108 / 100.0, 1e-5);
}

TEST_F(MaskShapeFrames, ThePointSizeIsAFractionOfTheShorterSide) {
  EXPECT_NEAR(Seen("vec4(current_point_size)", "uniform float current_point_size;")[0], 0.18, 1e-6);
}

TEST_F(MaskShapeFrames, ALargeMaskIsMeasuredAt480Pixels) {
  mask_ = TestMask(1920, 1080, {480, 270, 960, 540});
  context_.answers["max_length"] = Int(0);
  context_.answers["point_size"] = Float(0);
  const Values region = Seen(kRegionExpression, kRegion);
  // On 853 x 480; a softened edge may take one pixel more.
  EXPECT_NEAR(region[0], 213 / 853.0, 1.5 / 853);
  EXPECT_NEAR(region[1], 640 / 853.0, 1.5 / 853);
  // 240 x 0.4 = 96 apart (or a little more), 1332 round.
  EXPECT_EQ(Seen(kCountExpression, kPoints)[0], 14);
}

TEST_F(MaskShapeFrames, SizeAndGapAreNoUniformsAndTheLengthIs) {
  context_.answers["max_length"] = Int(7);
  EXPECT_EQ(Seen("vec4(point_size, point_gap, float(max_length), 1.0)",
                 "uniform float point_size; uniform float point_gap; uniform int max_length;"),
            (Values{0, 0, 7, 1}));
}

TEST_F(MaskShapeFrames, ALaterPassKnowsThePointsToo) {
  Package package = ShapePackage(kCountExpression, kPoints);
  package.description["opengl_frag"].push_back("second.glsl");
  package.files["second.glsl"] = Fragment(
      "gl_FragColor = vec4(float(points_count), texture2D(background_tex, vec2(0.5)).r, "
      "texture2D(mask_point_tex, vec2(0.05, 0.5)).r, 1.0);",
      std::string(kPoints) + "uniform sampler2D background_tex;");
  const Values seen = Shown(*host_.Make(package));
  EXPECT_EQ(seen[0], 10);
  EXPECT_EQ(seen[1], 10);
  EXPECT_NEAR(seen[2], 0.25, 1e-5);
}

TEST_F(MaskShapeFrames, AMaskWithoutOutlineHasNoPointsAndDoesNotFail) {
  mask_ = TestMask(2000, 2000);  // its one pixel is lost when it is scaled down
  mask_.pixels.at<cv::Vec4b>(0, 0)[3] = 255;
  const Values seen =
      Seen("vec4(float(points_count), texture2D(mask_point_tex, vec2(0.5)).rgb)", kPoints);
  EXPECT_EQ(seen, (Values{0, 0, 0, 0}));
  EXPECT_GT(Seen(kRegionExpression, kRegion)[0], 1e30f);
}

TEST_F(MaskShapeFrames, WithoutAMaskThereAreNoPoints) {
  context_.person_mask = nullptr;
  EXPECT_EQ(Shown(*host_.Make(ShapePackage(kCountExpression, kPoints, {}))), (Values{0, 0, 0, 1}));
}

TEST_F(MaskShapeFrames, ThePictureItselfCanBeTheShape) {
  context_.person_mask = nullptr;
  host::MemoryFrame frame(200, 100, kPixel8);
  cv::Mat pixels(100, 200, CV_8UC4, frame.GetPixels());
  pixels.setTo(cv::Scalar(0, 0, 0, 255));
  pixels(cv::Rect(50, 20, 100, 60)).setTo(cv::Scalar(90, 90, 90, 255));
  context_.input = &frame;
  EXPECT_EQ(Shown(*host_.Make(ShapePackage(kCountExpression, kPoints, {"mask"})))[0], 10);
}

TEST_F(MaskShapeFrames, AFrameWithoutItsMaskFails) {
  for (const auto& inputs :
       {std::vector<std::string>{"human_segment"}, {"human_segment", "mask"}}) {
    const Instance effect = host_.Make(ShapePackage(kCountExpression, kPoints, inputs));
    mask_.answer = inputs.size() == 1 ? 0 : 1;
    EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
    EXPECT_THAT(host_.TakeErrors(), ElementsAre(kInputSizeError));
  }
}

TEST_F(MaskShapeFrames, AFrameWithNobodyInItFails) {
  const Instance effect = host_.Make(ShapePackage(kCountExpression, kPoints));
  mask_ = TestMask(200, 100);
  EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
  EXPECT_THAT(host_.TakeErrors(), ElementsAre(kInputSizeError));
  mask_ = TestMask(200, 100, {50, 20, 100, 60});
  EXPECT_EQ(Shown(*effect)[0], 10);
}

TEST_F(MaskShapeFrames, ParametersOfZeroNegativeOrNoNumberGiveAPointPerPixelAtMost) {
  const Instance effect = host_.Make(ShapePackage(kCountExpression, kPoints));
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (const float bad : {0.0f, -1.0f, -1e30f, kNan, -kInfinity}) {
    context_.answers["point_size"] = context_.answers["point_gap"] = Float(bad);
    EXPECT_EQ(Shown(*effect)[0], 316) << bad;
  }
  for (const float huge : {1e30f, kInfinity}) {
    context_.answers["point_size"] = context_.answers["point_gap"] = Float(huge);
    EXPECT_EQ(Shown(*effect)[0], 1) << huge;
  }
  for (const int32_t length :
       {std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
    context_.answers["max_length"] = Int(length);
    EXPECT_EQ(Shown(*effect)[0], 1) << length;
  }
}

TEST_F(MaskShapeFrames, OneAndTwoPixelsAreShapes) {
  mask_ = TestMask(200, 100, {30, 40, 1, 1});
  EXPECT_EQ(Seen(Point(0, 1), kPoints), (Values{0.15f, 0.4f, 1, 0}));
  mask_ = TestMask(200, 100, {30, 40, 2, 1});
  EXPECT_EQ(Seen(kCountExpression, kPoints)[0], 1);
}

TEST_F(MaskShapeFrames, ParametersOfOtherKindsAreConverted) {
  const Instance effect = host_.Make(ShapePackage(kRegionExpression, kRegion));
  const ParameterValue length = Float(20.0f);
  const ParameterValue size = Int(0);
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  context_.answers["max_length"] = length;
  context_.answers["point_size"] = size;
  const Values region = Shown(*effect);
  EXPECT_NEAR(region[0], 30 / 200.0, 1e-5);
  EXPECT_NEAR(region[1], 170 / 200.0, 1e-5);
}

TEST_F(MaskShapeFrames, AMissingNameOrValueIsRefused) {
  const Instance effect = host_.Make(ShapePackage(kCountExpression, kPoints));
  const ParameterValue value = Float(1);
  EXPECT_EQ(effect->SetUniform(nullptr, &value), kFailed);
  EXPECT_EQ(effect->SetUniform("point_size", nullptr), kFailed);
  EXPECT_EQ(effect->SetUniform("point_size", &value), kOk);
  EXPECT_EQ(effect->SetUniform("anything", &value), kOk);
}

}  // namespace
}  // namespace krv::test
