// The fixture of tests that look at what an effect draws.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>
#include <utility>

#include "effects/effect_host.h"

namespace krv::test {

// Frames are 4 x 4 floats, so that what a shader writes into an output comes back exactly.
class EffectTest : public testing::Test {
 protected:
  explicit EffectTest(const host::HostPaths& paths = {}) : host_(host::DeviceUse::kMemory, paths) {
    context_.input = &input_;
    context_.output = &output_;
  }

  // Processes one frame, which has to succeed; the output's first pixel.
  Values Shown(KRVEffect& effect) {
    EXPECT_EQ(ProcessFrame(effect, context_), kOk);
    return ValuesAt(output_, 0, 0);
  }

  // The value that a vec4 expression has in the only pass of an effect with these parameters.
  Values ValueOf(std::string_view expression, std::string_view declarations,
                 nlohmann::json params = nlohmann::json::array()) {
    Package package = ValuePackage(expression, declarations);
    package.description["params"] = std::move(params);
    const Instance effect = host_.Make(std::move(package));
    return Shown(*effect);
  }

  EffectHost host_;
  host::MemoryFrame input_{4, 4, kPixelFloat};
  host::MemoryFrame output_{4, 4, kPixelFloat};
  TestContext context_;
};

}  // namespace krv::test
