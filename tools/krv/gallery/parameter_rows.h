// An effect's parameters as part of its card.
#pragma once

#include <string>

#include "registrar.h"

namespace krv::tool {

// What a row says about a parameter, not yet escaped.
struct ParameterRow {
  std::string name;
  std::string kind;
  std::string limits;         // "0 to 100"; empty without limits
  std::string default_value;  // as `krv render --param` takes it
  std::string picture;        // a CSS background that shows the default, or empty
  bool wide_picture = false;  // a gradient, which says more than its text
  bool hidden = false;        // not meant for users of an editor
};

ParameterRow DescribeParameter(const host::ParameterListing& parameter);

// The table of all parameters, folded up under their number; a line of text when there is none.
std::string ParametersHtml(const host::EffectListing& effect);

}  // namespace krv::tool
