// The description of one draw.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "graphics/uniform_value.h"

namespace krv {

class PXImage;
class PXProgram;

enum class DrawMode : uint32_t {
  kQuad = 0,  // the whole target
  kMesh = 1,  // the mesh vertices
  kNone = 2,  // nothing; the target is cleared all the same
};

// A part of a target, in pixels from its first column and row.
struct TargetRegion {
  int32_t x;
  int32_t y;
  int32_t width;
  int32_t height;
  friend bool operator==(const TargetRegion&, const TargetRegion&) = default;
};

inline constexpr uint32_t kApiOpenGl = 1;

// Filled by an effect, drawn by PXGraphics::Render. Not shared between threads.
class PXGraphicsContext {
 public:
  explicit PXGraphicsContext(uint32_t api_tag) : api(api_tag) {}
  PXGraphicsContext(const PXGraphicsContext&) = delete;
  PXGraphicsContext& operator=(const PXGraphicsContext&) = delete;
  virtual ~PXGraphicsContext() = default;

  // Appends a uniform with a copy of the `size` bytes at `data`. A name added twice is set twice,
  // in order, so the later value wins. Null data gives an entry that draws ignore.
  void AddUniform(std::string_view name, UniformType type, const void* data, uint32_t size);

  // Empties the description for the next draw and keeps the memory.
  void Reset();

  std::vector<UniformValue> uniforms;
  uint32_t api;  // kApiOpenGl, or the draw is refused
  DrawMode draw_mode = DrawMode::kQuad;
  bool only_in_regions = false;       // a quad covers `regions` alone, the rest stays clear
  std::vector<TargetRegion> regions;  // parts of the target that do not overlap
  std::vector<std::shared_ptr<PXImage>> images;  // order of texture units; null takes no unit
  std::shared_ptr<PXProgram> program;
  std::string mesh_attribute;        // the vertex attribute that takes the positions
  std::vector<float> mesh_vertices;  // three per vertex

 private:
  std::vector<UniformValue> spare_uniforms_;
};

// Makes the draw description that the device of kind 1 takes.
std::unique_ptr<PXGraphicsContext> CreateGraphicsContext();

}  // namespace krv
