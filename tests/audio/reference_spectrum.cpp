#include "audio/reference_spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace krv::test {
namespace {

// The channels' mean times the Hann window.
std::vector<double> WindowedMono(const std::vector<int16_t>& samples, size_t channels) {
  std::vector<double> mono(samples.size() / channels);
  const auto size = static_cast<double>(mono.size());
  for (size_t i = 0; i < mono.size(); ++i) {
    double sum = 0.0;
    for (size_t channel = 0; channel < channels; ++channel) sum += samples[i * channels + channel];
    const double phase = 2.0 * std::numbers::pi * static_cast<double>(i) / size;
    mono[i] = sum / static_cast<double>(channels) / 32768.0 * (0.5 - 0.5 * std::cos(phase));
  }
  return mono;
}

double MagnitudeOfBin(const std::vector<double>& signal, size_t bin) {
  std::complex<double> sum = 0.0;
  for (size_t i = 0; i < signal.size(); ++i) {
    const size_t turn = (i * bin) % signal.size();
    const double phase =
        -2.0 * std::numbers::pi * static_cast<double>(turn) / static_cast<double>(signal.size());
    sum += signal[i] * std::polar(1.0, phase);
  }
  return std::abs(sum);
}

// The position that a picture mirrored at both end pixels shows at x.
size_t Mirror(int64_t x, size_t width) {
  if (width == 1) return 0;
  const int64_t last = static_cast<int64_t>(width) - 1;
  const int64_t period = 2 * last;
  x = ((x % period) + period) % period;
  return static_cast<size_t>(x <= last ? x : period - x);
}

std::vector<uint8_t> Blur20(const std::vector<double>& bytes) {
  std::vector<uint8_t> blurred(bytes.size());
  for (size_t x = 0; x < bytes.size(); ++x) {
    double sum = 0.0;
    for (int64_t offset = -10; offset <= 9; ++offset) {
      sum += bytes[Mirror(static_cast<int64_t>(x) + offset, bytes.size())];
    }
    blurred[x] = static_cast<uint8_t>(std::lround(sum / 20.0));
  }
  return blurred;
}

double LevelOf(const std::vector<double>& db) {
  double sum = 0.0;
  int counted = 0;
  for (const double value : db) {
    if (value <= -150.0) continue;
    sum += value;
    ++counted;
  }
  return counted == 0 ? 0.0 : (sum / counted + 150.0) / 180.0 * 100.0 + 50.0;
}

}  // namespace

ReferenceSpectrum AnalyseByDefinition(const std::vector<int16_t>& samples, int channels) {
  const std::vector<double> signal = WindowedMono(samples, static_cast<size_t>(channels));
  const size_t width = (signal.size() / 2 + 1) / 2;
  ReferenceSpectrum reference;
  std::vector<double> bytes;
  for (size_t k = 0; k < width; ++k) {
    const double amplitude = MagnitudeOfBin(signal, 2 * k) / static_cast<double>(signal.size());
    const double db = std::max(20.0 * std::log10(amplitude), -150.0);
    reference.db.push_back(db);
    bytes.push_back(std::min(std::floor((db + 150.0) / 150.0 * 255.0), 255.0));
  }
  reference.pixels = Blur20(bytes);
  reference.level = LevelOf(reference.db);
  return reference;
}

}  // namespace krv::test
