// Finds effect packages and registers them.
#pragma once

#include <memory>
#include <string_view>

#include "description/effect_description.h"

namespace krv {

// Registers every package below the folder at `path` (UTF-8) in the order in which the platform
// lists the folders; links to folders are not entered. Returns the effect of the last package met,
// which is the one registered first under its name, or null when there is none. An error of the
// file system ends the walk, and what was found before it is registered. Throws std::runtime_error,
// naming the file and the reason, for a package of which EffectDescription::LoadDescription raises
// an error; the packages before it stay registered.
std::shared_ptr<const EffectDescription> RegisterPackagesUnder(std::string_view path);

// Registers the package of one "description.json" (full UTF-8 path). Null when the file is not a
// description of an effect of this plug-in. Throws as above.
std::shared_ptr<const EffectDescription> RegisterPackage(std::string_view description_path);

}  // namespace krv
