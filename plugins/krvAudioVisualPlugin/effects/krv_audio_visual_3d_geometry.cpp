#include "effects/krv_audio_visual_3d_geometry.h"

#include <new>
#include <opencv2/core.hpp>
#include <utility>

#include "graphics/px_graphics_context.h"

namespace krv {
namespace {

constexpr Matrix4 kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

// A perspective with scale 0.99, near plane 0.99 and far plane 2.
constexpr Matrix4 kProjection = {
    0.99f, 0, 0, 0, 0, 0.99f, 0, 0, 0, 0, -2.9603960514068604f, -1, 0, 0, -3.9207921028137207f, 0};

constexpr std::array<float, 9> kTriangle = {-0.5f, -0.5f, 0, 0.5f, -0.5f, 0, 0, 0.5f, 0};

// The right-handed look-at matrix.
Matrix4 LookAt(const cv::Vec3f& eye, const cv::Vec3f& target, const cv::Vec3f& up) {
  const cv::Vec3f forward = cv::normalize(target - eye);
  const cv::Vec3f side = cv::normalize(forward.cross(up));
  const cv::Vec3f upright = side.cross(forward);
  return {
      side[0], upright[0], -forward[0], 0, side[1],        upright[1],        -forward[1],      0,
      side[2], upright[2], -forward[2], 0, -side.dot(eye), -upright.dot(eye), forward.dot(eye), 1};
}

}  // namespace

KRVAudioVisual3dGeometry::KRVAudioVisual3dGeometry(
    std::shared_ptr<const EffectDescription> description)
    : KRVAudioVisual(std::move(description)),
      model_(kIdentity),
      view_(LookAt({0, 0, -1}, {0, 0, 0}, {0, 1, 0})),
      projection_(kProjection) {}

void* KRVAudioVisual3dGeometry::Destroy(uint32_t flags) {
  this->KRVAudioVisual3dGeometry::~KRVAudioVisual3dGeometry();
  if ((flags & 1) != 0) ::operator delete(this);
  return this;  // NOLINT(clang-analyzer-cplusplus.NewDelete): the address alone
}

int32_t KRVAudioVisual3dGeometry::PreparePass(PXGraphicsContext& draw) {
  draw.AddUniform("model_mat", UniformType::kMat4, model_.data(), sizeof(model_));
  draw.AddUniform("view_mat", UniformType::kMat4, view_.data(), sizeof(view_));
  draw.AddUniform("projection_mat", UniformType::kMat4, projection_.data(), sizeof(projection_));
  draw.draw_mode = DrawMode::kMesh;
  draw.mesh_attribute = "position";
  draw.mesh_vertices.assign(kTriangle.begin(), kTriangle.end());
  return kOk;
}

}  // namespace krv
