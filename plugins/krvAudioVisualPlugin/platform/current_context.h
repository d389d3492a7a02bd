// The OpenGL context that the host has made current. The plug-in never creates one.
#pragma once

namespace krv::platform {

// Identifies the context current on the calling thread; null when there is none. A handle may come
// back for a new context after the old one is gone.
void* CurrentGlContext();

// The address of a GL function for the current context, or null.
void* GlFunction(const char* name);

}  // namespace krv::platform
