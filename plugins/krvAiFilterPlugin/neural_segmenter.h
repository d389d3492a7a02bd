// Finds people by a network that the user has.
#pragma once

#include <memory>
#include <string>

#include "segmenter.h"

namespace krv {

// The network in the file kPersonModelFileName of the folder (UTF-8): an ONNX network with one
// input and one output.
//
// Input: 1 x 3 x side x side floats, the picture stretched to a square, red, green, blue, each 0 to
// 1. The side is 256 or, when the network does not run on that, the first it runs on of 320, 512,
// 192, 224 and 384. What else a network expects of its input must be part of it.
//
// Output: 1 x 1 x height x width floats, the likelihood of a person, who is where it is above 0.5;
// or 1 x 2 x height x width, background and person, who is where the second is greater.
//
// Null when there is no such file. Null as well, with one line on the standard error output, when
// the file holds no such network.
std::unique_ptr<Segmenter> LoadNeuralSegmenter(const std::string& folder);

}  // namespace krv
