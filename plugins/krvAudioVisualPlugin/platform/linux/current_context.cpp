// A host on Linux has its context through EGL or GLX; whichever library it has loaded and whichever
// of them has a context current is asked. Neither is linked or loaded by the plug-in.
#include "platform/current_context.h"

#include "platform/dynamic_library.h"

namespace krv::platform {
namespace {

using CurrentContextFunction = void* (*)();
using FunctionLookup = void* (*)(const char*);

// One window-system interface to OpenGL.
struct GlBinding {
  DynamicLibrary library;
  CurrentContextFunction current_context = nullptr;
  FunctionLookup function = nullptr;

  void* Current() const { return current_context == nullptr ? nullptr : current_context(); }
};

GlBinding FindBinding(const char* file_name, const char* context_name, const char* lookup_name) {
  GlBinding binding;
  binding.library = DynamicLibrary::OpenIfLoaded(file_name);
  auto context = reinterpret_cast<CurrentContextFunction>(binding.library.Symbol(context_name));
  auto lookup = reinterpret_cast<FunctionLookup>(binding.library.Symbol(lookup_name));
  if (context != nullptr && lookup != nullptr) {
    binding.current_context = context;
    binding.function = lookup;
  }
  return binding;
}

GlBinding FindEgl() {
  return FindBinding("libEGL.so.1", "eglGetCurrentContext", "eglGetProcAddress");
}

GlBinding FindGlx() {
  GlBinding glx = FindBinding("libGLX.so.0", "glXGetCurrentContext", "glXGetProcAddressARB");
  if (glx.current_context == nullptr) {
    glx = FindBinding("libGL.so.1", "glXGetCurrentContext", "glXGetProcAddressARB");
  }
  return glx;
}

// The binding with a current context, or null. The libraries are looked for again until found: a
// host may load one after it has loaded the plug-in.
const GlBinding* CurrentBinding() {
  thread_local GlBinding egl;
  thread_local GlBinding glx;
  if (egl.current_context == nullptr) egl = FindEgl();
  if (egl.Current() != nullptr) return &egl;
  if (glx.current_context == nullptr) glx = FindGlx();
  if (glx.Current() != nullptr) return &glx;
  return nullptr;
}

}  // namespace

void* CurrentGlContext() {
  const GlBinding* binding = CurrentBinding();
  return binding == nullptr ? nullptr : binding->Current();
}

void* GlFunction(const char* name) {
  const GlBinding* binding = CurrentBinding();
  return binding == nullptr ? nullptr : binding->function(name);
}

}  // namespace krv::platform
