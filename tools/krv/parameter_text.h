// Parameters' limits and defaults as people write them.
#pragma once

#include <string>

#include "registrar.h"

namespace krv::tool {

// A float as the double with the same shortest decimal form: 0.1, not 0.10000000149011612.
double ShortestDouble(double number);

// A colour as "#RRGGBB", an integer in full, other kinds as the shortest decimal of the float.
std::string NumberText(ParameterKind kind, double number);

}  // namespace krv::tool
