// What a host lends to the plug-in: frames, and a place for its messages.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

#include "krv/suites.h"

namespace example {

// A picture in the host's memory: 8 bits a channel, no gap between the rows.
class Frame final : public krv::HostFrame {
 public:
  Frame(int32_t width, int32_t height)
      : width_(width), height_(height), bytes_(size_t{4} * width * height) {}

  uint8_t* Pixel(int32_t x, int32_t y) { return bytes_.data() + 4 * (size_t(y) * width_ + x); }

  int32_t Describe(krv::FrameDescription* out) override {
    *out = {krv::kPixel8, krv::kFrameInMemory, width_, height_, 4 * width_};
    return krv::kOk;
  }
  void* GetPixels() override { return bytes_.data(); }
  int32_t ReadPixels(void* destination, int32_t stride) override {
    for (int32_t y = 0; y < height_; ++y) {
      std::memcpy(static_cast<uint8_t*>(destination) + int64_t{y} * stride, Pixel(0, y),
                  size_t{4} * width_);
    }
    return krv::kOk;
  }

 private:
  int32_t width_, height_;
  std::vector<uint8_t> bytes_;
};

// Makes the frames that the plug-in asks for: the figure's, before it is laid over the picture.
class Images final : public krv::ImageBufferSuite {
 public:
  krv::HostFrame* CreateFrame(int32_t width, int32_t height, int32_t pixel_type,
                              int32_t form) override {
    if (pixel_type != krv::kPixel8 || form != krv::kFrameInMemory) return nullptr;
    return new Frame(width, height);
  }
  void ReleaseFrame(krv::HostFrame* frame) override { delete static_cast<Frame*>(frame); }
};

// Shows what the plug-in has to say. The paths are for effects that follow a person.
class Util final : public krv::HostUtilSuite {
 public:
  int32_t GetHostPath(int32_t, char*, int32_t) override { return krv::kNothingToDo; }
  void Log(int32_t level, const char* format, ...) override {
    if (level < krv::kLogError) return;
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fputs("\n", stderr);
  }
};

class Provider final : public krv::SuiteProvider {
 public:
  int32_t AcquireSuite(const char* name, uint32_t version, void** suite) override {
    if (version != krv::kSuiteVersion) return krv::kNothingToDo;
    if (std::strcmp(name, krv::kImageBufferSuiteName) == 0) {
      *suite = static_cast<krv::ImageBufferSuite*>(&images_);
    }
    if (std::strcmp(name, krv::kHostUtilSuiteName) == 0) {
      *suite = static_cast<krv::HostUtilSuite*>(&util_);
    }
    return krv::kOk;
  }

 private:
  Images images_;
  Util util_;
};

}  // namespace example
