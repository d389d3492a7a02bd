#include "validate/gl_state.h"

#include <glad/gl.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

namespace krv::tool {
namespace {

struct Variable {
  const char* name;
  GLenum id;
  int values = 1;
};

// After a call these are as they were.
constexpr Variable kCapabilities[] = {
    {"GL_DEPTH_TEST", GL_DEPTH_TEST},
    {"GL_BLEND", GL_BLEND},
    {"GL_SCISSOR_TEST", GL_SCISSOR_TEST},
    {"GL_STENCIL_TEST", GL_STENCIL_TEST},
    {"GL_ALPHA_TEST", GL_ALPHA_TEST},
    {"GL_CULL_FACE", GL_CULL_FACE},
    {"GL_COLOR_LOGIC_OP", GL_COLOR_LOGIC_OP},
    {"GL_RASTERIZER_DISCARD", GL_RASTERIZER_DISCARD},
    {"GL_FRAMEBUFFER_SRGB", GL_FRAMEBUFFER_SRGB},
};
constexpr Variable kKept[] = {
    {"GL_DEPTH_WRITEMASK", GL_DEPTH_WRITEMASK},
    {"GL_DEPTH_FUNC", GL_DEPTH_FUNC},
    {"GL_BLEND_SRC_RGB", GL_BLEND_SRC_RGB},
    {"GL_BLEND_DST_RGB", GL_BLEND_DST_RGB},
    {"GL_SCISSOR_BOX", GL_SCISSOR_BOX, 4},
    {"GL_CULL_FACE_MODE", GL_CULL_FACE_MODE},
    {"GL_POLYGON_MODE", GL_POLYGON_MODE, 2},
    {"GL_ALPHA_TEST_FUNC", GL_ALPHA_TEST_FUNC},
    {"GL_SAMPLER_BINDING", GL_SAMPLER_BINDING},
    {"GL_COLOR_WRITEMASK", GL_COLOR_WRITEMASK, 4},
    {"GL_VIEWPORT", GL_VIEWPORT, 4},
    {"GL_STENCIL_FUNC", GL_STENCIL_FUNC},
    {"GL_VERTEX_ARRAY_BINDING", GL_VERTEX_ARRAY_BINDING},
    {"GL_RENDERBUFFER_BINDING", GL_RENDERBUFFER_BINDING},
    {"GL_UNPACK_ALIGNMENT", GL_UNPACK_ALIGNMENT},
    {"GL_UNPACK_ROW_LENGTH", GL_UNPACK_ROW_LENGTH},
    {"GL_UNPACK_SKIP_PIXELS", GL_UNPACK_SKIP_PIXELS},
    {"GL_UNPACK_SKIP_ROWS", GL_UNPACK_SKIP_ROWS},
    {"GL_UNPACK_SWAP_BYTES", GL_UNPACK_SWAP_BYTES},
    {"GL_PACK_ALIGNMENT", GL_PACK_ALIGNMENT},
    {"GL_PACK_ROW_LENGTH", GL_PACK_ROW_LENGTH},
    {"GL_PACK_SKIP_PIXELS", GL_PACK_SKIP_PIXELS},
    {"GL_PACK_SKIP_ROWS", GL_PACK_SKIP_ROWS},
    {"GL_PACK_SWAP_BYTES", GL_PACK_SWAP_BYTES},
};

// After a call these hold 0, GL_TEXTURE0 for the active unit; after one that had nothing to draw,
// what they held before.
constexpr Variable kReset[] = {
    {"GL_CURRENT_PROGRAM", GL_CURRENT_PROGRAM},
    {"GL_DRAW_FRAMEBUFFER_BINDING", GL_DRAW_FRAMEBUFFER_BINDING},
    {"GL_READ_FRAMEBUFFER_BINDING", GL_READ_FRAMEBUFFER_BINDING},
    {"GL_ARRAY_BUFFER_BINDING", GL_ARRAY_BUFFER_BINDING},
    {"GL_PIXEL_PACK_BUFFER_BINDING", GL_PIXEL_PACK_BUFFER_BINDING},
    {"GL_PIXEL_UNPACK_BUFFER_BINDING", GL_PIXEL_UNPACK_BUFFER_BINDING},
    {"GL_ACTIVE_TEXTURE", GL_ACTIVE_TEXTURE},
};
constexpr char kActiveTexture[] = "GL_ACTIVE_TEXTURE";

// The first eight units are those that a draw may leave without a texture.
constexpr GLenum kUsableUnits = 8;
constexpr GLenum kUnits = 12;
constexpr char kTextureOfUnit[] = "GL_TEXTURE_BINDING_2D of unit ";

constexpr GLint kPixelStoreValue = 8;
constexpr GLenum kPixelStore[] = {GL_UNPACK_ALIGNMENT,   GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS,
                                  GL_UNPACK_SKIP_PIXELS, GL_UNPACK_SWAP_BYTES, GL_PACK_ALIGNMENT,
                                  GL_PACK_ROW_LENGTH,    GL_PACK_SKIP_ROWS,    GL_PACK_SKIP_PIXELS,
                                  GL_PACK_SWAP_BYTES};

std::string Integers(const Variable& variable) {
  std::array<GLint, 4> values{};
  glGetIntegerv(variable.id, values.data());
  std::string text;
  for (int i = 0; i < variable.values; ++i) {
    text += (i > 0 ? " " : "") + std::to_string(values[static_cast<size_t>(i)]);
  }
  return text;
}

std::string ClearColour() {
  GLfloat values[4] = {};
  glGetFloatv(GL_COLOR_CLEAR_VALUE, values);
  std::string text;
  for (const GLfloat value : values) text += (text.empty() ? "" : " ") + std::to_string(value);
  return text;
}

void ReadTextureUnits(GlState* state) {
  GLint active = 0;
  glGetIntegerv(GL_ACTIVE_TEXTURE, &active);
  for (GLenum unit = 0; unit < kUnits; ++unit) {
    glActiveTexture(GL_TEXTURE0 + unit);
    (*state)[kTextureOfUnit + std::to_string(unit)] =
        Integers({"GL_TEXTURE_BINDING_2D", GL_TEXTURE_BINDING_2D});
  }
  glActiveTexture(static_cast<GLenum>(active));
}

bool MayBeUnbound(const std::string& name) {
  if (!name.starts_with(kTextureOfUnit)) return false;
  return std::stoul(name.substr(std::string_view(kTextureOfUnit).size())) < kUsableUnits;
}

void SetPixelStore(GLint value) {
  for (const GLenum name : kPixelStore) {
    const bool is_flag = name == GL_UNPACK_SWAP_BYTES || name == GL_PACK_SWAP_BYTES;
    const bool is_alignment = name == GL_UNPACK_ALIGNMENT || name == GL_PACK_ALIGNMENT;
    glPixelStorei(name, is_flag ? value != 0 : (is_alignment && value == 0 ? 4 : value));
  }
}

void BindTextures(GLuint texture) {
  for (GLenum unit = 0; unit < kUnits; ++unit) {
    glActiveTexture(GL_TEXTURE0 + unit);
    glBindTexture(GL_TEXTURE_2D, texture);
  }
}

int64_t Count(GLuint end, GLboolean(GLAD_API_PTR* is_one)(GLuint)) {
  int64_t count = 0;
  for (GLuint name = 1; name < end; ++name) count += is_one(name) ? 1 : 0;
  return count;
}

void GLAD_API_PTR Report(GLenum source, GLenum type, GLuint /*id*/, GLenum /*severity*/,
                         GLsizei length, const GLchar* message, const void* user) {
  if (source != GL_DEBUG_SOURCE_API || type != GL_DEBUG_TYPE_ERROR) return;
  auto* errors = static_cast<std::vector<std::string>*>(const_cast<void*>(user));
  errors->emplace_back(message, static_cast<size_t>(length));
}

}  // namespace

GlState ReadGlState() {
  GlState state;
  for (const Variable& variable : kCapabilities) {
    state[variable.name] = glIsEnabled(variable.id) ? "on" : "off";
  }
  for (const Variable& variable : kKept) state[variable.name] = Integers(variable);
  for (const Variable& variable : kReset) state[variable.name] = Integers(variable);
  state["GL_COLOR_CLEAR_VALUE"] = ClearColour();
  ReadTextureUnits(&state);
  return state;
}

HostileGlState::HostileGlState() {
  glGenTextures(1, &texture_);
  glBindTexture(GL_TEXTURE_2D, texture_);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
  glGenBuffers(1, &buffer_);
  glGenVertexArrays(1, &vertex_array_);
  for (const Variable& capability : kCapabilities) glEnable(capability.id);
  glBlendFunc(GL_ZERO, GL_ONE);
  glScissor(1, 1, 2, 2);
  glCullFace(GL_FRONT_AND_BACK);
  glDepthFunc(GL_NEVER);
  glDepthMask(GL_TRUE);
  glStencilFunc(GL_NEVER, 0, 0xFF);
  glAlphaFunc(GL_NEVER, 0);
  glPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
  glLogicOp(GL_INVERT);
  glColorMask(GL_TRUE, GL_FALSE, GL_FALSE, GL_TRUE);
  glClearColor(0.125F, 0.25F, 0.5F, 0.75F);
  glViewport(3, 4, 1, 2);
  SetPixelStore(kPixelStoreValue);
  BindTextures(texture_);
  glBindBuffer(GL_ARRAY_BUFFER, buffer_);
  glBindVertexArray(vertex_array_);
  glActiveTexture(GL_TEXTURE0 + 5);
}

HostileGlState::~HostileGlState() {
  for (const Variable& capability : kCapabilities) glDisable(capability.id);
  glBlendFunc(GL_ONE, GL_ZERO);
  glCullFace(GL_BACK);
  glDepthFunc(GL_LESS);
  glStencilFunc(GL_ALWAYS, 0, 0xFF);
  glAlphaFunc(GL_ALWAYS, 0);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glLogicOp(GL_COPY);
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  glClearColor(0, 0, 0, 0);
  SetPixelStore(0);
  BindTextures(0);
  glActiveTexture(GL_TEXTURE0);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  glBindVertexArray(0);
  glDeleteVertexArrays(1, &vertex_array_);
  glDeleteBuffers(1, &buffer_);
  glDeleteTextures(1, &texture_);
}

std::vector<std::string> ForbiddenChanges(const GlState& before, const GlState& after) {
  GlState reset;
  for (const Variable& variable : kReset) reset[variable.name] = "0";
  reset[kActiveTexture] = std::to_string(GL_TEXTURE0);
  std::vector<std::string> changes;
  for (const auto& [name, value] : after) {
    const std::string& kept = before.at(name);
    const auto known = reset.find(name);
    if (value == kept || (known != reset.end() && value == known->second)) continue;
    if (value == "0" && MayBeUnbound(name)) continue;
    std::string change = name;
    change.append(" is ").append(value).append(", was ").append(kept);
    changes.push_back(std::move(change));
  }
  return changes;
}

GlObjects CountGlObjects() {
  // Names are given from 1 on; those that are free lie between those that are not.
  constexpr GLuint kEnough = 16384;
  GlObjects objects;
  objects.textures = Count(kEnough, glad_glIsTexture);
  objects.buffers = Count(kEnough, glad_glIsBuffer);
  objects.framebuffers = Count(kEnough, glad_glIsFramebuffer);
  objects.programs = Count(kEnough, glad_glIsProgram);
  objects.shaders = Count(kEnough, glad_glIsShader);
  return objects;
}

void GlErrors::Listen() {
  if (glad_glDebugMessageCallback == nullptr) return;  // glGetError remains
  glEnable(GL_DEBUG_OUTPUT);
  glEnable(GL_DEBUG_OUTPUT_SYNCHRONOUS);
  glDebugMessageCallback(Report, &reported_);
}

std::vector<std::string> GlErrors::Take() {
  std::vector<std::string> errors;
  constexpr int kMostErrors = 16;  // without a context the first one never ends
  for (int i = 0; i < kMostErrors; ++i) {
    const GLenum code = glGetError();
    if (code == GL_NO_ERROR) break;
    errors.push_back("glGetError gives " + std::to_string(code));
  }
  std::vector<std::string> reported = std::exchange(reported_, {});
  std::move(reported.begin(), reported.end(), std::back_inserter(errors));
  return errors;
}

}  // namespace krv::tool
