// What the stage's thread does, and what it keeps.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "studio/live_package.h"
#include "studio/sound_probe.h"
#include "studio/stage.h"

namespace krv::studio {

// Draws frames and renders exports on the calling thread.
class StageWorker {
 public:
  // Null on failure, with one line in *error.
  static std::unique_ptr<StageWorker> Create(const StageOptions& options, std::string* error);

  LivePackage& package() { return *package_; }

  // Draws frame `index` of the clip into *frame.
  void Draw(int64_t index, const PreviewSettings& settings, StageFrame* frame);

  struct Export {
    std::string output;
    bool transparent = false;
    tool::ParameterTracks values;
  };
  // Returns how it ended. Throws MediaError, EffectError, and what `report` throws, which is called
  // at every frame, but no longer once the output is being completed: then it stays.
  ExportState Render(const Export& order, const std::function<void(const ExportState&)>& report);

 private:
  StageWorker(Clip* clip, std::shared_ptr<host::PluginHost> host, std::unique_ptr<SoundProbe> probe,
              std::unique_ptr<LivePackage> package)
      : clip_(clip),
        host_(std::move(host)),
        probe_(std::move(probe)),
        package_(std::move(package)) {}

  bool ReadInput(int64_t index, host::PictureSize size, StageFrame* frame);
  void DrawEffect(const PreviewSettings& settings, StageFrame* frame);

  Clip* clip_;
  std::shared_ptr<host::PluginHost> host_;
  std::unique_ptr<SoundProbe> probe_;
  std::unique_ptr<LivePackage> package_;
  // What job_ holds of the clip.
  tool::RenderJob job_;
  int64_t read_index_ = -1;
  bool read_with_person_ = false;
};

}  // namespace krv::studio
