#include "studio/shortcuts.h"

namespace krv::studio {

std::optional<Command> CommandFor(const SDL_KeyboardEvent& key, bool typing) {
  const SDL_Keycode code = key.keysym.sym;
  const bool shift = (key.keysym.mod & KMOD_SHIFT) != 0;
  if ((key.keysym.mod & (KMOD_CTRL | KMOD_GUI)) != 0) {
    if (code == SDLK_s) return shift ? Command::kSaveKeyframes : Command::kSaveDefaults;
    if (code == SDLK_e) return Command::kExport;
    if (code == SDLK_q) return Command::kQuit;
    if (typing) return std::nullopt;
    if (code == SDLK_LEFT) return Command::kKeyBack;
    if (code == SDLK_RIGHT) return Command::kKeyOn;
    return std::nullopt;
  }
  if (code == SDLK_ESCAPE) return Command::kDismiss;
  if (typing) return std::nullopt;
  switch (code) {
    case SDLK_SPACE:
      return Command::kTogglePlay;
    case SDLK_LEFT:
      return shift ? Command::kSecondBack : Command::kFrameBack;
    case SDLK_RIGHT:
      return shift ? Command::kSecondOn : Command::kFrameOn;
    case SDLK_HOME:
      return Command::kToBegin;
    case SDLK_END:
      return Command::kToEnd;
    case SDLK_l:
      return Command::kToggleLoop;
    case SDLK_m:
      return Command::kToggleMute;
    case SDLK_t:
      return Command::kToggleTheme;
    default:
      return std::nullopt;
  }
}

}  // namespace krv::studio
