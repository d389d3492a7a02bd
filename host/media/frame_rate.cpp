#include "media/frame_rate.h"

#include <charconv>
#include <numeric>
#include <string>

namespace krv::host {
namespace {

std::optional<int64_t> ParseDigits(std::string_view text) {
  int64_t value = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (text.empty() || text.front() == '-' || error != std::errc() || rest != end) return {};
  return value;
}

std::optional<FrameRate> Reduced(int64_t numerator, int64_t denominator) {
  const int64_t divisor = std::gcd(numerator, denominator);
  if (divisor == 0) return {};
  const FrameRate rate{numerator / divisor, denominator / divisor};
  const bool small = rate.numerator <= FrameRate::kMaxPart && rate.denominator > 0 &&
                     rate.denominator <= FrameRate::kMaxPart;
  if (!small || rate.PerSecond() < 1 || rate.PerSecond() > 1000) return {};
  return rate;
}

std::optional<FrameRate> ParseDecimal(std::string_view whole, std::string_view decimals) {
  if (decimals.size() > 3) return {};
  std::string digits(whole);
  digits += decimals;
  digits.append(3 - decimals.size(), '0');
  const auto thousandths = ParseDigits(digits);
  if (!thousandths) return {};
  // n x 1000/1001 is written with its third decimal or without: 29.97, 23.976.
  for (const int64_t n : {24, 30, 48, 60, 120}) {
    const int64_t exact = n * 1'000'000 / 1001;
    if (*thousandths == exact || *thousandths == (exact + 5) / 10 * 10) {
      return FrameRate{n * 1000, 1001};
    }
  }
  return Reduced(*thousandths, 1000);
}

}  // namespace

std::optional<FrameRate> ParseFrameRate(std::string_view text) {
  if (const size_t slash = text.find('/'); slash != std::string_view::npos) {
    const auto numerator = ParseDigits(text.substr(0, slash));
    const auto denominator = ParseDigits(text.substr(slash + 1));
    if (!numerator || !denominator) return {};
    return Reduced(*numerator, *denominator);
  }
  if (const size_t point = text.find('.'); point != std::string_view::npos) {
    return ParseDecimal(text.substr(0, point), text.substr(point + 1));
  }
  const auto numerator = ParseDigits(text);
  if (!numerator) return {};
  return Reduced(*numerator, 1);
}

}  // namespace krv::host
