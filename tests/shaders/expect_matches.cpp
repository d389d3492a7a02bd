#include "shaders/expect_matches.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <sstream>

namespace krv::test {
namespace {

constexpr double kDoubtfulShare = 1e-3;

// What the reference admits at one pixel, channel by channel.
struct Range {
  Pixel low, high;

  void Include(const Pixel& pixel) {
    for (size_t i = 0; i < pixel.size(); ++i) {
      low[i] = std::min(low[i], pixel[i]);
      high[i] = std::max(high[i], pixel[i]);
    }
  }

  // How far the pixel lies outside; infinite for what is not a number.
  double Excess(const Pixel& pixel) const {
    double worst = 0;
    for (size_t i = 0; i < pixel.size(); ++i) {
      if (std::isnan(pixel[i])) return INFINITY;
      worst = std::max({worst, low[i] - pixel[i], pixel[i] - high[i]});
    }
    return worst;
  }
};

std::string Text(const Pixel& pixel) {
  std::ostringstream text;
  text << '(' << pixel[0] << ", " << pixel[1] << ", " << pixel[2] << ", " << pixel[3] << ')';
  return text.str();
}

std::string TestName() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string(info->test_suite_name()) + "." + info->name();
  std::replace(name.begin(), name.end(), '/', '_');
  return name;
}

}  // namespace

double LargestDifference(const Picture& a, const Picture& b) {
  double largest = 0;
  for (size_t i = 0; i < a.pixels.size(); ++i) {
    for (size_t channel = 0; channel < 4; ++channel) {
      const double difference = std::abs(a.pixels[i][channel] - b.pixels[i][channel]);
      largest = difference <= largest ? largest : difference;
    }
  }
  return largest;
}

int PixelsApart(const Picture& a, const Picture& b) {
  constexpr double kStep = 1.01 / 255;
  int apart = 0;
  for (size_t i = 0; i < a.pixels.size(); ++i) {
    const auto differs = [](double one, double other) { return !(std::abs(one - other) <= kStep); };
    const auto& one = a.pixels[i];
    apart += std::equal(one.begin(), one.end(), b.pixels[i].begin(), std::not_fn(differs)) ? 0 : 1;
  }
  return apart;
}

void ExpectMatches(const Picture& drawn, const Expectation& expected, const Tolerance& tolerance) {
  Picture exact{drawn.width, drawn.height, {}};
  double worst = 0;
  int worst_x = 0;
  int worst_y = 0;
  int doubtful = 0;
  for (int y = 0; y < drawn.height; ++y) {
    for (int x = 0; x < drawn.width; ++x) {
      const double cx = x + 0.5;
      const double cy = y + 0.5;
      const Pixel pixel = expected.exact(cx, cy);
      exact.pixels.push_back(pixel);
      Range range{pixel, pixel};
      if (range.Excess(drawn.At(x, y)) > tolerance.difference) {
        ++doubtful;
        for (const double sign : {-1.0, 1.0}) {
          range.Include(expected.exact(cx + sign * tolerance.place, cy));
          range.Include(expected.exact(cx, cy + sign * tolerance.place));
        }
        range.Include(expected.quieter(cx, cy));
        range.Include(expected.louder(cx, cy));
      }
      const double excess = range.Excess(drawn.At(x, y));
      if (excess > worst) {
        worst = excess;
        worst_x = x;
        worst_y = y;
      }
    }
  }
  EXPECT_LE(doubtful, kDoubtfulShare * static_cast<double>(drawn.pixels.size()));
  if (worst <= tolerance.difference) return;
  ADD_FAILURE() << "worst pixel (" << worst_x << ", " << worst_y << ") is off by " << worst
                << " (allowed " << tolerance.difference
                << ")\n  reference: " << Text(exact.At(worst_x, worst_y))
                << "\n  result:    " << Text(drawn.At(worst_x, worst_y))
                << "\n  pictures:  " << WritePpm(exact, TestName() + ".reference") << ' '
                << WritePpm(drawn, TestName() + ".result");
}

}  // namespace krv::test
