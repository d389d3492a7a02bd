#include "studio/window.h"

#include <imgui_impl_opengl3.h>
#include <imgui_impl_sdl.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace krv::studio {
namespace {

constexpr float kUsualDpi = 96;
const ImVec2 kNowhere{-1e6f, -1e6f};

// Without a display SDL draws where nobody sees it. Who asks for that shall have it.
bool DrawsUnseen() {
  const std::string_view driver = SDL_GetCurrentVideoDriver();
  return SDL_getenv("SDL_VIDEODRIVER") == nullptr &&
         (driver == "offscreen" || driver == "dummy" || driver == "evdev");
}

float ScaleOfDisplay() {
  float dpi = kUsualDpi;
  if (SDL_GetDisplayDPI(0, nullptr, &dpi, nullptr) != 0) return 1;
  return std::clamp(std::round(4 * dpi / kUsualDpi) / 4, 1.0f, 3.0f);
}

// As large as asked for, but within the display.
SDL_Rect Place(const WindowOptions& options, float scale) {
  SDL_Rect usable{0, 0, 1 << 16, 1 << 16};
  SDL_GetDisplayUsableBounds(0, &usable);
  const auto pixels = [scale](int units) {
    return static_cast<int>(std::lround(static_cast<float>(units) * scale));
  };
  return {0, 0, std::min(pixels(options.width), usable.w),
          std::min(pixels(options.height), usable.h)};
}

Uint32 WakeEvent() {
  static const Uint32 type = SDL_RegisterEvents(1);
  return type;
}

// SDL's numbers begin with 1 for the left, then the middle one; Dear ImGui's are left, right,
// middle from 0.
int ButtonOf(Uint8 sdl) { return sdl == SDL_BUTTON_LEFT ? 0 : sdl == SDL_BUTTON_RIGHT ? 1 : 2; }

}  // namespace

std::unique_ptr<Window> Window::Create(const WindowOptions& options, std::string* error) {
  std::unique_ptr<Window> window(new Window);
  const auto fail = [error](const char* what) {
    *error = std::string(what) + ": " + SDL_GetError();
    return nullptr;
  };
  SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
  if (SDL_Init(SDL_INIT_VIDEO) != 0) return fail("there is no display for a window");
  if (DrawsUnseen()) {
    *error = "there is no display for a window";
    return nullptr;
  }
  WakeEvent();
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 0);
  SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
  window->scale_ = options.scale > 0 ? options.scale : ScaleOfDisplay();
  const SDL_Rect place = Place(options, window->scale_);
  window->window_ = SDL_CreateWindow(
      options.title.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, place.w, place.h,
      SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
  if (window->window_ == nullptr) return fail("the window cannot be opened");
  window->context_ = SDL_GL_CreateContext(window->window_);
  if (window->context_ == nullptr) return fail("the window gets no OpenGL 3.0");
  SDL_GL_SetSwapInterval(1);
  if (!window->gl_.Load(error)) return nullptr;
  ImGui::CreateContext();
  window->has_ui_ = true;
  ImGui::GetIO().IniFilename = nullptr;
  ImGui_ImplSDL2_InitForOpenGL(window->window_, window->context_);
  ImGui_ImplOpenGL3_Init("#version 130");
  SDL_SetWindowMinimumSize(window->window_, std::min(place.w, 960), std::min(place.h, 600));
  return window;
}

Window::~Window() {
  if (has_ui_) {
    ImGui_ImplOpenGL3_Shutdown();
    ImGui_ImplSDL2_Shutdown();
    ImGui::DestroyContext();
  }
  if (context_ != nullptr) SDL_GL_DeleteContext(context_);
  if (window_ != nullptr) SDL_DestroyWindow(window_);
  SDL_Quit();
}

void Window::Wake() {
  SDL_Event event{};
  event.type = WakeEvent();
  SDL_PushEvent(&event);
}

bool Window::TakeEvents(int milliseconds, const std::function<void(const SDL_Event&)>& handle) {
  SDL_Event event;
  if (SDL_WaitEventTimeout(&event, milliseconds) == 0) return false;
  do {
    ImGui_ImplSDL2_ProcessEvent(&event);
    FollowPointer(event);
    handle(event);
  } while (SDL_PollEvent(&event) != 0);
  return true;
}

// The backend asks the desktop where the pointer is when a frame begins; events also tell of clicks
// that begin and end between two slow frames.
void Window::FollowPointer(const SDL_Event& event) {
  switch (event.type) {
    case SDL_MOUSEMOTION:
      pointer_ = {static_cast<float>(event.motion.x), static_cast<float>(event.motion.y)};
      break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
      const auto button = static_cast<size_t>(ButtonOf(event.button.button));
      held_[button] = event.type == SDL_MOUSEBUTTONDOWN;
      if (held_[button]) pressed_[button] = true;
      pointer_ = {static_cast<float>(event.button.x), static_cast<float>(event.button.y)};
      break;
    }
    case SDL_WINDOWEVENT:
      if (event.window.event == SDL_WINDOWEVENT_LEAVE && !held_[0]) pointer_ = kNowhere;
      break;
    default:
      break;
  }
}

void Window::BeginFrame() {
  ImGui_ImplOpenGL3_NewFrame();
  SharpenFonts();
  ImGui_ImplSDL2_NewFrame();
  ImGuiIO& io = ImGui::GetIO();
  io.MousePos = pointer_;
  for (size_t i = 0; i < held_.size(); ++i) io.MouseDown[i] = held_[i] || pressed_[i];
  pressed_ = {};
  ImGui::NewFrame();
}

// Texts lie on whole pixels: nothing is to be smoothed between those of the fonts' texture, which
// every other shape reads a white pixel of, too.
void Window::SharpenFonts() {
  if (sharp_) return;
  sharp_ = true;
  const auto texture = reinterpret_cast<uintptr_t>(ImGui::GetIO().Fonts->TexID);
  gl_.BindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
  for (const GLenum filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER}) {
    gl_.TexParameteri(GL_TEXTURE_2D, filter, GL_NEAREST);
  }
}

void Window::Clear(ImU32 colour) {
  const ImVec4 parts = ImGui::ColorConvertU32ToFloat4(colour);
  gl_.ClearColor(parts.x, parts.y, parts.z, 1);
  gl_.Clear(GL_COLOR_BUFFER_BIT);
}

void Window::EndFrame(ImU32 background, const std::vector<Ground>& grounds) {
  ImGui::Render();
  int width = 0;
  int height = 0;
  SDL_GL_GetDrawableSize(window_, &width, &height);
  gl_.Viewport(0, 0, width, height);
  Clear(background);
  gl_.Enable(GL_SCISSOR_TEST);
  const ImVec2 density = ImGui::GetIO().DisplayFramebufferScale;
  for (const Ground& ground : grounds) {
    const auto left = static_cast<int>(ground.from.x * density.x);
    const auto right = static_cast<int>(ground.to.x * density.x);
    const auto top = static_cast<int>(ground.from.y * density.y);
    const auto bottom = static_cast<int>(ground.to.y * density.y);
    gl_.Scissor(left, height - bottom, right - left, bottom - top);
    Clear(ground.colour);
  }
  gl_.Disable(GL_SCISSOR_TEST);
  ImGui_ImplOpenGL3_RenderDrawData(ImGui::GetDrawData());
  SDL_GL_SwapWindow(window_);
}

host::Picture Window::ReadPicture() {
  int width = 0;
  int height = 0;
  SDL_GL_GetDrawableSize(window_, &width, &height);
  host::Picture upside_down(width, height);
  // Drawn again into the back buffer, which is undefined once it was shown.
  ImGui_ImplOpenGL3_RenderDrawData(ImGui::GetDrawData());
  gl_.PixelStorei(GL_PACK_ROW_LENGTH, upside_down.stride() / 4);
  gl_.ReadPixels(0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE, upside_down.Row(0));
  gl_.PixelStorei(GL_PACK_ROW_LENGTH, 0);
  host::Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    const uint8_t* row = upside_down.Row(height - 1 - y);
    std::copy(row, row + 4 * static_cast<ptrdiff_t>(width), picture.Row(y));
    for (int x = 0; x < width; ++x) picture.Pixel(x, y)[3] = 255;
  }
  return picture;
}

}  // namespace krv::studio
