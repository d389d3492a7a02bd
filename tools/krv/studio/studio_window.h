// The studio in its window.
#pragma once

#include <memory>
#include <string>

#include "studio/export_dialog.h"
#include "studio/keyframe_dialog.h"
#include "studio/look.h"
#include "studio/marks.h"
#include "studio/parameter_panel.h"
#include "studio/picture_texture.h"
#include "studio/shortcuts.h"
#include "studio/sound_device.h"
#include "studio/studio.h"
#include "studio/transport_panel.h"
#include "studio/window.h"

namespace krv::studio {

class StudioWindow {
 public:
  struct Options {
    Studio::Options studio;  // on_news is the window's
    Theme theme = Theme::kDark;
    WindowOptions window;
    bool play = true;  // from the start
  };

  // Null on failure, with one line in *error.
  static std::unique_ptr<StudioWindow> Create(Options options, std::unique_ptr<Clip> clip,
                                              std::string* error);

  // Until the user closes the window.
  void Run();

  // One turn of Run: takes the events there are, draws the window. False when it is to be closed.
  bool Turn();

  Studio& studio() { return *studio_; }
  const Marks& marks() const { return marks_; }
  Window& window() { return *window_; }

 private:
  StudioWindow() = default;
  void Handle(const SDL_Event& event);
  void Do(Command command);
  void SaveKeyframes();
  // Asks first where something would be lost.
  void Close();
  void CloseWithoutExport();
  void Draw();
  void DrawTopBar(const Ui& ui, float width);
  void DrawPicture(const Ui& ui, ImVec2 size);
  void DrawNotice(const Ui& ui, ImVec2 from, ImVec2 size);

  std::unique_ptr<Window> window_;
  std::unique_ptr<Look> look_;
  std::unique_ptr<PictureTexture> texture_;
  std::unique_ptr<Studio> studio_;
  std::unique_ptr<SoundDevice> device_;
  Marks marks_;
  ParameterPanel parameters_;
  TransportPanel transport_;
  ExportDialog export_;
  KeyframeDialog keyframes_;
  uint64_t shown_ = 0;  // pictures of the stage
  int restless_ = 3;    // turns for which the window is drawn again, come what may
  bool closed_ = false;
};

}  // namespace krv::studio
