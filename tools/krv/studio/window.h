// The window: SDL, its OpenGL context and Dear ImGui.
#pragma once

#include <SDL.h>
#include <imgui.h>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "media/picture.h"
#include "studio/gl_functions.h"

namespace krv::studio {

struct WindowOptions {
  std::string title;
  int width = 1440;  // units
  int height = 900;  // units
  float scale = 0;   // pixels of the window to a unit; 0 for what suits the display
};

// One at a time, everything on the thread that made it.
class Window {
 public:
  // Null on failure, with one line in *error.
  static std::unique_ptr<Window> Create(const WindowOptions& options, std::string* error);
  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  float scale() const { return scale_; }
  const GlFunctions& gl() const { return gl_; }

  // Waits for an event, at most `milliseconds`, and takes all there are: Dear ImGui gets them, and
  // `handle` sees each. Whether there was one.
  bool TakeEvents(int milliseconds, const std::function<void(const SDL_Event&)>& handle);

  // Makes TakeEvents return, from any thread.
  static void Wake();

  void BeginFrame();

  // A rectangle of one colour.
  struct Ground {
    ImVec2 from;
    ImVec2 to;
    ImU32 colour;
  };
  // Draws what was given to Dear ImGui since BeginFrame over `background`, and over `grounds` on
  // it, and shows it. Large areas belong here: with software OpenGL they would take most of the
  // time that a window takes.
  void EndFrame(ImU32 background, const std::vector<Ground>& grounds);

  // The window's latest picture.
  host::Picture ReadPicture();

 private:
  Window() = default;
  void FollowPointer(const SDL_Event& event);
  void SharpenFonts();
  void Clear(ImU32 colour);

  SDL_Window* window_ = nullptr;
  SDL_GLContext context_ = nullptr;
  bool has_ui_ = false;
  bool sharp_ = false;
  float scale_ = 1;
  GlFunctions gl_;
  ImVec2 pointer_{-1e6f, -1e6f};
  std::array<bool, 3> held_{};     // buttons
  std::array<bool, 3> pressed_{};  // since the last frame
};

}  // namespace krv::studio
