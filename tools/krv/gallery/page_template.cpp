#include "gallery/page_template.h"

#include <stdexcept>

namespace krv::tool {
namespace {

constexpr std::string_view kOpen = "{{";
constexpr std::string_view kClose = "}}";

}  // namespace

std::string FillTemplate(std::string_view text, const TemplateValues& values) {
  std::string filled;
  for (size_t open = 0; (open = text.find(kOpen)) != std::string_view::npos;) {
    const size_t close = text.find(kClose, open);
    if (close == std::string_view::npos) throw std::invalid_argument("placeholder without an end");
    const std::string_view name = text.substr(open + kOpen.size(), close - open - kOpen.size());
    const auto value = values.find(name);
    if (value == values.end()) {
      throw std::invalid_argument("no value for the placeholder " + std::string(name));
    }
    filled.append(text.substr(0, open)).append(value->second);
    text.remove_prefix(close + kClose.size());
  }
  return filled.append(text);
}

}  // namespace krv::tool
