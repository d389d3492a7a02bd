// Counting of GL calls: the loader's function pointers are variables, so they can be wrapped.
#pragma once

#include <glad/gl.h>

#include <type_traits>

namespace krv::test {

// Stands in for one function pointer of the loader while it lives. One object per function at a
// time; calls on other threads must not overlap it.
template <auto& Function, class Pointer>
class GlHook;

template <auto& Function, class Result, class... Arguments>
class GlHook<Function, Result (*)(Arguments...)> {
 public:
  GlHook() {
    real_ = Function;
    calls_ = 0;
    Function = &Call;
  }
  GlHook(const GlHook&) = delete;
  GlHook& operator=(const GlHook&) = delete;
  ~GlHook() { Function = real_; }

  int calls() const { return calls_; }

 private:
  static Result Call(Arguments... arguments) {
    ++calls_;
    return real_(arguments...);
  }

  static inline Result (*real_)(Arguments...) = nullptr;
  static inline int calls_ = 0;
};

template <auto& Function>
using GlHookOf = GlHook<Function, std::remove_reference_t<decltype(Function)>>;

// Counts the calls of the functions named, from construction on.
template <auto&... Functions>
class GlCalls : private GlHookOf<Functions>... {
 public:
  int count() const { return (0 + ... + GlHookOf<Functions>::calls()); }
};

using TextureAllocations = GlCalls<glad_glGenTextures, glad_glTexImage2D>;
using TextureDeletions = GlCalls<glad_glDeleteTextures>;
using UniformSettings =
    GlCalls<glad_glUniform1i, glad_glUniform1f, glad_glUniform1fv, glad_glUniform2fv,
            glad_glUniform3fv, glad_glUniform4fv, glad_glUniformMatrix2fv, glad_glUniformMatrix3fv,
            glad_glUniformMatrix4fv>;

// Every function that the graphics layer calls.
using AnyGlCalls = GlCalls<
    glad_glActiveTexture, glad_glAttachShader, glad_glBindBuffer, glad_glBindFramebuffer,
    glad_glBindSampler, glad_glBindTexture, glad_glBindVertexArray, glad_glBufferData,
    glad_glCheckFramebufferStatus, glad_glClear, glad_glClearColor, glad_glColorMask,
    glad_glCompileShader, glad_glCreateProgram, glad_glCreateShader, glad_glDeleteBuffers,
    glad_glDeleteFramebuffers, glad_glDeleteProgram, glad_glDeleteShader, glad_glDeleteTextures,
    glad_glDeleteVertexArrays, glad_glDepthMask, glad_glDisable, glad_glDisableVertexAttribArray,
    glad_glDrawArrays, glad_glEnable, glad_glEnableVertexAttribArray, glad_glFramebufferTexture2D,
    glad_glGenBuffers, glad_glGenFramebuffers, glad_glGenTextures, glad_glGenVertexArrays,
    glad_glGetActiveAttrib, glad_glGetActiveUniform, glad_glGetAttribLocation, glad_glGetBooleanv,
    glad_glGetError, glad_glGetFloatv, glad_glGetIntegerv, glad_glGetProgramInfoLog,
    glad_glGetProgramiv, glad_glGetShaderInfoLog, glad_glGetShaderiv, glad_glGetString,
    glad_glGetTexParameterfv, glad_glGetUniformLocation, glad_glIsEnabled, glad_glIsTexture,
    glad_glLinkProgram, glad_glMapBuffer, glad_glPixelStorei, glad_glPolygonMode, glad_glReadPixels,
    glad_glShaderSource, glad_glTexImage2D, glad_glTexParameterf, glad_glTexParameteri,
    glad_glTexSubImage2D, glad_glUniform1f, glad_glUniform1fv, glad_glUniform1i, glad_glUniform2fv,
    glad_glUniform3fv, glad_glUniform4fv, glad_glUniformMatrix2fv, glad_glUniformMatrix3fv,
    glad_glUniformMatrix4fv, glad_glUnmapBuffer, glad_glUseProgram, glad_glVertexAttribPointer,
    glad_glViewport>;

}  // namespace krv::test
