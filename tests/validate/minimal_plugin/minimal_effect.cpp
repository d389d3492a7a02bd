#include "minimal_effect.h"

#include <glad/gl.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <thread>

#include "breakage.h"
#include "pictures.h"
#include "platform/current_context.h"

namespace krv::test {

GpuDeviceSuite* gpu_devices = nullptr;

namespace {

// Plain transfers for as long as the object lives.
class PlainPixelStore {
 public:
  PlainPixelStore() {
    for (Setting& setting : settings_) {
      glGetIntegerv(setting.name, &setting.value);
      glPixelStorei(setting.name, setting.name == GL_UNPACK_ALIGNMENT ? 1 : 0);
    }
  }
  ~PlainPixelStore() {
    for (const Setting& setting : settings_) glPixelStorei(setting.name, setting.value);
  }
  PlainPixelStore(const PlainPixelStore&) = delete;
  PlainPixelStore& operator=(const PlainPixelStore&) = delete;

 private:
  struct Setting {
    GLenum name;
    GLint value = 0;
  };
  Setting settings_[5] = {{GL_UNPACK_ALIGNMENT},
                          {GL_UNPACK_ROW_LENGTH},
                          {GL_UNPACK_SKIP_ROWS},
                          {GL_UNPACK_SKIP_PIXELS},
                          {GL_UNPACK_SWAP_BYTES}};
};

int32_t WriteTexture(HostFrame& frame, const FrameDescription& description,
                     const unsigned char* rows) {
  uint32_t texture = 0;
  if (gpu_devices == nullptr || gpu_devices->GetFrameTexture(0, &frame, &texture) != 0) return 4;
  constexpr GLenum kTypes[] = {GL_UNSIGNED_BYTE, GL_UNSIGNED_SHORT, GL_FLOAT};
  const PlainPixelStore plain;
  GLint bound = 0;
  glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, description.width, description.height, GL_BGRA,
                  kTypes[description.pixel_type], rows);
  glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(bound));
  return 0;
}

int32_t WriteMemory(HostFrame& frame, const FrameDescription& description,
                    const unsigned char* rows) {
  auto* to = static_cast<unsigned char*>(frame.GetPixels());
  const int row_bytes = description.width * 4 * ChannelBytes(description.pixel_type);
  for (int y = 0; y < description.height; ++y) {
    std::memcpy(to, rows + static_cast<size_t>(y) * static_cast<size_t>(row_bytes),
                static_cast<size_t>(row_bytes));
    if (kBreakage == Breakage::kReckless && description.stride > row_bytes) to[row_bytes] = 0;
    to += description.stride;
  }
  return 0;
}

bool CanBeWritten(HostFrame& frame, const FrameDescription& description) {
  const int bytes = ChannelBytes(description.pixel_type);
  if (bytes == 0 || description.width <= 0 || description.height <= 0) return false;
  if (description.form == kFrameOnGpu) return gpu_devices != nullptr;
  return description.form == kFrameInMemory && frame.GetPixels() != nullptr &&
         description.stride >= description.width * 4 * bytes;
}

void MakeAMess() {
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glBindTexture(GL_TEXTURE_2D, 0);
  glEnable(GL_BLEND);
  glViewport(0, 0, 17, 17);
  glActiveTexture(GL_NONE);  // no texture unit
  glGetError();
  [[maybe_unused]] static unsigned char* volatile lost = nullptr;
  lost = new unsigned char[1 << 16]();
}

bool HasRefused(HostFrame& frame, const FrameDescription& description) {
  return frame.GetPixels() == nullptr && description.form == kFrameInMemory;
}

}  // namespace

void* MinimalEffect::Destroy(uint32_t flags) {
  if ((flags & 1) != 0) delete this;
  return this;  // NOLINT(clang-analyzer-cplusplus.NewDelete): the address alone
}

int32_t MinimalEffect::Initialize(EffectContext*) {
  if (platform::CurrentGlContext() == nullptr) return 4;
  if (gladLoadGL([](const char* name) {
        return reinterpret_cast<GLADapiproc>(platform::GlFunction(name));
      }) == 0) {
    return 4;
  }
  initialised_ = true;
  return 0;
}

int32_t MinimalEffect::ReleaseResources() {
  initialised_ = false;
  return 0;
}

int32_t MinimalEffect::ApplyParameters(EffectContext* context) {
  if (context == nullptr) return 4;
  ParameterValue value{};
  value.kind = kKindFloat;
  value.as_float = 1;
  context->GetParameterValue("level", context->GetFrameIndex(), &value);
  const bool usable = value.kind == kKindFloat && std::isfinite(value.as_float);
  level_ = usable ? std::clamp(value.as_float, 0.0F, 1.0F) : 1;
  return 0;
}

int32_t MinimalEffect::SetUniform(const char* name, const ParameterValue* value) {
  return name == nullptr || value == nullptr ? 4 : 0;
}

int32_t MinimalEffect::ProcessFrame(EffectContext* context) {
  if (kBreakage == Breakage::kRude && context == nullptr) throw std::runtime_error("no context");
  if (context == nullptr) return 2;
  HostFrame* const output = context->GetOutputFrame();
  FrameDescription description{};
  if (output == nullptr) return 2;
  if (output->Describe(&description) != 0) return 4;
  if (kBreakage == Breakage::kReckless) {
    std::memset(output->GetPixels(), 0, 16);
    int64_t numerator = 0;
    int64_t denominator = 0;
    context->GetFrameRate(&numerator, &denominator);
    [[maybe_unused]] volatile const int64_t rate = numerator / denominator;
  }
  if (HasRefused(*output, description)) return 2;
  if (!initialised_ || platform::CurrentGlContext() == nullptr) return 4;
  if (!CanBeWritten(*output, description)) return 4;
  while (kBreakage == Breakage::kRude && context->GetFrameIndex() < 0) std::this_thread::yield();
  Picture picture;
  HostFrame* const input = context->GetInputFrame();
  if (input == nullptr || !Read(*input, &picture)) return 4;
  ApplyParameters(context);
  if (kBreakage == Breakage::kRude) level_ /= static_cast<float>(++frames_);
  for (float& channel : picture.channels) channel *= level_;
  if (kBreakage == Breakage::kUntidy) MakeAMess();
  const std::vector<unsigned char> rows = ToRows(picture, description);
  return description.form == kFrameOnGpu ? WriteTexture(*output, description, rows.data())
                                         : WriteMemory(*output, description, rows.data());
}

}  // namespace krv::test
