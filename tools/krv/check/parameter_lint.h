// What is wrong with the "params" of a description.
#pragma once

#include "check/description_document.h"
#include "check/finding.h"

namespace krv::tool {

// Appends what is wrong with the parameters; the description is an object.
void LintParameters(const DescriptionDocument& document, Findings* findings);

}  // namespace krv::tool
