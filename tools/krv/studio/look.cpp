#include "studio/look.h"

#include <algorithm>
#include <cmath>

#include "studio/font_files.h"
#include "utf8_path.h"

namespace krv::studio {
namespace {

constexpr ImU32 Rgb(unsigned rgb) {
  return IM_COL32((rgb >> 16) & 255, (rgb >> 8) & 255, rgb & 255, 255);
}

constexpr Palette kDark{
    .background = Rgb(0x0E1014),
    .panel = Rgb(0x171A20),
    .raised = Rgb(0x242933),
    .hovered = Rgb(0x2F3541),
    .line = Rgb(0x2A2F39),
    .text = Rgb(0xE9EBF0),
    .dim = Rgb(0x949CAB),
    .faint = Rgb(0x4A5260),
    .accent = Rgb(0x3ECFB2),
    .accent_soft = Rgb(0x1D3F3C),
    .on_accent = Rgb(0x06231D),
    .error = Rgb(0xFF7A6B),
    .error_soft = Rgb(0x34201F),
    .warning = Rgb(0xF0B95A),
};

constexpr Palette kLight{
    .background = Rgb(0xDFE2E7),
    .panel = Rgb(0xF7F8FA),
    .raised = Rgb(0xE7EAEF),
    .hovered = Rgb(0xDCE0E7),
    .line = Rgb(0xD5D9E0),
    .text = Rgb(0x1B1F27),
    .dim = Rgb(0x5D6674),
    .faint = Rgb(0xB4BBC6),
    .accent = Rgb(0x0A8A73),
    .accent_soft = Rgb(0xCDE9E2),
    .on_accent = Rgb(0xFFFFFF),
    .error = Rgb(0xB93426),
    .error_soft = Rgb(0xFBE6E2),
    .warning = Rgb(0x8F6206),
};

constexpr float kTextSize = 15;
constexpr float kSmallSize = 12.5f;
constexpr float kTitleSize = 18;

ImFont* LoadFont(const std::filesystem::path& file, float pixels) {
  static const ImWchar kRanges[] = {0x0020, 0x024F, 0x0370, 0x03FF, 0x0400, 0x04FF,
                                    0x2010, 0x2027, 0x2030, 0x205E, 0};
  ImFontConfig config;
  config.OversampleH = 1;  // texts lie on whole pixels
  config.PixelSnapH = true;
  return ImGui::GetIO().Fonts->AddFontFromFileTTF(host::Utf8(file).c_str(), pixels, &config,
                                                  kRanges);
}

Fonts LoadFonts(float scale) {
  const FontFiles files = FindFonts();
  if (files.regular.empty()) {
    ImFontConfig config;
    config.SizePixels = std::round(13 * scale);
    ImFont* plain = ImGui::GetIO().Fonts->AddFontDefault(&config);
    return {plain, plain, plain, plain};
  }
  return {LoadFont(files.regular, std::round(kTextSize * scale)),
          LoadFont(files.strong, std::round(kTextSize * scale)),
          LoadFont(files.regular, std::round(kSmallSize * scale)),
          LoadFont(files.strong, std::round(kTitleSize * scale))};
}

}  // namespace

Look::Look(Theme theme, float scale) : theme_(theme), scale_(scale), palette_(kDark) {
  fonts_ = LoadFonts(scale);
  SetTheme(theme);
}

void Look::SetTheme(Theme theme) {
  theme_ = theme;
  palette_ = theme == Theme::kDark ? kDark : kLight;
  ApplyStyle();
}

float Look::Px(float units) const { return std::max(1.0f, std::round(units * scale_)); }

void Look::ApplyStyle() {
  ImGuiStyle& style = ImGui::GetStyle();
  style = ImGuiStyle();
  style.WindowPadding = {0, 0};
  style.WindowBorderSize = 0;
  style.WindowRounding = 0;
  style.ChildBorderSize = 0;
  style.PopupBorderSize = 1;
  style.PopupRounding = Px(8);
  style.FramePadding = {Px(10), Px(5)};
  style.FrameRounding = Px(6);
  style.FrameBorderSize = 0;
  style.ItemSpacing = {Px(8), Px(6)};
  style.ItemInnerSpacing = {Px(6), Px(4)};
  style.ScrollbarSize = Px(10);
  style.ScrollbarRounding = Px(5);
  style.GrabRounding = Px(5);
  style.AntiAliasedLinesUseTex = false;  // it would have to be smoothed

  const auto set = [&style](ImGuiCol which, ImU32 colour) {
    style.Colors[which] = ImGui::ColorConvertU32ToFloat4(colour);
  };
  set(ImGuiCol_Text, palette_.text);
  set(ImGuiCol_TextDisabled, palette_.dim);
  set(ImGuiCol_WindowBg, palette_.background);
  set(ImGuiCol_ChildBg, 0);
  set(ImGuiCol_PopupBg, palette_.panel);
  set(ImGuiCol_Border, palette_.line);
  set(ImGuiCol_FrameBg, palette_.raised);
  set(ImGuiCol_FrameBgHovered, palette_.hovered);
  set(ImGuiCol_FrameBgActive, palette_.hovered);
  set(ImGuiCol_Button, palette_.raised);
  set(ImGuiCol_ButtonHovered, palette_.hovered);
  set(ImGuiCol_ButtonActive, palette_.line);
  set(ImGuiCol_Header, palette_.accent_soft);
  set(ImGuiCol_HeaderHovered, palette_.hovered);
  set(ImGuiCol_HeaderActive, palette_.hovered);
  set(ImGuiCol_ScrollbarBg, 0);
  set(ImGuiCol_ScrollbarGrab, palette_.raised);
  set(ImGuiCol_ScrollbarGrabHovered, palette_.hovered);
  set(ImGuiCol_ScrollbarGrabActive, palette_.hovered);
  set(ImGuiCol_CheckMark, palette_.accent);
  set(ImGuiCol_TextSelectedBg, WithAlpha(palette_.accent, 0.35f));
  set(ImGuiCol_NavHighlight, palette_.accent);
  set(ImGuiCol_ModalWindowDimBg, WithAlpha(palette_.background, 0.7f));
}

ImU32 WithAlpha(ImU32 colour, float alpha) {
  const auto byte = static_cast<ImU32>(std::lround(std::clamp(alpha, 0.0f, 1.0f) * 255));
  return (colour & ~IM_COL32_A_MASK) | (byte << IM_COL32_A_SHIFT);
}

ImU32 OpaqueColour(unsigned rgb) { return Rgb(rgb); }

}  // namespace krv::studio
