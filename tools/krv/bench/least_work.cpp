#include "bench/least_work.h"

#include <glad/gl.h>

#include <stdexcept>

namespace krv::tool {
namespace {

constexpr char kVertexShader[] =
    "#version 120\n"
    "attribute vec2 corner;\n"
    "varying vec2 at;\n"
    "void main() {\n"
    "  at = corner * 0.5 + 0.5;\n"
    "  gl_Position = vec4(corner, 0.0, 1.0);\n"
    "}\n";

constexpr char kOneColour[] =
    "#version 120\n"
    "void main() { gl_FragColor = vec4(0.25, 0.5, 0.75, 0.5); }\n";

constexpr char kTwoTextures[] =
    "#version 120\n"
    "uniform sampler2D background;\n"
    "uniform sampler2D figure;\n"
    "varying vec2 at;\n"
    "void main() {\n"
    "  vec4 below = texture2D(background, at);\n"
    "  vec4 above = texture2D(figure, at);\n"
    "  gl_FragColor = mix(below, above, above.a);\n"
    "}\n";

constexpr GLuint kCorner = 0;  // the attribute's place

GLuint Compile(GLenum stage, const char* text) {
  const GLuint shader = glCreateShader(stage);
  glShaderSource(shader, 1, &text, nullptr);
  glCompileShader(shader);
  return shader;
}

// The texture of a frame on the GPU, or the other one.
GLuint TextureOr(HostFrame* frame, GLuint other) {
  const auto* on_gpu = dynamic_cast<host::TextureFrame*>(frame);
  return on_gpu == nullptr ? other : on_gpu->texture();
}

}  // namespace

LeastWorkPlan PlanLeastWork(const PackageFacts& facts, host::DeviceUse form, FrameSize output) {
  const bool in_memory = form == host::DeviceUse::kMemory;
  LeastWorkPlan plan;
  plan.passes = facts.passes;
  plan.pass_size = EffectSizeOf(facts, output);
  // Drawn into the output itself, there is nothing to lay over anything.
  const bool laid_over = !facts.original;
  plan.copy = in_memory && laid_over && !facts.blends_by_gl;
  plan.blend = laid_over && !plan.copy;
  plan.upload = in_memory && (facts.reads_background || plan.blend);
  plan.read_back = in_memory;
  plan.read_size = plan.copy ? plan.pass_size : output;
  return plan;
}

LeastWork::LeastWork(const LeastWorkPlan& plan, FrameSize output, const FrameRing& frames)
    : plan_(plan), output_(output) {
  MakeQuad();
  const GLuint figure = MakeTexture(plan.pass_size);
  const GLuint figure_target = MakeTarget(figure);
  const bool in_memory = plan.read_back;
  const GLuint background = plan.upload ? MakeTexture(output) : 0;
  const GLuint result = plan.blend && in_memory ? MakeTexture(output) : 0;
  if (plan.upload) AddUpload(frames, background);
  AddPasses(figure_target);
  if (plan.blend) AddBlend(frames, background, figure, MakeTarget(result));
  if (plan.read_back) AddReadBack(plan.blend ? targets_.back() : figure_target);
  if (plan.copy) AddCopy(frames);
  if (glGetError() != GL_NO_ERROR) throw std::runtime_error("OpenGL refuses the limit's own work");
}

LeastWork::~LeastWork() {
  for (const GLuint program : programs_) glDeleteProgram(program);
  glDeleteFramebuffers(static_cast<GLsizei>(targets_.size()), targets_.data());
  glDeleteTextures(static_cast<GLsizei>(textures_.size()), textures_.data());
  glDeleteVertexArrays(1, &quad_);
  glDeleteBuffers(1, &corners_);
}

void LeastWork::Run(int64_t frame) const {
  for (const Part& part : parts_) part.run(frame);
}

void LeastWork::AddCopy(const FrameRing& frames) {
  parts_.push_back({"copy", [this, &frames](int64_t frame) {
                      FrameDescription description;
                      frames.input(frame)->Describe(&description);
                      host::CopyRows(frames.input(frame)->GetPixels(), description.stride,
                                     frames.output(frame)->GetPixels(), description.stride,
                                     output_.width * 4, output_.height);
                    }});
}

void LeastWork::AddUpload(const FrameRing& frames, GLuint texture) {
  parts_.push_back({"upload", [this, &frames, texture](int64_t frame) {
                      FrameDescription description;
                      frames.input(frame)->Describe(&description);
                      glBindTexture(GL_TEXTURE_2D, texture);
                      glPixelStorei(GL_UNPACK_ROW_LENGTH, description.stride / 4);
                      // Called RGBA the bytes go into the texture as they are.
                      glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, output_.width, output_.height,
                                      GL_RGBA, GL_UNSIGNED_BYTE, frames.input(frame)->GetPixels());
                      glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
                      glBindTexture(GL_TEXTURE_2D, 0);
                    }});
}

void LeastWork::AddPasses(GLuint target) {
  const GLuint program = MakeProgram(kOneColour);
  for (int i = 0; i < plan_.passes; ++i) {
    parts_.push_back({"pass" + std::to_string(i + 1), [this, program, target](int64_t) {
                        DrawQuad(program, target, plan_.pass_size);
                      }});
  }
}

void LeastWork::AddBlend(const FrameRing& frames, GLuint background, GLuint figure, GLuint target) {
  const GLuint program = MakeProgram(kTwoTextures);
  glUseProgram(program);
  glUniform1i(glGetUniformLocation(program, "background"), 0);
  glUniform1i(glGetUniformLocation(program, "figure"), 1);
  glUseProgram(0);
  parts_.push_back({"blend", [this, &frames, background, figure, target, program](int64_t frame) {
                      glActiveTexture(GL_TEXTURE1);
                      glBindTexture(GL_TEXTURE_2D, figure);
                      glActiveTexture(GL_TEXTURE0);
                      glBindTexture(GL_TEXTURE_2D, TextureOr(frames.input(frame), background));
                      if (background == 0) {  // the host's own texture is the target
                        glBindFramebuffer(GL_FRAMEBUFFER, target);
                        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D,
                                               TextureOr(frames.output(frame), 0), 0);
                      }
                      DrawQuad(program, target, output_);
                      glActiveTexture(GL_TEXTURE1);
                      glBindTexture(GL_TEXTURE_2D, 0);
                      glActiveTexture(GL_TEXTURE0);
                      glBindTexture(GL_TEXTURE_2D, 0);
                    }});
}

void LeastWork::AddReadBack(GLuint target) {
  read_.resize(static_cast<size_t>(plan_.read_size.width) *
               static_cast<size_t>(plan_.read_size.height) * 4);
  parts_.push_back({"read_back", [this, target](int64_t) {
                      glBindFramebuffer(GL_FRAMEBUFFER, target);
                      glReadPixels(0, 0, plan_.read_size.width, plan_.read_size.height, GL_RGBA,
                                   GL_UNSIGNED_BYTE, read_.data());
                      glBindFramebuffer(GL_FRAMEBUFFER, 0);
                    }});
}

GLuint LeastWork::MakeProgram(const char* fragment_shader) {
  const GLuint program = glCreateProgram();
  programs_.push_back(program);
  for (const GLuint shader :
       {Compile(GL_VERTEX_SHADER, kVertexShader), Compile(GL_FRAGMENT_SHADER, fragment_shader)}) {
    glAttachShader(program, shader);
    glDeleteShader(shader);  // lives on with the program
  }
  glBindAttribLocation(program, kCorner, "corner");
  glLinkProgram(program);
  GLint linked = GL_FALSE;
  glGetProgramiv(program, GL_LINK_STATUS, &linked);
  if (linked != GL_TRUE) throw std::runtime_error("OpenGL refuses the limit's own shaders");
  return program;
}

GLuint LeastWork::MakeTexture(FrameSize size) {
  GLuint texture = 0;
  glGenTextures(1, &texture);
  textures_.push_back(texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, size.width, size.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
               nullptr);
  glBindTexture(GL_TEXTURE_2D, 0);
  return texture;
}

// Without a texture, one is attached later.
GLuint LeastWork::MakeTarget(GLuint texture) {
  GLuint target = 0;
  glGenFramebuffers(1, &target);
  targets_.push_back(target);
  if (texture == 0) return target;
  glBindFramebuffer(GL_FRAMEBUFFER, target);
  glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
  return target;
}

void LeastWork::MakeQuad() {
  constexpr GLfloat kCorners[] = {-1, -1, 1, -1, -1, 1, 1, 1};
  glGenVertexArrays(1, &quad_);
  glGenBuffers(1, &corners_);
  glBindVertexArray(quad_);
  glBindBuffer(GL_ARRAY_BUFFER, corners_);
  glBufferData(GL_ARRAY_BUFFER, sizeof(kCorners), kCorners, GL_STATIC_DRAW);
  glVertexAttribPointer(kCorner, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
  glEnableVertexAttribArray(kCorner);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  glBindVertexArray(0);
}

void LeastWork::DrawQuad(GLuint program, GLuint target, FrameSize size) const {
  glBindFramebuffer(GL_FRAMEBUFFER, target);
  glViewport(0, 0, size.width, size.height);
  glUseProgram(program);
  glBindVertexArray(quad_);
  glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
  glBindVertexArray(0);
  glUseProgram(0);
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

}  // namespace krv::tool
