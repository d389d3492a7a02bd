// A library of functions, as a program in another language loads it.
#pragma once

#include <string>

#include "support/raw_object.h"

namespace krv::test {

// Loads the library at a UTF-8 path for the rest of the process. Throws the system's reason when
// that fails.
void* LoadForEver(const std::string& path);

// An exported function. Throws when there is none of that name.
RawFunction FindFunction(void* library, const std::string& name);

}  // namespace krv::test
