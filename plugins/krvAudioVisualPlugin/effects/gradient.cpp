#include "effects/gradient.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace krv {
namespace {

// A number at the start of the text, as std::stoi and std::stof read it: leading white space and a
// plus sign are passed over, what follows the number is not looked at. `function` names the errors.
template <class Number>
Number ParseNumber(std::string_view text, const char* function) {
  const size_t start = text.find_first_not_of(" \t\n\v\f\r");
  text.remove_prefix(std::min(start, text.size()));
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    throw std::out_of_range(std::string(function) + " argument out of range");
  }
  if (error != std::errc()) {
    throw std::invalid_argument(std::string("invalid ") + function + " argument");
  }
  return value;
}

uint8_t PositionByte(float percent) {
  const float scaled = percent * 255.0f / 100.0f;
  return std::isnan(scaled) ? 0 : static_cast<uint8_t>(std::clamp(scaled, 0.0f, 255.0f));
}

// Splits off the text up to the separator; `rest` keeps what follows it.
std::string_view TakeUntil(std::string_view& rest, char separator) {
  const size_t at = rest.find(separator);
  const std::string_view taken = rest.substr(0, at);
  rest = at == std::string_view::npos ? std::string_view() : rest.substr(at + 1);
  return taken;
}

}  // namespace

std::optional<cv::Mat> ParseGradient(std::string_view text) {
  if (text.find(',') == std::string_view::npos) return std::nullopt;
  std::string_view rest = text;
  const int count = ParseNumber<int>(TakeUntil(rest, ','), "stoi");
  if (count < 1 || count > kMaxGradientStops) return std::nullopt;

  cv::Mat image = cv::Mat::zeros(1, count, CV_8UC4);
  for (int column = 0; column < count && !rest.empty();) {
    std::string_view position_text = TakeUntil(rest, ';');
    if (position_text.find(',') == std::string_view::npos) continue;
    const int color = ParseNumber<int>(TakeUntil(position_text, ','), "stoi");
    const float position = ParseNumber<float>(position_text, "stof");
    image.at<cv::Vec4b>(0, column++) =
        cv::Vec4b(static_cast<uint8_t>(color & 255), static_cast<uint8_t>((color >> 8) & 255),
                  static_cast<uint8_t>((color >> 16) & 255), PositionByte(position));
  }
  return image;
}

}  // namespace krv
