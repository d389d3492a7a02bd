// Counts the GL objects that are alive in the current context.
#pragma once

#include <cstdint>
#include <iosfwd>

namespace krv::test {

struct GlNames {
  int textures = 0;
  int buffers = 0;
  int framebuffers = 0;
  int vertex_arrays = 0;
  int programs = 0;
  int shaders = 0;

  // Asks GL about every name below `bound`; drivers give the lowest free names out first.
  static GlNames Alive(uint32_t bound);

  bool operator==(const GlNames&) const = default;
};

std::ostream& operator<<(std::ostream& out, const GlNames& names);

}  // namespace krv::test
