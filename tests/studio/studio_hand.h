// Somebody who operates the studio's window.
#pragma once

#include <SDL.h>

#include <functional>
#include <string>
#include <string_view>

#include "media/picture.h"
#include "studio/studio_window.h"

namespace krv::test {

// Pushes the events that a desktop would send and lets the window take its turns in between.
class StudioHand {
 public:
  explicit StudioHand(studio::StudioWindow* window) : window_(window) {}

  // Turns until it holds, for at most half a minute. Whether it does.
  bool Until(const std::function<bool()>& holds);
  void Turns(int count);

  // A place of the window in pixels.
  struct Place {
    int x = 0;
    int y = 0;
  };
  // Where a widget lies; x and y are shares of its width and height. A widget that is scrolled out
  // of sight or not there fails the test.
  Place At(std::string_view mark, double x = 0.5, double y = 0.5);

  void Click(Place place, Uint8 button = SDL_BUTTON_LEFT);
  void Click(std::string_view mark) { Click(At(mark)); }
  void Drag(Place from, Place to);
  void Key(SDL_Keycode key, Uint16 modifiers = KMOD_NONE);
  void Type(const std::string& text);
  // Writes into a field in place of what is there.
  void Fill(std::string_view mark, const std::string& text);

  // Takes hold, moves, lets go.
  void Hold(Place place, Uint8 button = SDL_BUTTON_LEFT);
  void MoveTo(Place place);
  void Release(Place place, Uint8 button = SDL_BUTTON_LEFT);

  // The window as it is; also as a PNG file in the folder that KRV_SCREENSHOTS names, if any.
  host::Picture Screenshot(const std::string& name);

 private:
  void Push(SDL_Event event);

  studio::StudioWindow* window_;
};

}  // namespace krv::test
