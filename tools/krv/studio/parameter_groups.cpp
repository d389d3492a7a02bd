#include "studio/parameter_groups.h"

#include <algorithm>
#include <cctype>

namespace krv::studio {
namespace {

constexpr char kFigure[] = "Figure";
constexpr char kHidden[] = "Hidden in hosts";

struct Rule {
  std::string_view prefix;
  const char* title;
};
constexpr Rule kRules[] = {
    {"audio_", "Sound"},
    {"color", "Colour"},
    {"single_color", "Colour"},
    {"use_gradient", "Colour"},
    {"gradient", "Colour"},
    {"alpha", "Colour"},
    {"glow", "Light"},
    {"intensity", "Light"},
    {"position_", "Placement"},
    {"scale_", "Placement"},
    {"rotate_", "Placement"},
    {"flip_", "Placement"},
    {"inclination_", "Placement"},
    {"manual_rotate", "Placement"},
    {"offset_", "Placement"},
};

const char* TitleOf(const host::ParameterListing& parameter) {
  if (parameter.hidden) return kHidden;
  for (const Rule& rule : kRules) {
    if (parameter.name.starts_with(rule.prefix)) return rule.title;
  }
  return kFigure;
}

}  // namespace

std::vector<ParameterGroup> GroupParameters(const host::EffectListing& effect) {
  std::vector<ParameterGroup> groups;
  for (size_t i = 0; i < effect.parameters.size(); ++i) {
    const host::ParameterListing& parameter = effect.parameters[i];
    if (effect.Find(parameter.name) != &parameter) continue;
    const char* title = TitleOf(parameter);
    auto group = std::find_if(groups.begin(), groups.end(), [title](const ParameterGroup& other) {
      return other.title == title;
    });
    if (group == groups.end()) group = groups.insert(groups.end(), {title, {}});
    group->parameters.push_back(i);
  }
  std::stable_partition(groups.begin(), groups.end(),
                        [](const ParameterGroup& group) { return group.title != kHidden; });
  return groups;
}

std::string ReadableName(std::string_view name) {
  std::string readable(name);
  std::replace(readable.begin(), readable.end(), '_', ' ');
  if (!readable.empty()) {
    readable.front() =
        static_cast<char>(std::toupper(static_cast<unsigned char>(readable.front())));
  }
  return readable;
}

}  // namespace krv::studio
