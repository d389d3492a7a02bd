// The 3-D geometry effect: a triangle through a camera.
#include <gtest/gtest.h>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

constexpr char kCameraVertex[] =
    "#version 120\nattribute vec3 position;\n"
    "uniform mat4 model_mat; uniform mat4 view_mat; uniform mat4 projection_mat;\n"
    "void main() { gl_Position = projection_mat * view_mat * model_mat * vec4(position, 1.0); }\n";

constexpr Values kWhite = {1, 1, 1, 1};
constexpr Values kCleared = {0, 1, 0, 0};

class Geometry3d : public EffectTest {
 protected:
  Geometry3d() {
    context_.input = &large_input_;
    context_.output = &large_;
  }

  // The name chooses the class of effect, so it holds that of the 3-D geometry and a number.
  static Package TrianglePackage(const std::string& vertex, const std::string& fragment) {
    static int count = 0;
    Package package = PassPackage({fragment});
    package.description["unique_name"] =
        "test_audio_visualization_3d_geometry_" + std::to_string(count++);
    package.description["opengl_vert"] = {"camera.vert"};
    package.description["original"] = true;
    package.files["camera.vert"] = vertex;
    return package;
  }

  // What the fragment shader shows of a varying that the vertex shader sets.
  Values Seen(const std::string& value) {
    const std::string vertex =
        "#version 120\nattribute vec3 position;\nvarying vec4 seen;\n"
        "uniform mat4 model_mat; uniform mat4 view_mat; uniform mat4 projection_mat;\n"
        "void main() { seen = " +
        value + "; gl_Position = vec4(position, 1.0); }\n";
    Draw(TrianglePackage(vertex, Fragment("gl_FragColor = seen;", "varying vec4 seen;")));
    return ValuesAt(large_, 20, 20);
  }

  void Draw(Package package) {
    EXPECT_EQ(ProcessFrame(*host_.Make(std::move(package)), context_), kOk);
  }

  host::MemoryFrame large_input_{40, 40, kPixelFloat};
  host::MemoryFrame large_{40, 40, kPixelFloat};
};

std::string White() { return Fragment("gl_FragColor = vec4(1.0);"); }

TEST_F(Geometry3d, DrawsItsTriangle) {
  Draw(TrianglePackage(kCameraVertex, White()));
  // Corners at 0.495 of the half sides: x from 10.1 to 29.9, the tip at y = 29.9.
  EXPECT_EQ(ValuesAt(large_, 20, 20), kWhite);
  EXPECT_EQ(ValuesAt(large_, 11, 10), kWhite);
  EXPECT_EQ(ValuesAt(large_, 28, 10), kWhite);
  EXPECT_EQ(ValuesAt(large_, 20, 28), kWhite);
  EXPECT_EQ(ValuesAt(large_, 20, 9), kCleared);
  EXPECT_EQ(ValuesAt(large_, 9, 10), kCleared);
  EXPECT_EQ(ValuesAt(large_, 30, 10), kCleared);
  EXPECT_EQ(ValuesAt(large_, 20, 31), kCleared);
  EXPECT_EQ(ValuesAt(large_, 11, 28), kCleared);
}

TEST_F(Geometry3d, ModelMatrixIsTheIdentity) {
  EXPECT_EQ(Seen("model_mat[0]"), (Values{1, 0, 0, 0}));
  EXPECT_EQ(Seen("model_mat[1]"), (Values{0, 1, 0, 0}));
  EXPECT_EQ(Seen("model_mat[2]"), (Values{0, 0, 1, 0}));
  EXPECT_EQ(Seen("model_mat[3]"), (Values{0, 0, 0, 1}));
}

TEST_F(Geometry3d, ViewMatrixLooksFromBehindTheOrigin) {
  EXPECT_EQ(Seen("view_mat[0]"), (Values{-1, 0, 0, 0}));
  EXPECT_EQ(Seen("view_mat[1]"), (Values{0, 1, 0, 0}));
  EXPECT_EQ(Seen("view_mat[2]"), (Values{0, 0, -1, 0}));
  EXPECT_EQ(Seen("view_mat[3]"), (Values{0, 0, -1, 1}));
}

TEST_F(Geometry3d, ProjectionMatrixHoldsItsConstants) {
  EXPECT_EQ(Seen("projection_mat[0]"), (Values{0.99F, 0, 0, 0}));
  EXPECT_EQ(Seen("projection_mat[1]"), (Values{0, 0.99F, 0, 0}));
  EXPECT_EQ(Seen("projection_mat[2]"), (Values{0, 0, -2.9603960514068604F, -1}));
  EXPECT_EQ(Seen("projection_mat[3]"), (Values{0, 0, -3.9207921028137207F, 0}));
}

TEST_F(Geometry3d, OriginLiesInsideTheDepthRange) {
  EXPECT_EQ(Seen("view_mat * vec4(0.0, 0.0, 0.0, 1.0)"), (Values{0, 0, -1, 1}));
  const Values clip = Seen("projection_mat * view_mat * vec4(0.0, 0.0, 0.0, 1.0)");
  EXPECT_NEAR(clip[2], -0.9604, 1e-4);
  EXPECT_EQ(clip[3], 1);
}

TEST_F(Geometry3d, VertexShaderWithoutTheMatricesStillDraws) {
  Draw(
      TrianglePackage("#version 120\nattribute vec3 position;\n"
                      "void main() { gl_Position = vec4(position * 0.5, 1.0); }\n",
                      White()));
  EXPECT_EQ(ValuesAt(large_, 20, 19), kWhite);
  EXPECT_EQ(ValuesAt(large_, 20, 28), kCleared);
}

TEST_F(Geometry3d, VertexShaderWithoutThePositionDrawsNothing) {
  Draw(TrianglePackage("#version 120\nvoid main() { gl_Position = vec4(0.0, 0.0, 0.0, 1.0); }\n",
                       White()));
  EXPECT_EQ(ValuesAt(large_, 20, 20), kCleared);
}

TEST_F(Geometry3d, EveryPassDrawsTheTriangle) {
  Package package = TrianglePackage(kCameraVertex, White());
  package.description["opengl_frag"].push_back("second.glsl");
  package.files["second.glsl"] =
      Fragment("gl_FragColor = texture2D(background_tex, gl_FragCoord.xy / 40.0) * 0.5;",
               "uniform sampler2D background_tex;");
  Draw(std::move(package));
  EXPECT_EQ(ValuesAt(large_, 20, 20), (Values{0.5, 0.5, 0.5, 0.5}));
  EXPECT_EQ(ValuesAt(large_, 20, 35), kCleared);
}

TEST_F(Geometry3d, BlendDrawsTheWholeFrameWithAVertexShaderThatCopes) {
  FillValues(large_input_, {0.25, 0.25, 0.25, 1});
  // In the blend there are no matrices, and the position is a corner of the unit square.
  Package package = TrianglePackage(
      "#version 120\nattribute vec3 position;\n"
      "uniform mat4 model_mat; uniform mat4 view_mat; uniform mat4 projection_mat;\n"
      "void main() { bool camera = projection_mat[2].w != 0.0; gl_Position = camera ? "
      "projection_mat * view_mat * model_mat * vec4(position, 1.0) : "
      "vec4(position.xy * 2.0 - 1.0, 0.0, 1.0); }\n",
      Fragment("gl_FragColor = vec4(0.0, 1.0, 0.0, 1.0);"));
  package.description["original"] = false;
  Draw(std::move(package));
  EXPECT_EQ(ValuesAt(large_, 20, 20), (Values{0.25, 1.25, 0.25, 2}));
  EXPECT_EQ(ValuesAt(large_, 2, 2), (Values{0.25, 0.25, 0.25, 1}));
  EXPECT_EQ(ValuesAt(large_, 38, 38), (Values{0.25, 0.25, 0.25, 1}));
}

}  // namespace
}  // namespace krv::test
