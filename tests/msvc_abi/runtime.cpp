// What the compiler takes for granted in every program of its platform.
#include "c_library.h"

// Refers to floating-point support; its presence is all that matters.
extern "C" const int _fltused = 0;

void* operator new(size_t size) { return malloc(size); }

// Frames of the host's own. Effects are freed by the plug-in that made them.
void operator delete(void* block) noexcept { free(block); }
void operator delete(void* block, size_t) noexcept { free(block); }
