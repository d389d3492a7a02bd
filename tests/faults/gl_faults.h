// An OpenGL driver that fails where a test wants it to.
//
// The loader's lookup of GL functions is replaced when the test program is linked, so every context
// and every loading meets the failing functions.
#pragma once

#include <iosfwd>

namespace krv::test {

enum class GlFault {
  kNone,
  kNoTextureName,      // glGenTextures gives 0
  kNoBufferName,       // glGenBuffers gives 0
  kNoFramebufferName,  // glGenFramebuffers gives 0
  kIncomplete,         // glCheckFramebufferStatus tells that the framebuffer is unsupported
  kNoPixels,           // glReadPixels reads nothing and raises an error
  kNoMapping,          // glMapBuffer gives null
  kNoProgramName,      // glCreateProgram gives 0
  kNoShaderName,       // glCreateShader gives 0
};

std::ostream& operator<<(std::ostream& out, GlFault fault);

// Makes one call of the current process fail: the one after `spared` others of its kind. One object
// at a time.
class ScopedGlFault {
 public:
  ScopedGlFault(GlFault fault, int spared);
  ~ScopedGlFault();
  ScopedGlFault(const ScopedGlFault&) = delete;
  ScopedGlFault& operator=(const ScopedGlFault&) = delete;

  bool has_struck() const;
};

}  // namespace krv::test
