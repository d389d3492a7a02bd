#include "studio/icons.h"

#include <cmath>
#include <numbers>

namespace krv::studio {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

// A pen for one symbol: places in shares of half its size from the centre.
class Pen {
 public:
  Pen(ImDrawList* list, ImVec2 centre, float size, ImU32 colour)
      : list_(list), centre_(centre), half_(size / 2), colour_(colour), width_(size / 10) {}

  ImVec2 At(float x, float y) const { return {centre_.x + x * half_, centre_.y + y * half_}; }

  void Line(ImVec2 from, ImVec2 to) const {
    list_->AddLine(At(from.x, from.y), At(to.x, to.y), colour_, width_);
  }
  void Triangle(ImVec2 a, ImVec2 b, ImVec2 c) const {
    list_->AddTriangleFilled(At(a.x, a.y), At(b.x, b.y), At(c.x, c.y), colour_);
  }
  void Box(ImVec2 from, ImVec2 to, float rounding = 0) const {
    list_->AddRectFilled(At(from.x, from.y), At(to.x, to.y), colour_, rounding * half_);
  }
  void Disc(ImVec2 centre, float radius) const {
    list_->AddCircleFilled(At(centre.x, centre.y), radius * half_, colour_, 24);
  }
  // Angles in turns, clockwise from the right.
  void Arc(ImVec2 centre, float radius, float from, float to) const {
    list_->PathArcTo(At(centre.x, centre.y), radius * half_, from * 2 * kPi, to * 2 * kPi, 24);
    list_->PathStroke(colour_, 0, width_);
  }

 private:
  ImDrawList* list_;
  ImVec2 centre_;
  float half_;
  ImU32 colour_;
  float width_;
};

void DrawSpeaker(const Pen& pen) {
  pen.Box({-0.85f, -0.28f}, {-0.5f, 0.28f});
  pen.Triangle({-0.62f, 0}, {-0.05f, -0.7f}, {-0.05f, 0.7f});
}

void DrawLoop(const Pen& pen) {
  pen.Arc({0, 0}, 0.68f, 0.06f, 0.44f);
  pen.Arc({0, 0}, 0.68f, 0.56f, 0.94f);
  pen.Triangle({0.95f, 0.02f}, {0.38f, 0.02f}, {0.7f, -0.42f});
  pen.Triangle({-0.95f, -0.02f}, {-0.38f, -0.02f}, {-0.7f, 0.42f});
}

void DrawSun(const Pen& pen) {
  pen.Disc({0, 0}, 0.38f);
  for (int ray = 0; ray < 8; ++ray) {
    const float angle = static_cast<float>(ray) * kPi / 4;
    const float x = std::cos(angle);
    const float y = std::sin(angle);
    pen.Line({0.62f * x, 0.62f * y}, {0.9f * x, 0.9f * y});
  }
}

// A diamond behind the tip of an arrow; to the right with a direction of 1, to the left with -1.
void DrawKeyArrow(const Pen& pen, float direction) {
  const float x = -0.35f * direction;
  pen.Triangle({x - 0.5f, 0}, {x, -0.5f}, {x + 0.5f, 0});
  pen.Triangle({x - 0.5f, 0}, {x + 0.5f, 0}, {x, 0.5f});
  pen.Line({0.4f * direction, -0.5f}, {0.85f * direction, 0});
  pen.Line({0.85f * direction, 0}, {0.4f * direction, 0.5f});
}

}  // namespace

void DrawIcon(ImDrawList* list, Icon icon, ImVec2 centre, float size, ImU32 colour) {
  const Pen pen(list, centre, size, colour);
  switch (icon) {
    case Icon::kPlay:
      pen.Triangle({-0.5f, -0.75f}, {0.8f, 0}, {-0.5f, 0.75f});
      break;
    case Icon::kPause:
      pen.Box({-0.6f, -0.7f}, {-0.18f, 0.7f}, 0.1f);
      pen.Box({0.18f, -0.7f}, {0.6f, 0.7f}, 0.1f);
      break;
    case Icon::kLoop:
      DrawLoop(pen);
      break;
    case Icon::kSound:
      DrawSpeaker(pen);
      pen.Arc({-0.05f, 0}, 0.5f, -0.13f, 0.13f);
      pen.Arc({-0.05f, 0}, 0.85f, -0.14f, 0.14f);
      break;
    case Icon::kMuted:
      DrawSpeaker(pen);
      pen.Line({0.28f, -0.3f}, {0.88f, 0.3f});
      pen.Line({0.28f, 0.3f}, {0.88f, -0.3f});
      break;
    case Icon::kSun:
      DrawSun(pen);
      break;
    case Icon::kMoon:
      pen.Arc({0, 0}, 0.72f, 0.02f, 0.73f);
      pen.Arc({0.38f, -0.38f}, 0.58f, 0.16f, 0.59f);
      break;
    case Icon::kReset:
      pen.Arc({0, 0}, 0.62f, -0.1f, 0.62f);
      pen.Triangle({-0.95f, -0.1f}, {-0.3f, -0.2f}, {-0.72f, -0.68f});
      break;
    case Icon::kWarning:
      pen.Triangle({0, -0.8f}, {0.9f, 0.75f}, {-0.9f, 0.75f});
      break;
    case Icon::kKeyBack:
      DrawKeyArrow(pen, -1);
      break;
    case Icon::kKeyOn:
      DrawKeyArrow(pen, 1);
      break;
    case Icon::kClose:
      pen.Line({-0.6f, -0.6f}, {0.6f, 0.6f});
      pen.Line({-0.6f, 0.6f}, {0.6f, -0.6f});
      break;
  }
}

}  // namespace krv::studio
