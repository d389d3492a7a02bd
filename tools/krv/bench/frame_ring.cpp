#include "bench/frame_ring.h"

#include <stdexcept>
#include <string>

namespace krv::tool {

FrameRing::FrameRing(const host::Picture& picture, host::DeviceUse form) {
  for (Pair& pair : pairs_) {
    if (form == host::DeviceUse::kGpu) {
      FillOnGpu(picture, &pair);
    } else {
      FillInMemory(picture, &pair);
    }
  }
}

void FrameRing::FillInMemory(const host::Picture& picture, Pair* pair) {
  const auto make = [&picture] {
    return std::make_unique<host::MemoryFrame>(picture.width(), picture.height(), kPixel8,
                                               picture.stride());
  };
  pair->memory_input = make();
  pair->memory_output = make();
  host::CopyRows(picture.Row(0), picture.stride(), pair->memory_input->GetPixels(),
                 picture.stride(), picture.width() * 4, picture.height());
  pair->input = pair->memory_input.get();
  pair->output = pair->memory_output.get();
}

void FrameRing::FillOnGpu(const host::Picture& picture, Pair* pair) {
  std::string error;
  const auto make = [&] {
    auto frame = host::TextureFrame::Create(picture.width(), picture.height(), kPixel8, &error);
    if (frame == nullptr) throw std::runtime_error(error);
    return frame;
  };
  pair->gpu_input = make();
  pair->gpu_output = make();
  if (!pair->gpu_input->Upload(picture.Row(0), picture.stride())) {
    throw std::runtime_error("the input frame cannot be put on the GPU");
  }
  pair->input = pair->gpu_input.get();
  pair->output = pair->gpu_output.get();
}

}  // namespace krv::tool
