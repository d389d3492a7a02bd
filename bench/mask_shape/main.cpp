// mask_shape_bench PLUGIN PACKAGES [FRAMES]: what a frame of the outline points costs beside one of
// the bars, 1920 x 1080 pixels with a person of that size. Prints medians in milliseconds, and
// apart from them those of tracing the outlines and of uploading the points.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <opencv2/core.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "effects/mask_outlines.h"
#include "effects/mask_shape_sizes.h"
#include "effects/shape_mask_algo_point_normal.h"
#include "effects/shrink.h"
#include "graphics/px_graphics.h"
#include "graphics/px_image.h"
#include "packages/package_scene.h"
#include "plugin_host.h"
#include "utf8_path.h"

namespace krv {
namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kWorkingMaskSide = 480;           // pixels, as the effect's
constexpr PointStyle kStyle{0.22F, 0.02F, 70};  // the package's defaults
constexpr const char* kBars = "audio_visualization_bars";
constexpr const char* kPoints = "audio_visualization_mask_shape";

double Milliseconds(const std::function<void()>& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
      .count();
}

double Median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

std::unique_ptr<host::EffectSession> Open(const std::shared_ptr<host::PluginHost>& plugin,
                                          const char* effect) {
  std::string error;
  auto session = host::EffectSession::Create(plugin, effect, &error);
  if (session == nullptr) throw std::runtime_error(error);
  return session;
}

// Where the effect spends its own time, step by step as KRVAudioVisualMaskShape does it.
struct Steps {
  std::vector<double> tracing;
  std::vector<double> upload;
  int points = 0;
};

void MeasureSteps(const cv::Mat& mask, Steps* steps) {
  cv::Mat points;
  steps->tracing.push_back(Milliseconds([&] {
    const cv::Mat working = ShrinkToShorterSide(mask, kWorkingMaskSide);
    const Outlines outlines = FindOutlines(working);
    const MaskShapeSizes sizes = SizesFor(ExtentOf(outlines), working.size(), kStyle);
    ShapeMaskAlgo_Point_Normal(WholeSpacing(sizes.spacing)).FindPoints(working, outlines, points);
  }));
  steps->points = points.cols;
  steps->upload.push_back(Milliseconds([&] {
    const auto image =
        CreateImage(static_cast<uint32_t>(points.cols), 1, PixelLayout::kRgba, DataType::kFloat,
                    static_cast<uint32_t>(points.step[0]), points.data);
    if (image == nullptr) throw std::runtime_error("the points cannot be uploaded");
  }));
}

void Run(const std::filesystem::path& plugin_file, const std::filesystem::path& packages,
         int frames) {
  std::string error;
  const auto plugin = host::PluginHost::Create({.plugin = plugin_file}, &error);
  if (plugin == nullptr || !plugin->RegisterPackages(packages, &error)) {
    throw std::runtime_error(error);
  }
  const auto bars = Open(plugin, kBars);
  const auto points = Open(plugin, kPoints);
  // The context is current by now; this program's copy of the graphics layer needs it too.
  const auto graphics = CreateGraphics(GraphicsKind::kOpenGl);
  if (graphics == nullptr) throw std::runtime_error("no OpenGL context is current");
  test::PackageScene scene(kWidth, kHeight);
  uint8_t* pixels = nullptr;
  int32_t width = 0;
  int32_t height = 0;
  int32_t stride = 0;
  scene.GetMask(&pixels, &width, &height, &stride);
  const cv::Mat mask(height, width, CV_8UC4, pixels, static_cast<size_t>(stride));

  std::vector<double> bars_times;
  std::vector<double> points_times;
  Steps steps;
  for (int i = -2; i < frames; ++i) {  // the first two warm up
    const double of_bars = Milliseconds([&] { scene.Render(bars.get()); });
    const double of_points = Milliseconds([&] { scene.Render(points.get()); });
    if (i < 0) continue;
    bars_times.push_back(of_bars);
    points_times.push_back(of_points);
    MeasureSteps(mask, &steps);
  }
  std::printf("%s, %d x %d, medians of %d frames in alternation, milliseconds:\n",
              plugin->ContextDescription().c_str(), kWidth, kHeight, frames);
  std::printf("  bars                        %8.2f\n", Median(bars_times));
  std::printf("  outline points              %8.2f   %.2f times the bars\n", Median(points_times),
              Median(points_times) / Median(bars_times));
  std::printf("    of it tracing             %8.2f   %d points\n", Median(steps.tracing),
              steps.points);
  std::printf("    of it uploading points    %8.3f\n", Median(steps.upload));
}

}  // namespace
}  // namespace krv

int main(int count, char** arguments) {
  if (count < 3 || count > 4) {
    std::fputs("usage: mask_shape_bench PLUGIN PACKAGES [FRAMES]\n", stderr);
    return 2;
  }
  try {
    const int frames = count == 4 ? std::max(1, std::atoi(arguments[3])) : 25;
    krv::Run(krv::host::PathFromUtf8(arguments[1]), krv::host::PathFromUtf8(arguments[2]), frames);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "mask_shape_bench: %s\n", error.what());
    return 1;
  }
  return 0;
}
