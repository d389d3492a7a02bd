// What writing under a name would replace.
#pragma once

#include <cstdint>
#include <string>

namespace krv::studio {

enum class Replaces { kNothing, kFile, kFiles };

// By an export of so many frames. Nothing where the name is none for an export.
Replaces ReplacedByExport(const std::string& output, int64_t frames);

}  // namespace krv::studio
