// The limit: what a GL driver needs for the work alone that no frame of a package can do without.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bench/bench_options.h"
#include "bench/frame_ring.h"
#include "bench/package_facts.h"
#include "gl_context.h"

namespace krv::tool {

// Which work that is. Sizes in pixels.
struct LeastWorkPlan {
  bool copy = false;    // the input's rows into the output's, in memory
  bool upload = false;  // the input into a texture
  int passes = 0;       // quads of one colour
  FrameSize pass_size = {0, 0};
  bool blend = false;      // a quad of the output's size that samples two textures
  bool read_back = false;  // of pixels into memory
  FrameSize read_size = {0, 0};
};

// A figure that the plug-in lays over a frame in memory by its own rule can be drawn and read back
// at its own size. Where GL lays it over, everything has to pass through GL.
LeastWorkPlan PlanLeastWork(const PackageFacts& facts, host::DeviceUse form, FrameSize output);

// Does that work over and over. [gl-thread, always with the same current context]
class LeastWork {
 public:
  struct Part {
    std::string name;
    std::function<void(int64_t frame)> run;
  };

  // `frames` is borrowed. Throws std::runtime_error when GL refuses something.
  LeastWork(const LeastWorkPlan& plan, FrameSize output, const FrameRing& frames);
  ~LeastWork();
  LeastWork(const LeastWork&) = delete;
  LeastWork& operator=(const LeastWork&) = delete;

  // In the order in which a frame needs them. GL may still be at work when one returns.
  const std::vector<Part>& parts() const { return parts_; }

  // All parts.
  void Run(int64_t frame) const;

 private:
  unsigned MakeProgram(const char* fragment_shader);
  unsigned MakeTexture(FrameSize size);
  unsigned MakeTarget(unsigned texture);
  void MakeQuad();
  void AddCopy(const FrameRing& frames);
  void AddUpload(const FrameRing& frames, unsigned texture);
  void AddPasses(unsigned target);
  void AddBlend(const FrameRing& frames, unsigned background, unsigned figure, unsigned target);
  void AddReadBack(unsigned target);
  void DrawQuad(unsigned program, unsigned target, FrameSize size) const;

  LeastWorkPlan plan_;
  FrameSize output_;
  std::vector<Part> parts_;
  std::vector<unsigned> programs_;
  std::vector<unsigned> textures_;
  std::vector<unsigned> targets_;  // framebuffers
  unsigned quad_ = 0;              // a vertex array
  unsigned corners_ = 0;           // its buffer
  mutable std::vector<uint8_t> read_;
};

}  // namespace krv::tool
