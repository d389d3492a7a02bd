// Networks of one layer, as ONNX files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace krv::test {

struct OnnxNetwork {
  // For each plane of the output: the weights of red, green and blue, and what is added.
  std::vector<std::vector<float>> planes;
  int64_t step = 1;  // every so manyth pixel of the input has one in the output
  int64_t side = 0;  // the only side of input and output that it runs on; 0 for any
};

// The bytes of the file.
std::string OnnxFile(const OnnxNetwork& network);

}  // namespace krv::test
