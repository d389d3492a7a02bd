#include "faults/gl_faults.h"

#include <glad/gl.h>

#include <algorithm>
#include <ostream>
#include <string_view>

namespace krv::test {
namespace {

GlFault planned = GlFault::kNone;
int spared_calls = 0;
bool struck = false;

bool Strikes(GlFault fault) {
  if (planned != fault || struck) return false;
  if (spared_calls-- > 0) return false;
  struck = true;
  return true;
}

PFNGLGENTEXTURESPROC real_gen_textures;
PFNGLGENBUFFERSPROC real_gen_buffers;
PFNGLGENFRAMEBUFFERSPROC real_gen_framebuffers;
PFNGLCHECKFRAMEBUFFERSTATUSPROC real_check_status;
PFNGLREADPIXELSPROC real_read_pixels;
PFNGLMAPBUFFERPROC real_map_buffer;
PFNGLCREATEPROGRAMPROC real_create_program;
PFNGLCREATESHADERPROC real_create_shader;

void GLAD_API_PTR GenTextures(GLsizei count, GLuint* names) {
  if (Strikes(GlFault::kNoTextureName)) {
    std::fill_n(names, count, 0u);
  } else {
    real_gen_textures(count, names);
  }
}

void GLAD_API_PTR GenBuffers(GLsizei count, GLuint* names) {
  if (Strikes(GlFault::kNoBufferName)) {
    std::fill_n(names, count, 0u);
  } else {
    real_gen_buffers(count, names);
  }
}

void GLAD_API_PTR GenFramebuffers(GLsizei count, GLuint* names) {
  if (Strikes(GlFault::kNoFramebufferName)) {
    std::fill_n(names, count, 0u);
  } else {
    real_gen_framebuffers(count, names);
  }
}

GLenum GLAD_API_PTR CheckFramebufferStatus(GLenum target) {
  return Strikes(GlFault::kIncomplete) ? GLenum{GL_FRAMEBUFFER_UNSUPPORTED}
                                       : real_check_status(target);
}

void GLAD_API_PTR ReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format,
                             GLenum type, void* pixels) {
  real_read_pixels(x, y, width, height, Strikes(GlFault::kNoPixels) ? GLenum{0} : format, type,
                   pixels);
}

void* GLAD_API_PTR MapBuffer(GLenum target, GLenum access) {
  return Strikes(GlFault::kNoMapping) ? nullptr : real_map_buffer(target, access);
}

GLuint GLAD_API_PTR CreateProgram() {
  return Strikes(GlFault::kNoProgramName) ? 0 : real_create_program();
}

GLuint GLAD_API_PTR CreateShader(GLenum stage) {
  return Strikes(GlFault::kNoShaderName) ? 0 : real_create_shader(stage);
}

template <class Function>
void* Stand(Function* replacement, Function*& real, void* found) {
  real = reinterpret_cast<Function*>(found);
  return reinterpret_cast<void*>(replacement);
}

void* Replacement(std::string_view name, void* found) {
  if (name == "glGenTextures") return Stand(GenTextures, real_gen_textures, found);
  if (name == "glGenBuffers") return Stand(GenBuffers, real_gen_buffers, found);
  if (name == "glGenFramebuffers") return Stand(GenFramebuffers, real_gen_framebuffers, found);
  if (name == "glCheckFramebufferStatus") {
    return Stand(CheckFramebufferStatus, real_check_status, found);
  }
  if (name == "glReadPixels") return Stand(ReadPixels, real_read_pixels, found);
  if (name == "glMapBuffer") return Stand(MapBuffer, real_map_buffer, found);
  if (name == "glCreateProgram") return Stand(CreateProgram, real_create_program, found);
  if (name == "glCreateShader") return Stand(CreateShader, real_create_shader, found);
  return found;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, GlFault fault) {
  constexpr const char* kNames[] = {
      "None",     "NoTextureName", "NoBufferName",  "NoFramebufferName", "Incomplete",
      "NoPixels", "NoMapping",     "NoProgramName", "NoShaderName"};
  return out << kNames[static_cast<size_t>(fault)];
}

ScopedGlFault::ScopedGlFault(GlFault fault, int spared) {
  planned = fault;
  spared_calls = spared;
  struck = false;
}

ScopedGlFault::~ScopedGlFault() { planned = GlFault::kNone; }

bool ScopedGlFault::has_struck() const { return struck; }

}  // namespace krv::test

// What the linker calls in the place of krv::platform::GlFunction, and that function itself.
extern "C" void* __real__ZN3krv8platform10GlFunctionEPKc(const char* name);
extern "C" void* __wrap__ZN3krv8platform10GlFunctionEPKc(const char* name) {
  void* found = __real__ZN3krv8platform10GlFunctionEPKc(name);
  return found == nullptr ? nullptr : krv::test::Replacement(name, found);
}
