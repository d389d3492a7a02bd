// Instances of an effect that render the frames to be measured.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bench/bench_scene.h"
#include "bench/frame_ring.h"
#include "effect_session.h"

namespace krv::tool {

// [gl-thread, with the host's context current]
class FrameRunner {
 public:
  struct Wishes {
    std::string unique_name;              // registered
    std::vector<std::string> parameters;  // name=value
    int instances = 1;
  };

  // `scene` and `frames` are borrowed. Throws std::invalid_argument for a parameter or value that
  // the effect does not have, std::runtime_error for an effect that cannot be created.
  FrameRunner(const std::shared_ptr<host::PluginHost>& host, const Wishes& wishes,
              BenchScene* scene, const FrameRing* frames);

  // Renders one frame with the instance whose turn it is, and waits for GL. Throws
  // std::runtime_error when the effect fails.
  void Run(int64_t frame);

 private:
  BenchScene* scene_;
  const FrameRing* frames_;
  std::vector<std::unique_ptr<host::EffectSession>> sessions_;
};

}  // namespace krv::tool
