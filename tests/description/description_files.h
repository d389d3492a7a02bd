// The description files in data/, one per case.
#pragma once

#include <memory>
#include <string>

#include "description/effect_description.h"

namespace krv::test {

inline std::string DataFile(const std::string& name) {
  return std::string(KRV_TEST_DATA_DIR) + "/" + name + ".json";
}

// What data/<name>.json gives, accepted or rejected.
inline std::shared_ptr<EffectDescription> Load(const std::string& name) {
  auto description = std::make_shared<EffectDescription>();
  description->LoadDescription(DataFile(name));
  return description;
}

}  // namespace krv::test
