// What the example needs of the system: the plug-in's file, and an OpenGL context. A real host has
// both already.
#pragma once

#include <string>
#include <vector>

namespace example {

// The program's arguments as UTF-8, without the program's name.
std::vector<std::string> Arguments(int argc, char** argv);

// Loads a library for the rest of the process. Null when the system cannot.
void* LoadLibraryFile(const std::string& path);

// The address of an exported function, or null.
void* FindFunction(void* library, const char* name);

// Makes a new OpenGL context without a window current on this thread. It is never deleted. False
// when there is no OpenGL that takes GLSL 1.20.
bool MakeGlContextCurrent();

}  // namespace example
