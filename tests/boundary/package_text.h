// Texts of "description.json" for tests that make their packages as they go.
#pragma once

#include <string>

namespace krv::test {

// `params` is the inside of the array; `more` is further keys, each with a comma before it.
inline std::string PackageText(const std::string& unique_name, const std::string& params = "",
                               const std::string& more = "") {
  return R"({"effect_type": "audio_visualization", "unique_name": ")" + unique_name +
         R"(", "params": [)" + params + "]" + more + "}";
}

}  // namespace krv::test
