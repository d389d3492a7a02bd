// Colours, fonts and measures of the studio's window.
#pragma once

#include <imgui.h>

namespace krv::studio {

enum class Theme { kDark, kLight };

struct Palette {
  ImU32 background;  // around the picture
  ImU32 panel;
  ImU32 raised;   // controls
  ImU32 hovered;  // controls under the mouse
  ImU32 line;     // between panels, and around controls
  ImU32 text;
  ImU32 dim;    // text that explains
  ImU32 faint;  // marks that are hardly there
  ImU32 accent;
  ImU32 accent_soft;  // large areas
  ImU32 on_accent;    // text
  ImU32 error;
  ImU32 error_soft;
  ImU32 warning;
};

struct Fonts {
  ImFont* text = nullptr;
  ImFont* strong = nullptr;
  ImFont* small = nullptr;
  ImFont* title = nullptr;
};

class Look {
 public:
  // `scale`: pixels of the window to a unit of measure. Loads the fonts into the current context
  // of Dear ImGui.
  Look(Theme theme, float scale);

  Theme theme() const { return theme_; }
  void SetTheme(Theme theme);

  const Palette& colours() const { return palette_; }
  const Fonts& fonts() const { return fonts_; }

  // A measure in pixels, whole ones.
  float Px(float units) const;

 private:
  void ApplyStyle();

  Theme theme_;
  float scale_;
  Palette palette_;
  Fonts fonts_;
};

// A colour with another alpha, 0 to 1.
ImU32 WithAlpha(ImU32 colour, float alpha);

// 0xRRGGBB as a colour to draw with.
ImU32 OpaqueColour(unsigned rgb);

}  // namespace krv::studio
