// Parameters that do nothing.
#pragma once

#include <filesystem>

#include "check/description_document.h"
#include "check/finding.h"

namespace krv::tool {

// Appends a warning for each parameter whose value reaches nothing that reads it: its name stands
// in no shader of the package in `folder`, or no uniform takes its kind of value. The package must
// be free of errors. Says nothing about packages whose shaders cannot be read here, the enciphered
// ones, or make names of pieces.
void LintUnreadParameters(const DescriptionDocument& document, const std::filesystem::path& folder,
                          Findings* findings);

}  // namespace krv::tool
