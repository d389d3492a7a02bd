// A headless OpenGL context, for a host without a window.
#pragma once

#include <memory>
#include <string>

namespace krv::host {

// An OpenGL context with no surface; pictures are drawn into textures. Made current on one thread
// at a time. Each object is a context of its own: contexts share nothing.
class GlContext {
 public:
  // Where drawing happens. On Windows a program has no choice, and the system's OpenGL driver draws
  // whichever is asked for.
  enum class Renderer {
    kAny,       // a GPU when there is one, else software
    kSoftware,  // always software, for pictures that are the same on every machine
  };

  // A new context, not yet current. Null on failure, with the reason in *error.
  static std::unique_ptr<GlContext> Create(Renderer renderer, std::string* error);

  virtual ~GlContext() = default;  // the context must not be current on another thread

  // Makes the context current on the calling thread and loads the GL functions of glad/gl.h for the
  // calling program. False on failure.
  virtual bool MakeCurrent() = 0;

  // Whether the context is current on the calling thread.
  virtual bool IsCurrent() const = 0;

  // Leaves the calling thread without a context.
  virtual void ClearCurrent() = 0;

  // GL_RENDERER and GL_VERSION, for reports. The context must be current.
  std::string Description() const;
};

}  // namespace krv::host
