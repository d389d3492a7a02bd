// Which texts a parameter takes. Pure functions, for any thread.
#pragma once

#include <string_view>

#include "registrar.h"

namespace krv::host {

// Whether the plug-in makes a gradient of a text: how many stops, and after commas and semicolons
// the colour and the place of each. Stops may be in any order, fewer or more than the count says,
// with spaces in front of numbers and anything behind them. A text without a comma, or with a count
// out of bounds, it passes over without a word; one without a number where one belongs makes it
// fail.
bool MakesGradient(std::string_view text);

// Whether a text is of use as a text parameter's value. To most any is. That of a gradient makes a
// gradient, or is empty or the default: a package may come with none, and keys begin with what
// there is.
bool IsOfUse(const ParameterListing& parameter, std::string_view text);

}  // namespace krv::host
