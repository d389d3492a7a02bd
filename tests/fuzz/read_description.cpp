#include <nlohmann/json.hpp>
#include <stdexcept>

#include "description/effect_description.h"
#include "description/package_limits.h"
#include "fuzz/require.h"
#include "fuzz/targets.h"
#include "krv/types.h"

namespace krv::fuzz {
namespace {

// The errors with which a description is refused.
template <class Function>
bool Accepts(Function&& function) {
  try {
    function();
    return true;
  } catch (const nlohmann::json::exception&) {
  } catch (const std::length_error&) {
  }
  return false;
}

void CheckParameters(const EffectDescription& description) {
  Require(description.parameters().size() <= kMostEntries, "a list has at most 1024 entries");
  for (const auto& parameter : description.parameters()) {
    Require(description.parameters_by_name().contains(parameter->name), "every name is known");
    for (const StoredParameterValue& value :
         {parameter->min_value, parameter->max_value, parameter->default_value}) {
      const ParameterValue view = value.View();
      Require(view.kind != kKindText || view.as_text != nullptr, "a text is never null");
    }
  }
}

void ReadKeys(const EffectDescription& description) {
  Accepts([&] { (void)description.UniqueName(); });
  Accepts([&] { (void)description.DisplayName(); });
  Accepts([&] { (void)description.Version(); });
  Accepts([&] { (void)description.BlendEnabled(); });
  Accepts([&] { (void)description.Original(); });
  Accepts([&] { (void)description.BlendScriptPath(); });
  Accepts([&] { (void)description.VertexShaderPaths(); });
  Accepts([&] {
    Require(description.FragmentShaderPaths().size() <= kMostShaderFiles, "at most 64 passes");
  });
  Accepts([&] {
    const RenderQuality quality = description.Quality();
    Require(quality >= kQualityLow && quality <= kQualityHigh, "a quality is one of three");
  });
  (void)description.Enciphered();
}

}  // namespace

void ReadDescription(std::string_view bytes) {
  EffectDescription description;
  int32_t code = kFailed;
  if (!Accepts([&] { code = description.ReadDescription(bytes, "package/description.json"); })) {
    return;
  }
  Require(code == kOk || description.json().is_null(), "a rejected document is null");
  if (code != kOk) return;
  CheckParameters(description);
  ReadKeys(description);
}

}  // namespace krv::fuzz
