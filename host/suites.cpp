#include "suites.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "frame.h"

namespace krv::host {
namespace {

std::string Format(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, again);
  va_end(again);
  if (length < 0) return format;
  std::string text(static_cast<size_t>(length) + 1, '\0');
  std::vsnprintf(text.data(), text.size(), format, arguments);
  text.resize(static_cast<size_t>(length));
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

}  // namespace

class HostServices::Memory final : public MemorySuite {
 public:
  void* Allocate(uint64_t size) override { return std::malloc(static_cast<size_t>(size)); }
  void Free(void* block) override { std::free(block); }
};

class HostServices::Images final : public ImageBufferSuite {
 public:
  HostFrame* CreateFrame(int32_t width, int32_t height, int32_t pixel_type, int32_t form) override {
    std::shared_ptr<HostFrame> frame = Make(width, height, pixel_type, form);
    if (frame == nullptr) return nullptr;
    const std::lock_guard lock(mutex_);
    live_.emplace(frame.get(), frame);
    return frame.get();
  }

  void ReleaseFrame(HostFrame* frame) override {
    const std::lock_guard lock(mutex_);
    const auto found = live_.find(frame);
    if (found == live_.end()) return;
    released_.push_back(std::move(found->second));
    live_.erase(found);
  }

  size_t LiveCount() const {
    const std::lock_guard lock(mutex_);
    return live_.size();
  }

  void DeleteReleased() {
    std::vector<std::shared_ptr<HostFrame>> released;
    const std::lock_guard lock(mutex_);
    released.swap(released_);
  }

 private:
  static std::shared_ptr<HostFrame> Make(int32_t width, int32_t height, int32_t pixel_type,
                                         int32_t form) {
    if (width <= 0 || height <= 0 || BytesPerPixel(pixel_type) == 0) return nullptr;
    if (form == kFrameInMemory) return std::make_shared<MemoryFrame>(width, height, pixel_type);
    if (form != kFrameOnGpu) return nullptr;
    std::string reason;
    return TextureFrame::Create(width, height, pixel_type, &reason);
  }

  // A shared_ptr knows how to delete a frame, whose interface has no virtual destructor.
  mutable std::mutex mutex_;
  std::unordered_map<HostFrame*, std::shared_ptr<HostFrame>> live_;
  std::vector<std::shared_ptr<HostFrame>> released_;
};

class HostServices::Util final : public HostUtilSuite {
 public:
  explicit Util(HostPaths paths) : paths_(std::move(paths)) {}

  int32_t GetHostPath(int32_t kind, char* buffer, int32_t capacity) override {
    const std::string* path = Path(kind);
    if (path == nullptr || capacity <= 0 || path->size() >= static_cast<size_t>(capacity)) {
      return kFailed;
    }
    std::memcpy(buffer, path->c_str(), path->size() + 1);
    return kOk;
  }

  void Log(int32_t level, const char* format, ...) override {
    va_list arguments;
    va_start(arguments, format);
    LogLine line{level, Format(format, arguments)};
    va_end(arguments);
    const std::lock_guard lock(mutex_);
    if (sink_) sink_(line);
    lines_.push_back(std::move(line));
  }

  void SetSink(std::function<void(const LogLine&)> sink) {
    const std::lock_guard lock(mutex_);
    sink_ = std::move(sink);
  }

  std::vector<LogLine> Take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(lines_, {});
  }

 private:
  const std::string* Path(int32_t kind) const {
    switch (kind) {
      case kHostPathInstallation:
        return &paths_.installation;
      case kHostPathAiModels:
        return &paths_.ai_models;
      case kHostPathPlugins:
        return &paths_.plugins;
      default:
        return nullptr;
    }
  }

  const HostPaths paths_;
  std::mutex mutex_;
  std::function<void(const LogLine&)> sink_;
  std::vector<LogLine> lines_;
};

class HostServices::Devices final : public GpuDeviceSuite {
 public:
  explicit Devices(DeviceUse use) : count_(use == DeviceUse::kGpu ? 1 : 0) {}

  uint32_t GetDeviceCount() override { return count_; }

  int32_t GetDeviceInfo(uint32_t index, DeviceInfo* info) override {
    if (index >= count_) return kNothingToDo;
    *info = {};
    info->api = kDeviceOpenGl;
    std::strncpy(info->name, "OpenGL", sizeof(info->name) - 1);
    return kOk;
  }

  int32_t GetFrameTexture(uint32_t index, HostFrame* frame, uint32_t* texture) override {
    auto* on_gpu = dynamic_cast<TextureFrame*>(frame);
    if (index >= count_ || on_gpu == nullptr) return kNothingToDo;
    *texture = on_gpu->texture();
    return kOk;
  }

 private:
  uint32_t count_;
};

class HostServices::Provider final : public SuiteProvider {
 public:
  explicit Provider(const HostServices& services)
      : suites_{{kMemorySuiteName, services.memory_.get()},
                {kImageBufferSuiteName, services.images_.get()},
                {kHostUtilSuiteName, services.util_.get()},
                {kGpuDeviceSuiteName, services.devices_.get()}} {}

  int32_t AcquireSuite(const char* name, uint32_t version, void** suite) override {
    const auto found = suites_.find(name);
    if (version != kSuiteVersion || found == suites_.end()) return kNothingToDo;
    *suite = found->second;
    return kOk;
  }

 private:
  // The pointers are those of the suites' interfaces, which each class begins with.
  const std::map<std::string, void*, std::less<>> suites_;
};

HostServices::HostServices(DeviceUse device, HostPaths paths)
    : memory_(std::make_unique<Memory>()),
      images_(std::make_unique<Images>()),
      util_(std::make_unique<Util>(std::move(paths))),
      devices_(std::make_unique<Devices>(device)),
      provider_(std::make_unique<Provider>(*this)),
      context_{nullptr, provider_.get()} {}

HostServices::~HostServices() = default;

void HostServices::SetLogSink(std::function<void(const LogLine&)> sink) {
  util_->SetSink(std::move(sink));
}

std::vector<LogLine> HostServices::TakeLog() { return util_->Take(); }

size_t HostServices::LiveFrameCount() const { return images_->LiveCount(); }

void HostServices::DeleteReleasedFrames() { images_->DeleteReleased(); }

}  // namespace krv::host
