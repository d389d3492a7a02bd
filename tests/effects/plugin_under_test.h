// The plug-in that EffectHost drives: the built file, or the same sources linked into the program.
#pragma once

#include "plugin_library.h"

namespace krv::test {

// Throws, and so fails the test, when the file cannot be loaded.
const host::PluginLibrary& PluginUnderTest();

}  // namespace krv::test
