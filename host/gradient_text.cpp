#include "gradient_text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

#include "text_pieces.h"

namespace krv::host {
namespace {

constexpr std::string_view kGradientName = "gradient_color";
constexpr int kMostStopsDrawn = 16384;

// The number that the text begins with, behind spaces and a plus sign.
template <class Number>
std::optional<Number> LeadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  Number number{};
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return std::nullopt;
  return number;
}

}  // namespace

bool MakesGradient(std::string_view text) {
  if (text.find(',') == std::string_view::npos) return false;
  const auto count = LeadingNumber<int>(TakeUntil(',', &text));
  if (!count || *count < 1 || *count > kMostStopsDrawn) return false;
  for (int stops = 0; stops < *count && !text.empty();) {
    std::string_view stop = TakeUntil(';', &text);
    if (stop.find(',') == std::string_view::npos) continue;
    if (!LeadingNumber<int>(TakeUntil(',', &stop)) || !LeadingNumber<float>(stop)) return false;
    ++stops;
  }
  return true;
}

bool IsOfUse(const ParameterListing& parameter, std::string_view text) {
  if (parameter.kind != kKindText || parameter.name != kGradientName) return true;
  return text.empty() || text == parameter.default_text || MakesGradient(text);
}

}  // namespace krv::host
