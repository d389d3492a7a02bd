// Parameters in groups and with labels that people can read.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "registrar.h"

namespace krv::studio {

struct ParameterGroup {
  std::string title;
  std::vector<size_t> parameters;  // indices into the listing, in its order
};

// By what the names begin with, the groups in the order in which the package declares their first
// parameter; parameters that hosts hide make up the last one. Of parameters of one name the last is
// taken.
std::vector<ParameterGroup> GroupParameters(const host::EffectListing& effect);

// "spectrum_minimum_height" becomes "Spectrum minimum height".
std::string ReadableName(std::string_view name);

}  // namespace krv::studio
