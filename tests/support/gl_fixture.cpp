#include "support/gl_fixture.h"

#include <utility>

namespace krv::test {
namespace {

void GLAD_API_PTR RecordError(GLenum source, GLenum type, GLuint /*id*/, GLenum /*severity*/,
                              GLsizei length, const GLchar* message, const void* user) {
  if (source != GL_DEBUG_SOURCE_API || type != GL_DEBUG_TYPE_ERROR) return;
  auto* errors = static_cast<std::vector<std::string>*>(const_cast<void*>(user));
  errors->emplace_back(message, static_cast<size_t>(length));
}

}  // namespace

std::unique_ptr<host::GlContext> MakeCurrentContext() {
  std::string error;
  auto context = host::GlContext::Create(host::GlContext::Renderer::kSoftware, &error);
  if (context != nullptr && context->MakeCurrent()) return context;
  ADD_FAILURE() << (error.empty() ? "the OpenGL context cannot be made current" : error);
  return nullptr;
}

void GlTest::SetUp() {
  context_ = MakeCurrentContext();
  ASSERT_NE(context_, nullptr);
  ASSERT_NE(glad_glDebugMessageCallback, nullptr) << "OpenGL does not report its errors here";
  glEnable(GL_DEBUG_OUTPUT);
  glEnable(GL_DEBUG_OUTPUT_SYNCHRONOUS);
  glDebugMessageCallback(RecordError, &gl_errors_);
}

void GlTest::TearDown() {
  for (const std::string& error : gl_errors_) ADD_FAILURE() << "OpenGL reported: " << error;
}

std::vector<std::string> GlTest::TakeGlErrors() { return std::exchange(gl_errors_, {}); }

}  // namespace krv::test
