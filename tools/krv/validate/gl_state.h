// The host's OpenGL state: what a call may change of it, and what lives in the context.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace krv::tool {

// Values by the names of the GL constants. [gl-thread]
using GlState = std::map<std::string, std::string>;

GlState ReadGlState();

// The state of a host in the middle of its own drawing, with everything on that could spoil a
// picture, for as long as the object lives; then that of a new context. [gl-thread]
class HostileGlState {
 public:
  HostileGlState();
  ~HostileGlState();
  HostileGlState(const HostileGlState&) = delete;
  HostileGlState& operator=(const HostileGlState&) = delete;

 private:
  uint32_t texture_ = 0;  // bound to every unit
  uint32_t buffer_ = 0;
  uint32_t vertex_array_ = 0;
};

// What differs from the state that the interface allows after a call, given the one before; one
// text for each difference.
std::vector<std::string> ForbiddenChanges(const GlState& before, const GlState& after);

// How many objects of each kind live in the current context.
struct GlObjects {
  int64_t textures = 0;
  int64_t buffers = 0;
  int64_t framebuffers = 0;
  int64_t programs = 0;
  int64_t shaders = 0;
};
GlObjects CountGlObjects();

// Collects what OpenGL reports as errors in the contexts it is told of, also those that the plug-in
// has taken itself with glGetError. Any thread.
class GlErrors {
 public:
  // Begins to listen in the current context. The object lives as long as the context.
  void Listen();
  // The errors since the last call, those of glGetError included.
  std::vector<std::string> Take();

 private:
  std::vector<std::string> reported_;
};

}  // namespace krv::tool
