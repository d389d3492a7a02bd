#include "shaders/halo_cases.h"

namespace krv::test {
namespace {

// A turn of hundreds of radians, such as a negative one cut at 360, is exact to 3e-5.
HaloCase Imprecise(HaloCase test_case) {
  test_case.tolerance = {2.0 / 255, 2e-3};
  return test_case;
}

HaloCase Tilted(const char* name, int degrees) {
  return {name, [degrees](HaloFigure& f) { f.inclination_degree_x = degrees; }};
}

HaloCase Rolled(const char* name, int tilt, int roll) {
  return {name, [tilt, roll](HaloFigure& f) {
            f.inclination_degree_x = tilt, f.inclination_degree_z = roll;
          }};
}

std::vector<HaloCase> CameraCases() {
  return {
      Tilted("SeenStraight", 0),
      Tilted("SeenFromBehind", 180),
      Tilted("SeenFromBehindBackwards", -180),
      Tilted("SeenAfterAFullTurn", 360),
      Tilted("TiltedBackwards", -50),
      Tilted("TiltedSoThatRaysMiss", 80),
      Tilted("TiltedToTheOtherSide", 130),
      Tilted("TiltedNearlyToTheBack", 175),
      Tilted("TiltedFarAround", -250),
      Rolled("Rolled", 40, 30),
      Rolled("RolledBackwards", 40, -75),
      Rolled("RolledAQuarter", 55, 90),
      Rolled("RolledHalfATurn", -40, 180),
      Rolled("RolledSeenStraight", 0, 35),
      Rolled("RolledJustWithinTheZAxisLimit", 8, 35),
      Rolled("RolledJustBeyondTheZAxisLimit", 9, 35),
      Rolled("RolledSeenFromBehind", 180, 35),
      Rolled("RolledOnTheOtherSide", 200, -20),
      {"Moved", [](HaloFigure& f) { f.position_x = 43, f.position_y = 61; }},
      {"MovedIntoACorner", [](HaloFigure& f) { f.position_x = 25, f.position_y = 75; }},
      {"OnASquareFrame", [](HaloFigure&) {}, 96, 96},
      {"OnAnUprightFrame", [](HaloFigure& f) { f.single_color = 0; }, 72, 128},
      {"OnAnOddFrame", [](HaloFigure& f) { f.single_color = 0; }, 151, 83},
  };
}

std::vector<HaloCase> TurnCases() {
  return {
      {"TurningForwards", [](HaloFigure& f) { f.rotate_speed = 0.7f, f.time_second = 3; }},
      Imprecise({"TurningBackwards",
                 [](HaloFigure& f) {
                   f.rotate_speed = 0.7f, f.time_second = 3, f.rotate_direction = 1;
                   f.single_color = 0;
                 }}),
      {"TurningWithUnknownDirection",
       [](HaloFigure& f) { f.rotate_speed = 0.7f, f.time_second = 3, f.rotate_direction = 2; }},
      Imprecise(
          {"TurningAtNegativeSpeed",
           [](HaloFigure& f) { f.rotate_speed = -0.4f, f.time_second = 2, f.single_color = 0; }}),
      {"TurnedMoreThanOnce", [](HaloFigure& f) { f.rotate_speed = 4, f.time_second = 7; }},
      Imprecise(
          {"TurnedBeyondTheWrap", [](HaloFigure& f) { f.rotate_speed = 4, f.time_second = 100; }}),
      {"TurnedByHand",
       [](HaloFigure& f) {
         f.manual_rotate = 1, f.manual_rotate_degree = 77.5f, f.rotate_speed = 1, f.time_second = 5;
         f.rotate_direction = 1, f.single_color = 0;
       }},
      Imprecise({"TurnedByHandBackwards",
                 [](HaloFigure& f) { f.manual_rotate = 1, f.manual_rotate_degree = -130; }}),
      {"NotTurnedByHand", [](HaloFigure& f) { f.manual_rotate = 2, f.manual_rotate_degree = 90; }},
  };
}

std::vector<HaloCase> AudioCases() {
  return {
      {"Mirrored", [](HaloFigure& f) { f.audio_mirror = true; }},
      {"WithAveragingIgnored", [](HaloFigure& f) { f.audio_averaging = true; }},
      {"OfPartOfTheSpectrum",
       [](HaloFigure& f) { f.audio_frequency_min = 0.13f, f.audio_frequency_max = 0.52f; }},
      {"OfTheTopOfTheSpectrum",
       [](HaloFigure& f) { f.audio_frequency_min = 0.77f, f.audio_frequency_max = 0.99f; }},
      {"AtHalfLoudness", [](HaloFigure& f) { f.audio_left_db = 77; }},
      {"AtLowIntensity", [](HaloFigure& f) { f.intensity = 0.6f; }},
      {"AtHighIntensity", [](HaloFigure& f) { f.intensity = 2.3f; }},
  };
}

std::vector<HaloCase> ColorCases() {
  return {
      {"Glowing", [](HaloFigure& f) { f.glow = 1; }},
      {"GlowingFaintly", [](HaloFigure& f) { f.glow = 2, f.glow_intensity = 0; }},
      {"GlowingWidely", [](HaloFigure& f) { f.glow = 1, f.glow_intensity = 1.2f; }},
      {"HalfTransparent", [](HaloFigure& f) { f.alpha = 45; }},
      {"InRainbowColors", [](HaloFigure& f) { f.single_color = 0, f.glow = 1; }},
      {"InAGradient", [](HaloFigure& f) { UseGradient(f); }},
      {"InATurnedGradient",
       [](HaloFigure& f) {
         UseGradient(f);
         f.rotate_speed = 0.7f, f.time_second = 3;
       }},
      {"InAGradientWhereRaysMiss",
       [](HaloFigure& f) {
         UseGradient(f);
         f.inclination_degree_x = 80;
       }},
      {"InAnUnsortedGradient",
       [](HaloFigure& f) {
         UseGradient(f);
         std::swap(f.gradient[0], f.gradient[2]);
       }},
  };
}

}  // namespace

const std::vector<HaloCase>& SharedHaloCases() {
  static const std::vector<HaloCase> cases = [] {
    std::vector<HaloCase> all = {{"Plain", [](HaloFigure&) {}}};
    for (const auto& part : {CameraCases(), TurnCases(), AudioCases(), ColorCases()}) {
      all.insert(all.end(), part.begin(), part.end());
    }
    return all;
  }();
  return cases;
}

}  // namespace krv::test
