// The studio's keys.
#pragma once

#include <SDL.h>

#include <optional>

namespace krv::studio {

enum class Command {
  kTogglePlay,
  kFrameBack,
  kFrameOn,
  kSecondBack,
  kSecondOn,
  kKeyBack,
  kKeyOn,
  kToBegin,
  kToEnd,
  kToggleLoop,
  kToggleMute,
  kToggleTheme,
  kSaveDefaults,
  kSaveKeyframes,
  kExport,
  kDismiss,
  kQuit,
};

// What a key that goes down asks for. `typing`: a field has the keyboard, and plain keys are its.
std::optional<Command> CommandFor(const SDL_KeyboardEvent& key, bool typing);

}  // namespace krv::studio
