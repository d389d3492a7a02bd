#include "studio/studio_hand.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "media/png_encoder.h"
#include "utf8_path.h"

namespace krv::test {

bool StudioHand::Until(const std::function<bool()>& holds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!holds()) {
    if (std::chrono::steady_clock::now() > end) return false;
    Turns(1);
  }
  return true;
}

void StudioHand::Turns(int count) {
  for (int i = 0; i < count; ++i) {
    studio::Window::Wake();  // do not wait for news
    window_->Turn();
  }
}

StudioHand::Place StudioHand::At(std::string_view mark, double x, double y) {
  Turns(2);
  const auto area = window_->marks().Find(mark);
  EXPECT_TRUE(area) << mark << " is not in the window";
  if (!area) return {};
  const auto between = [](float from, float to, double share) {
    return static_cast<int>(
        std::lround(static_cast<double>(from) + share * static_cast<double>(to - from)));
  };
  return {between(area->from.x, area->to.x, x), between(area->from.y, area->to.y, y)};
}

void StudioHand::Push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 1); }

void StudioHand::MoveTo(Place place) {
  SDL_Event event{};
  event.type = SDL_MOUSEMOTION;
  event.motion.x = place.x;
  event.motion.y = place.y;
  Push(event);
  Turns(2);
}

void StudioHand::Hold(Place place, Uint8 button) {
  MoveTo(place);
  SDL_Event event{};
  event.type = SDL_MOUSEBUTTONDOWN;
  event.button.button = button;
  event.button.x = place.x;
  event.button.y = place.y;
  Push(event);
  Turns(2);
}

void StudioHand::Release(Place place, Uint8 button) {
  SDL_Event event{};
  event.type = SDL_MOUSEBUTTONUP;
  event.button.button = button;
  event.button.x = place.x;
  event.button.y = place.y;
  Push(event);
  Turns(3);
}

void StudioHand::Click(Place place, Uint8 button) {
  Hold(place, button);
  Release(place, button);
}

void StudioHand::Fill(std::string_view mark, const std::string& text) {
  Click(mark);
  Key(SDLK_a, KMOD_CTRL);
  Type(text);
}

void StudioHand::Drag(Place from, Place to) {
  Hold(from);
  for (int step = 1; step <= 4; ++step) {
    MoveTo({from.x + (to.x - from.x) * step / 4, from.y + (to.y - from.y) * step / 4});
  }
  Release(to);
}

void StudioHand::Key(SDL_Keycode key, Uint16 modifiers) {
  SDL_Event event{};
  event.type = SDL_KEYDOWN;
  event.key.keysym.sym = key;
  event.key.keysym.scancode = SDL_GetScancodeFromKey(key);
  event.key.keysym.mod = modifiers;
  SDL_SetModState(static_cast<SDL_Keymod>(modifiers));
  Push(event);
  Turns(2);
  SDL_SetModState(KMOD_NONE);
  event.type = SDL_KEYUP;
  event.key.keysym.mod = KMOD_NONE;
  Push(event);
  Turns(2);
}

void StudioHand::Type(const std::string& text) {
  for (const char letter : text) {
    SDL_Event event{};
    event.type = SDL_TEXTINPUT;
    event.text.text[0] = letter;
    Push(event);
    Turns(1);
  }
  Turns(2);
}

host::Picture StudioHand::Screenshot(const std::string& name) {
  Turns(3);
  host::Picture picture = window_->window().ReadPicture();
  if (const char* folder = std::getenv("KRV_SCREENSHOTS")) {
    host::PngEncoder().Write(picture, host::PathFromUtf8(folder) / (name + ".png"));
  }
  return picture;
}

}  // namespace krv::test
