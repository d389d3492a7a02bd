// Where GL errors surface.
#pragma once

namespace krv::GL {

// Reads the GL error flag and prints "GL error 0x%x at %s:%d\n" to standard output with the place
// of the call when it is set. Work goes on. False when it was set.
bool CheckGl(const char* file = __builtin_FILE(), int line = __builtin_LINE());

// Whether the plug-in's own entry points are loaded.
bool IsLoaded();

// Waits for everything asked of the current context.
void Finish();

}  // namespace krv::GL
