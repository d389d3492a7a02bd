// A host on Windows has its context through WGL, whose functions opengl32.dll exports.
#include "platform/current_context.h"

#include <cstdint>

#include "platform/dynamic_library.h"

namespace krv::platform {
namespace {

using CurrentContextFunction = void*(__stdcall*)();
using FunctionLookup = void*(__stdcall*)(const char*);

struct OpenGl32 {
  DynamicLibrary library = DynamicLibrary::Open("opengl32.dll");
  CurrentContextFunction current_context =
      reinterpret_cast<CurrentContextFunction>(library.Symbol("wglGetCurrentContext"));
  FunctionLookup function = reinterpret_cast<FunctionLookup>(library.Symbol("wglGetProcAddress"));
};

// Loaded on first use and held by the process: at the plug-in's end no library may be freed.
const OpenGl32& Library() {
  static const OpenGl32* library = new OpenGl32;
  return *library;
}

// Some drivers return these in place of null.
bool IsAddress(void* function) {
  const auto value = reinterpret_cast<intptr_t>(function);
  return value < -1 || value > 3;
}

}  // namespace

void* CurrentGlContext() {
  const OpenGl32& opengl32 = Library();
  return opengl32.current_context == nullptr ? nullptr : opengl32.current_context();
}

void* GlFunction(const char* name) {
  const OpenGl32& opengl32 = Library();
  if (opengl32.function == nullptr) return nullptr;
  void* function = opengl32.function(name);
  // The functions of OpenGL 1.1 are the library's own exports alone.
  return IsAddress(function) ? function : opengl32.library.Symbol(name);
}

}  // namespace krv::platform
