// What every figure of the two halo shaders must honour.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "shaders/expect_matches.h"
#include "shaders/halo_figure.h"

namespace krv::test {

struct HaloCase {
  std::string name;
  std::function<void(HaloFigure&)> change;
  int width = 144;
  int height = 81;
  Tolerance tolerance = {2e-3};
};

inline void PrintTo(const HaloCase& test_case, std::ostream* out) { *out << test_case.name; }

const std::vector<HaloCase>& SharedHaloCases();

}  // namespace krv::test
