// How the shipped packages look at their defaults. The pictures in tests/packages/golden/ were
// looked at; scripts/update_golden.sh makes them anew.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "media/picture.h"
#include "packages/package_scene.h"
#include "plugin_host.h"

namespace krv::test {

// Renders packages at their defaults, 320 x 180 pixels. One object at a time: see PluginHost.
class GoldenRenderer {
 public:
  // Takes the packages in the folders of `packages`. Throws when the plug-in cannot be had.
  GoldenRenderer(const std::filesystem::path& plugin, const std::filesystem::path& packages);

  // The names of the packages' folders, sorted.
  std::vector<std::string> Names() const;

  // Throws the plug-in's reason when it fails.
  host::Picture Render(const std::string& name);

 private:
  std::filesystem::path packages_;
  std::shared_ptr<host::PluginHost> plugin_;
  PackageScene scene_;
};

// A channel may be off by kGoldenTolerance of 255. One pixel in a thousand may be off by more:
// that is where another driver may put a hard edge.
inline constexpr int kGoldenTolerance = 2;

struct PictureDifference {
  bool same_size = false;
  int pixels = 0;  // off by more than the tolerance
  int worst = 0;   // the largest difference of a channel,
  int x = 0;       // and its place
  int y = 0;

  bool WithinTolerance(const host::Picture& picture) const;
};

PictureDifference Compare(const host::Picture& one, const host::Picture& other);

// "123 pixels differ, by up to 45 at (6, 7)".
std::string ToText(const PictureDifference& difference);

}  // namespace krv::test
