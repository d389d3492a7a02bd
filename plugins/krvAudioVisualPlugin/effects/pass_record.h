// One program with the values of its uniforms.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "krv/types.h"

namespace krv {

class FoldedShader;
class PXGraphicsContext;
class PXProgram;

using UniformMap = std::map<std::string, ParameterValue, std::less<>>;

// Uniforms may be set on one thread while another draws; each record's own mutex guards its map and
// is never held while drawing.
struct PassRecord {
  PassRecord();
  ~PassRecord();

  std::shared_ptr<PXProgram> program;
  std::unique_ptr<FoldedShader> folded;  // of a built-in shader; null for any other
  bool is_builtin = false;
  std::vector<std::string> samplers;  // that the program reads
  UniformMap uniforms;                // under mutex
  std::mutex mutex;
};

// Inserts or overwrites a uniform of the record. Texts are not kept: no uniform can hold one.
void StoreUniform(PassRecord& record, std::string_view name, const ParameterValue& value);

// Whether a uniform of that name has been stored.
bool HoldsUniform(PassRecord& record, std::string_view name);

// Whether the program reads the texture of this unit: a sampler that is not set reads unit 0, but
// for the gradient of a built-in shader that has no stops.
bool ReadsUnit(PassRecord& record, int32_t unit);

// Adds the record's uniforms to the draw in name order. Integers of all kinds and booleans arrive
// as integers, floats as floats; kinds that no uniform can hold are passed over.
void AddUniforms(PXGraphicsContext& draw, PassRecord& record);

}  // namespace krv
