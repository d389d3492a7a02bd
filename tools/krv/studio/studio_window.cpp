#include "studio/studio_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "studio/meter_panel.h"
#include "studio/problem_panel.h"
#include "studio/widgets.h"
#include "utf8_path.h"

namespace krv::studio {
namespace {

constexpr float kTopBar = 56;
constexpr float kSideLeast = 350;
constexpr float kSideMost = 440;
constexpr float kSideShare = 0.29f;
constexpr int kWaitPlaying = 33;  // milliseconds; a new picture ends the wait
constexpr int kWaitIdle = 200;
constexpr int kSettling = 3;  // pictures that Dear ImGui takes to show the effect of an event

}  // namespace

std::unique_ptr<StudioWindow> StudioWindow::Create(Options options, std::unique_ptr<Clip> clip,
                                                   std::string* error) {
  std::unique_ptr<StudioWindow> self(new StudioWindow);
  self->window_ = Window::Create(options.window, error);
  if (self->window_ == nullptr) return nullptr;
  self->look_ = std::make_unique<Look>(options.theme, self->window_->scale());
  self->texture_ = std::make_unique<PictureTexture>(&self->window_->gl());
  options.studio.on_news = Window::Wake;
  self->studio_ = Studio::Create(std::move(options.studio), std::move(clip), error);
  if (self->studio_ == nullptr) return nullptr;
  self->device_ = SoundDevice::Open(&self->studio_->feeder(), self->studio_->clip().sound().format);
  if (options.play) self->studio_->Play();
  return self;
}

void StudioWindow::Run() {
  while (Turn()) {
  }
}

bool StudioWindow::Turn() {
  const bool awake = studio_->playing() || restless_ > 0;
  const bool any = window_->TakeEvents(awake ? kWaitPlaying : kWaitIdle,
                                       [this](const SDL_Event& event) { Handle(event); });
  restless_ = any ? kSettling : std::max(0, restless_ - 1);
  studio_->Update();
  if (studio_->frame_count() != shown_) {
    shown_ = studio_->frame_count();
    texture_->Upload(studio_->frame().picture);
  }
  Draw();
  return !closed_;
}

void StudioWindow::Handle(const SDL_Event& event) {
  if (event.type == SDL_QUIT) Close();
  if (event.type != SDL_KEYDOWN) return;
  const auto command = CommandFor(event.key, ImGui::GetIO().WantTextInput);
  if (command) Do(*command);
}

void StudioWindow::Do(Command command) {
  const double rate = studio_->clip().video().rate.PerSecond();
  const auto second = static_cast<int64_t>(std::lround(rate));
  switch (command) {
    case Command::kTogglePlay:
      return studio_->TogglePlay();
    case Command::kFrameBack:
      return studio_->Step(-1);
    case Command::kFrameOn:
      return studio_->Step(1);
    case Command::kSecondBack:
      return studio_->Step(-second);
    case Command::kSecondOn:
      return studio_->Step(second);
    case Command::kKeyBack:
      return studio_->SeekKey(false);
    case Command::kKeyOn:
      return studio_->SeekKey(true);
    case Command::kToBegin:
      return studio_->Seek(0);
    case Command::kToEnd:
      return studio_->Step(studio_->clip().frame_count());
    case Command::kToggleLoop:
      return studio_->ToggleLoop();
    case Command::kToggleMute:
      return studio_->ToggleMute();
    case Command::kToggleTheme:
      return look_->SetTheme(look_->theme() == Theme::kDark ? Theme::kLight : Theme::kDark);
    case Command::kSaveDefaults:
      return studio_->SaveDefaults();
    case Command::kSaveKeyframes:
      return SaveKeyframes();
    case Command::kExport:
      return export_.Open(*studio_);
    case Command::kDismiss:
      if (keyframes_.open()) return keyframes_.Dismiss();
      if (export_.open()) export_.Dismiss(studio_.get());
      return;
    case Command::kQuit:
      return Close();
  }
}

void StudioWindow::SaveKeyframes() {
  if (!studio_->KeyframesUnsaved()) return;
  keyframes_.Open(*studio_, false);
  if (!studio_->keyframe_file().empty()) keyframes_.Save(studio_.get());
}

void StudioWindow::Close() {
  if (studio_->export_state().Running()) {
    export_.AskToClose();
  } else {
    CloseWithoutExport();
  }
}

void StudioWindow::CloseWithoutExport() {
  if (studio_->KeyframesUnsaved()) {
    keyframes_.Open(*studio_, true);
  } else {
    closed_ = true;
  }
}

void StudioWindow::DrawTopBar(const Ui& ui, float width) {
  const Palette& colours = ui.look.colours();
  ImDrawList* list = ImGui::GetWindowDrawList();
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const float height = ui.look.Px(kTopBar);
  list->AddLine({start.x, start.y + height}, {start.x + width, start.y + height}, colours.line, 1);

  const PackageState& package = studio_->package();
  const std::string name = package.effect ? package.effect->display_name
                                          : host::Utf8(studio_->package_folder().filename());
  float x = start.x + ui.look.Px(18);
  PutText(list, ui.look.fonts().title, {x, start.y + ui.look.Px(17)}, colours.text, name);
  x += SizeOf(ui.look.fonts().title, name).x + ui.look.Px(14);
  const host::PictureSize size = studio_->picture_size();
  const std::string detail = package.unique_name +
                             (package.unique_name.empty() ? "" : "  \xC2\xB7  ") +
                             studio_->clip().name() + "  \xC2\xB7  " + std::to_string(size.width) +
                             " \xC3\x97 " + std::to_string(size.height);

  float right = start.x + width - ui.look.Px(14);
  const auto button_width = [&ui](const char* text) {
    return SizeOf(ui.look.fonts().strong, text).x + 2 * ui.look.Px(14);
  };
  const float y = start.y + ui.look.Px(11);
  right -= button_width("Export\xE2\x80\xA6");
  ImGui::SetCursorScreenPos({right, y});
  if (TextButton(ui, "export", "Export\xE2\x80\xA6", ButtonKind::kPrimary)) Do(Command::kExport);
  Tip(ui, "Render the clip into a file (Ctrl+E)");
  right -= button_width("Save as defaults") + ui.look.Px(8);
  ImGui::SetCursorScreenPos({right, y});
  if (TextButton(ui, "save", "Save as defaults", ButtonKind::kPlain,
                 !studio_->sheet().changed().empty())) {
    Do(Command::kSaveDefaults);
  }
  Tip(ui, "Write the values into description.json (Ctrl+S)");
  const bool has_file = !studio_->keyframe_file().empty();
  if (has_file || !studio_->keys().empty()) {
    const char* text = has_file ? "Save keyframes" : "Save keyframes\xE2\x80\xA6";
    right -= button_width(text) + ui.look.Px(8);
    ImGui::SetCursorScreenPos({right, y});
    if (TextButton(ui, "save_keyframes", text, ButtonKind::kPlain, studio_->KeyframesUnsaved())) {
      Do(Command::kSaveKeyframes);
    }
    Tip(ui, "Write all values into a file for krv render --params (Ctrl+Shift+S)");
  }
  right -= ui.look.Px(32) + ui.look.Px(8);
  ImGui::SetCursorScreenPos({right, y + ui.look.Px(1)});
  const bool dark = ui.look.theme() == Theme::kDark;
  if (IconButton(ui, "theme", dark ? Icon::kSun : Icon::kMoon,
                 dark ? "Light theme (T)" : "Dark theme (T)")) {
    Do(Command::kToggleTheme);
  }
  PutText(list, ui.look.fonts().small, {x, start.y + ui.look.Px(22)}, colours.dim,
          Elide(ui.look.fonts().small, detail, right - x - ui.look.Px(10)));
}

void StudioWindow::DrawNotice(const Ui& ui, ImVec2 from, ImVec2 size) {
  const std::string text(studio_->notice());
  if (text.empty()) return;
  const Palette& colours = ui.look.colours();
  ImDrawList* list = ImGui::GetWindowDrawList();
  const float pad = ui.look.Px(14);
  const std::string shown = Elide(ui.look.fonts().text, text, size.x - 4 * pad);
  const ImVec2 extent = SizeOf(ui.look.fonts().text, shown);
  const ImVec2 at{from.x + (size.x - extent.x) / 2, from.y + size.y - extent.y - ui.look.Px(34)};
  list->AddRectFilled({at.x - pad, at.y - ui.look.Px(9)},
                      {at.x + extent.x + pad, at.y + extent.y + ui.look.Px(9)}, colours.panel,
                      ui.look.Px(8));
  list->AddRect({at.x - pad, at.y - ui.look.Px(9)},
                {at.x + extent.x + pad, at.y + extent.y + ui.look.Px(9)},
                studio_->notice_is_error() ? colours.error : colours.line, ui.look.Px(8));
  PutText(list, ui.look.fonts().text, at, studio_->notice_is_error() ? colours.error : colours.text,
          shown);
}

void StudioWindow::DrawPicture(const Ui& ui, ImVec2 size) {
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const float pad = ui.look.Px(18);
  const ImVec2 room{std::max(1.0f, size.x - 2 * pad), std::max(1.0f, size.y - 2 * pad)};
  studio_->SetViewport(static_cast<int>(room.x), static_cast<int>(room.y));
  const host::VideoFormat& video = studio_->clip().video();
  const float aspect = static_cast<float>(video.width) *
                       static_cast<float>(video.aspect_numerator) /
                       (static_cast<float>(video.height) *
                        static_cast<float>(std::max(1, video.aspect_denominator)));
  ImVec2 extent{room.x, std::round(room.x / aspect)};
  if (extent.y > room.y) extent = {std::round(room.y * aspect), room.y};
  const ImVec2 from{std::round(start.x + (size.x - extent.x) / 2),
                    std::round(start.y + (size.y - extent.y) / 2)};
  const ImVec2 to{from.x + extent.x, from.y + extent.y};
  ImGui::SetCursorScreenPos(from);
  if (ImGui::InvisibleButton("picture", extent)) studio_->TogglePlay();
  marks_.SetItem("picture");
  ImDrawList* list = ImGui::GetWindowDrawList();
  if (shown_ > 0) {
    list->AddImageRounded(texture_->id(), from, to, {0, 0}, {1, 1}, IM_COL32_WHITE, ui.look.Px(4));
  } else {
    list->AddRectFilled(from, to, ui.look.colours().panel, ui.look.Px(4));
    const std::string text = "Loading the package\xE2\x80\xA6";
    const ImVec2 words = SizeOf(ui.look.fonts().text, text);
    PutText(list, ui.look.fonts().text, {(from.x + to.x - words.x) / 2, (from.y + to.y) / 2},
            ui.look.colours().dim, text);
  }
  DrawNotice(ui, start, size);
}

void StudioWindow::Draw() {
  window_->BeginFrame();
  marks_.Clear();
  const Ui ui{*look_, marks_, *studio_};
  const Palette& colours = look_->colours();
  const ImVec2 screen = ImGui::GetIO().DisplaySize;
  ImGui::SetNextWindowPos({0, 0});
  ImGui::SetNextWindowSize(screen);
  ImGui::PushFont(look_->fonts().text);
  ImGui::Begin("studio", nullptr,
               ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                   ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoNav |
                   ImGuiWindowFlags_NoBringToFrontOnFocus | ImGuiWindowFlags_NoBackground);
  ImGui::BeginDisabled(export_.open() || keyframes_.open());
  DrawTopBar(ui, screen.x);

  const float top = look_->Px(kTopBar) + 1;
  const float side = std::clamp(screen.x * kSideShare, look_->Px(kSideLeast), look_->Px(kSideMost));
  const float left = std::max(1.0f, screen.x - side);
  const float problems = ProblemHeight(ui);
  const float transport = look_->Px(TransportPanel::kHeight);
  const float picture = std::max(1.0f, screen.y - top - transport - problems);
  const auto place = [&](const char* id, ImVec2 from, ImVec2 size, auto&& draw) {
    ImGui::SetCursorScreenPos(from);
    ImGui::BeginChild(
        id, size, false,
        ImGuiWindowFlags_NoScrollbar | ImGuiWindowFlags_NoScrollWithMouse | ImGuiWindowFlags_NoNav);
    draw();
    ImGui::EndChild();
  };
  place("picture", {0, top}, {left, picture}, [&] { DrawPicture(ui, {left, picture}); });
  if (problems > 0) {
    place("problems", {0, top + picture}, {left, problems}, [&] { DrawProblems(ui); });
  }
  ImDrawList* list = ImGui::GetWindowDrawList();
  list->AddLine({0, screen.y - transport}, {left, screen.y - transport}, colours.line, 1);
  place("transport", {0, screen.y - transport}, {left, transport}, [&] { transport_.Draw(ui); });

  const float meters = look_->Px(kMeterHeight);
  list->AddLine({left, top}, {left, screen.y}, colours.line, 1);
  place("side", {left + 1, top}, {side - 1, screen.y - top - meters},
        [&] { parameters_.Draw(ui); });
  list->AddLine({left, screen.y - meters}, {screen.x, screen.y - meters}, colours.line, 1);
  place("meters", {left + 1, screen.y - meters}, {side - 1, meters}, [&] { DrawMeters(ui); });
  ImGui::EndDisabled();
  ImGui::End();
  // One at a time; an export waits behind the question about the keyframes.
  if (keyframes_.open()) {
    keyframes_.Draw(ui);
  } else {
    export_.Draw(ui);
  }
  if (export_.TakesLeave()) CloseWithoutExport();
  closed_ = closed_ || keyframes_.TakesLeave();
  ImGui::PopFont();
  window_->EndFrame(colours.panel,
                    {{{0, top}, {left, top + picture + problems}, colours.background}});
}

}  // namespace krv::studio
