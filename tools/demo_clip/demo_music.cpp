#include "demo_music.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace krv::demo {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kBar = 4 * kBeat;
constexpr int kBars = 6;

// Notes as semitones above A at 55 Hz.
struct Chord {
  int bass;
  std::array<int, 4> notes;
};
constexpr std::array<Chord, kBars> kChords = {{{0, {12, 19, 24, 27}},    // A minor
                                               {-4, {12, 15, 20, 27}},   // F major
                                               {3, {15, 19, 22, 27}},    // C major
                                               {-2, {14, 17, 22, 26}},   // G major
                                               {-4, {12, 15, 20, 27}},   // F major
                                               {0, {12, 19, 24, 28}}}};  // A major

double Frequency(int semitones) { return 55 * std::exp2(semitones / 12.0); }

// Two channels of samples that voices are added to.
class Track {
 public:
  explicit Track(int sample_rate)
      : rate_(sample_rate),
        left_(static_cast<size_t>(kMusicLength * sample_rate)),
        right_(left_.size()) {}

  // Adds voice(t), t in seconds from `start`, for `length` seconds. pan: 0 left to 1 right.
  template <class Voice>
  void Add(double start, double length, double pan, Voice&& voice) {
    const auto first = static_cast<size_t>(start * rate_);
    const auto count = static_cast<size_t>(length * rate_);
    const double left = std::cos(pan * std::numbers::pi / 2);
    const double right = std::sin(pan * std::numbers::pi / 2);
    for (size_t i = 0; i < count && first + i < left_.size(); ++i) {
      const double value = voice(static_cast<double>(i) / rate_);
      left_[first + i] += left * value;
      right_[first + i] += right * value;
    }
  }

  // Multiplies both channels by gain(t).
  template <class Gain>
  void Shape(Gain&& gain) {
    for (size_t i = 0; i < left_.size(); ++i) {
      const double factor = gain(static_cast<double>(i) / rate_);
      left_[i] *= factor;
      right_[i] *= factor;
    }
  }

  // Echoes that change sides.
  void Echo(double delay, double feedback) {
    const auto offset = static_cast<size_t>(delay * rate_);
    for (size_t i = offset; i < left_.size(); ++i) {
      left_[i] += feedback * right_[i - offset];
      right_[i] += feedback * left_[i - offset];
    }
  }

  void Mix(const Track& other) {
    for (size_t i = 0; i < left_.size(); ++i) {
      left_[i] += other.left_[i];
      right_[i] += other.right_[i];
    }
  }

  // Softly limited.
  std::vector<int16_t> Samples() const {
    std::vector<int16_t> samples;
    samples.reserve(left_.size() * 2);
    for (size_t i = 0; i < left_.size(); ++i) {
      samples.push_back(static_cast<int16_t>(std::lround(30000 * std::tanh(left_[i]))));
      samples.push_back(static_cast<int16_t>(std::lround(30000 * std::tanh(right_[i]))));
    }
    return samples;
  }

 private:
  double rate_;
  std::vector<double> left_;
  std::vector<double> right_;
};

// White noise, the same each time.
class Noise {
 public:
  double Next() {
    state_ = state_ * 1664525u + 1013904223u;
    return static_cast<double>(state_) / 2147483648.0 - 1;
  }

 private:
  uint32_t state_ = 1;
};

void AddPad(Track* track, int bar) {
  for (size_t voice = 0; voice < 4; ++voice) {
    for (const double detune : {0.997, 1.003}) {
      const double frequency = Frequency(kChords[static_cast<size_t>(bar)].notes[voice]) * detune;
      track->Add(bar * kBar, kBar + 0.6, detune < 1 ? 0.25 : 0.75, [=](double t) {
        const double envelope = std::min({1.0, t / 0.35, (kBar + 0.6 - t) / 0.6});
        const double phase = kTurn * frequency * t;
        return 0.06 * envelope *
               (std::sin(phase) + 0.45 * std::sin(2 * phase) + 0.2 * std::sin(3 * phase) +
                0.1 * std::sin(5 * phase));
      });
    }
  }
}

void AddArpeggio(Track* track, int bar) {
  constexpr std::array<size_t, 8> kPattern = {0, 2, 1, 3, 2, 1, 3, 2};
  for (size_t step = 0; step < 16; ++step) {
    const int note = kChords[static_cast<size_t>(bar)].notes[kPattern[step % 8]];
    const double frequency = Frequency(note + (step % 8 > 5 ? 24 : 12));
    const double accent = step % 4 == 0 ? 1.0 : 0.65;
    const double start = bar * kBar + static_cast<double>(step) * kBeat / 4;
    track->Add(start, 0.4, step % 2 == 0 ? 0.3 : 0.7, [=](double t) {
      const double phase = kTurn * frequency * t;
      const double attack = std::min(1.0, t / 0.003);
      // Overtones die away first, as on a plucked string.
      return 0.21 * accent * attack *
             (std::exp(-9 * t) * std::sin(phase) + 0.5 * std::exp(-16 * t) * std::sin(2 * phase) +
              0.35 * std::exp(-26 * t) * std::sin(4 * phase));
    });
  }
}

void AddBass(Track* track, int bar) {
  const double frequency = Frequency(kChords[static_cast<size_t>(bar)].bass);
  for (const double beat : {0.0, 0.75, 1.5, 2.0, 2.75, 3.5}) {
    track->Add(bar * kBar + beat * kBeat, 0.35, 0.5, [=](double t) {
      const double envelope = std::min({1.0, t / 0.006, (0.35 - t) / 0.05}) * std::exp(-3 * t);
      const double phase = kTurn * frequency * t;
      return 0.42 * envelope *
             (std::sin(phase) + 0.4 * std::sin(2 * phase) + 0.15 * std::sin(3 * phase));
    });
  }
}

void AddKick(Track* track, double start) {
  track->Add(start, 0.4, 0.5, [](double t) {
    // The pitch falls from 165 Hz to 45 Hz: its phase is the integral.
    const double phase = kTurn * (45 * t + 120 * (1 - std::exp(-32 * t)) / 32);
    return 0.95 * std::exp(-8 * t) * std::sin(phase) + 0.25 * std::exp(-300 * t);
  });
}

void AddNoise(Track* track, double start, double decay, double level, double pan) {
  Noise noise;
  double previous = 0;
  track->Add(start, 0.25, pan, [&](double t) {
    const double value = noise.Next();
    const double bright = value - previous;  // takes the low end away
    previous = value;
    return level * std::exp(-decay * t) * bright;
  });
}

void AddDrums(Track* track, int bar) {
  for (int beat = 0; beat < 4; ++beat) {
    const double start = bar * kBar + beat * kBeat;
    AddKick(track, start);
    AddNoise(track, start + kBeat / 2, 40, 0.11, 0.6);
    if (bar < 2) continue;
    AddNoise(track, start + kBeat / 4, 70, 0.05, 0.4);
    AddNoise(track, start + kBeat * 3 / 4, 70, 0.05, 0.4);
    if (beat % 2 == 1) AddNoise(track, start, 17, 0.24, 0.5);
  }
}

}  // namespace

std::vector<int16_t> MakeMusic(int sample_rate) {
  Track chords(sample_rate);
  Track arpeggio(sample_rate);
  Track rhythm(sample_rate);
  for (int bar = 0; bar < kBars; ++bar) {
    AddPad(&chords, bar);
    if (bar + 1 == kBars) break;
    AddArpeggio(&arpeggio, bar);
    if (bar >= 1) AddDrums(&rhythm, bar);
    if (bar >= 2) AddBass(&rhythm, bar);
  }
  AddKick(&rhythm, (kBars - 1) * kBar);
  arpeggio.Echo(kBeat * 0.75, 0.38);
  chords.Mix(arpeggio);
  // Everything gives way to the kick for a moment.
  chords.Shape([](double t) {
    const bool drums = t >= kBar && t < (kBars - 1) * kBar;
    return drums ? 1 - 0.55 * std::exp(-9 * std::fmod(t, kBeat)) : 1.0;
  });
  chords.Mix(rhythm);
  chords.Shape([](double t) { return std::clamp((kMusicLength - t) / 1.6, 0.0, 1.0); });
  return chords.Samples();
}

}  // namespace krv::demo
