#include "effect_session.h"

#include <algorithm>
#include <utility>

#include "effect_context.h"
#include "nearest_name.h"
#include "package_copy.h"
#include "package_files.h"

namespace krv::host {
namespace {

std::string UnknownEffect(std::string_view unique_name, const std::vector<EffectListing>& effects) {
  std::string message = "there is no effect \"" + std::string(unique_name) + "\"";
  std::vector<std::string> names;
  names.reserve(effects.size());
  for (const EffectListing& effect : effects) names.push_back(effect.unique_name);
  if (const auto nearest = NearestName(unique_name, names)) {
    return message + "; did you mean \"" + *nearest + "\"?";
  }
  return message + "; `krv list` shows those there are";
}

std::optional<EffectListing> FindEffect(const PluginHost& host, std::string_view unique_name,
                                        std::string* error) {
  std::vector<EffectListing> effects = host.ListEffects();
  const auto found = std::find_if(
      effects.begin(), effects.end(),
      [unique_name](const EffectListing& effect) { return effect.unique_name == unique_name; });
  if (found != effects.end()) return std::move(*found);
  *error = UnknownEffect(unique_name, effects);
  return std::nullopt;
}

// Registers a variant of the effect's package that is not laid over the input.
std::unique_ptr<PackageCopy> RegisterUnblended(PluginHost& host, const SessionOptions& options,
                                               std::string* error) {
  const auto folder = FindPackageFolder(options.packages, options.unique_name);
  if (!folder) {
    *error = "the package of effect \"" + options.unique_name + "\" is not under the given folders";
    return nullptr;
  }
  PackageChanges changes;
  changes.name_suffix = ".without_blend";
  changes.without_blend = true;
  auto copy = PackageCopy::Create(*folder, changes, error);
  if (copy == nullptr || !host.RegisterPackages(copy->folder(), error)) return nullptr;
  return copy;
}

bool IsRenderable(const FrameRequest& request, int32_t output_stride, std::string* error) {
  const int64_t row_bytes = int64_t{request.width} * BytesPerPixel(request.pixel_type);
  if (request.width <= 0 || request.height <= 0 || row_bytes <= 0 || row_bytes > INT32_MAX) {
    *error = "a frame of " + std::to_string(request.width) + " x " +
             std::to_string(request.height) + " pixels cannot be rendered";
    return false;
  }
  if (output_stride < row_bytes || (request.input != nullptr && request.input_stride < row_bytes)) {
    *error = "the rows of a frame are " + std::to_string(row_bytes) + " bytes, a stride is less";
    return false;
  }
  return true;
}

// Whether there is a frame, and it has the request's size and type.
bool Fits(HostFrame* frame, const FrameRequest& request) {
  if (frame == nullptr) return false;
  FrameDescription have;
  frame->Describe(&have);
  return have.width == request.width && have.height == request.height &&
         have.pixel_type == request.pixel_type;
}

// A texture of the request's size and type in *texture, the one there if it fits.
bool FitTexture(const FrameRequest& request, std::unique_ptr<TextureFrame>* texture,
                std::string* error) {
  if (Fits(texture->get(), request)) return true;
  texture->reset();
  *texture = TextureFrame::Create(request.width, request.height, request.pixel_type, error);
  return *texture != nullptr;
}

}  // namespace

EffectSession::EffectSession(std::shared_ptr<PluginHost> host, EffectListing effect)
    : host_(std::move(host)), effect_(std::move(effect)) {}

EffectSession::~EffectSession() {
  std::string ignored;
  if (instance_ == nullptr || !host_->MakeContextCurrent(&ignored)) return;
  instance_->ReleaseResources();
  host_->plugin().release_effect(instance_);
  host_->services().DeleteReleasedFrames();
}

std::unique_ptr<EffectSession> EffectSession::Create(const SessionOptions& options,
                                                     std::string* error) {
  auto host = PluginHost::Create(
      {.plugin = options.plugin, .device = options.device, .renderer = options.renderer}, error);
  if (host == nullptr) return nullptr;
  // A broken package among others matters only when the effect is not found because of it.
  std::string registration;
  for (const std::filesystem::path& folder : options.packages) {
    host->RegisterPackages(folder, &registration);
  }
  auto effect = FindEffect(*host, options.unique_name, error);
  if (!effect) {
    if (!registration.empty()) *error += " (" + registration + ")";
    return nullptr;
  }
  std::unique_ptr<EffectSession> session(new EffectSession(host, std::move(*effect)));
  std::string registered_name = options.unique_name;
  if (options.without_blend) {
    session->package_copy_ = RegisterUnblended(*host, options, error);
    if (session->package_copy_ == nullptr) return nullptr;
    registered_name = session->package_copy_->unique_name();
  }
  return session->Initialize(registered_name, error) ? std::move(session) : nullptr;
}

std::unique_ptr<EffectSession> EffectSession::Create(std::shared_ptr<PluginHost> host,
                                                     std::string_view unique_name,
                                                     std::string* error) {
  auto effect = FindEffect(*host, unique_name, error);
  if (!effect) return nullptr;
  std::unique_ptr<EffectSession> session(new EffectSession(std::move(host), std::move(*effect)));
  return session->Initialize(std::string(unique_name), error) ? std::move(session) : nullptr;
}

bool EffectSession::Fail(const std::string& what, int32_t code, std::string* error) {
  const std::string reason = host_->TakeErrors();
  *error = "effect \"" + effect_.unique_name + "\" " + what + ": " +
           (reason.empty() ? "the plug-in answers " + std::to_string(code) + " without a reason"
                           : reason);
  return false;
}

bool EffectSession::Initialize(const std::string& registered_name, std::string* error) {
  if (!host_->MakeContextCurrent(error)) return false;
  host_->TakeErrors();
  const int32_t kind = host_->device() == DeviceUse::kGpu ? kDeviceKindGpu : kDeviceKindMemory;
  int32_t code = host_->plugin().create_effect(registered_name.c_str(), kind, &instance_);
  if (code != kOk) return Fail("cannot be created", code, error);
  FrameContext context({});
  code = instance_->Initialize(&context);
  if (code != kOk) return Fail("cannot be initialised", code, error);
  wants_person_mask_ = context.extra_input_requested();
  return true;
}

bool EffectSession::RenderFrame(const FrameRequest& request, void* output, int32_t output_stride,
                                std::string* error) {
  if (!IsRenderable(request, output_stride, error) || !host_->MakeContextCurrent(error)) {
    return false;
  }
  host_->TakeErrors();
  // First of all, since the list may still refer to the textures of the last frame.
  instance_->ClearInputs();
  const bool rendered = host_->device() == DeviceUse::kGpu
                            ? RenderOnGpu(request, output, output_stride, error)
                            : RenderInMemory(request, output, output_stride, error);
  host_->services().DeleteReleasedFrames();
  return rendered;
}

bool EffectSession::ProcessFrame(const FrameRequest& request, HostFrame* input, HostFrame* output,
                                 std::string* error) {
  instance_->ClearInputs();
  const bool processed = Process(request, input, output, error);
  host_->services().DeleteReleasedFrames();
  return processed;
}

bool EffectSession::RenderInMemory(const FrameRequest& request, void* output, int32_t output_stride,
                                   std::string* error) {
  FrameDescription description{request.pixel_type, kFrameInMemory, request.width, request.height,
                               output_stride};
  MemoryFrame output_frame(description, output);
  if (request.input == nullptr) {
    return Process(request, &BlackFrame(request), &output_frame, error);
  }
  description.stride = request.input_stride;
  // The plug-in only reads its input.
  MemoryFrame input_frame(description, const_cast<void*>(request.input));
  return Process(request, &input_frame, &output_frame, error);
}

bool EffectSession::RenderOnGpu(const FrameRequest& request, void* output, int32_t output_stride,
                                std::string* error) {
  if (!FitTexture(request, &input_texture_, error) ||
      !FitTexture(request, &output_texture_, error)) {
    return false;
  }
  const void* pixels = request.input;
  int32_t stride = request.input_stride;
  if (pixels == nullptr) {
    stride = request.width * BytesPerPixel(request.pixel_type);
    pixels = BlackFrame(request).GetPixels();
  }
  if (!input_texture_->Upload(pixels, stride)) {
    *error = "the input frame cannot be put on the GPU";
    return false;
  }
  if (!Process(request, input_texture_.get(), output_texture_.get(), error)) return false;
  if (output_texture_->ReadPixels(output, output_stride) == kOk) return true;
  *error = "the output frame cannot be read from the GPU";
  return false;
}

MemoryFrame& EffectSession::BlackFrame(const FrameRequest& request) {
  if (!Fits(black_frame_.get(), request)) {
    black_frame_.reset();  // never two at a time
    black_frame_ = std::make_unique<MemoryFrame>(request.width, request.height, request.pixel_type);
  }
  return *black_frame_;
}

bool EffectSession::Process(const FrameRequest& request, HostFrame* input, HostFrame* output,
                            std::string* error) {
  BorrowedAudioBlock audio(request.audio);
  FrameContext context({.index = request.index,
                        .rate_numerator = request.rate_numerator,
                        .rate_denominator = request.rate_denominator,
                        .output = output,
                        .input = input,
                        .audio = request.audio.samples == nullptr ? nullptr : &audio,
                        .parameters = source_ == nullptr ? &parameters_ : source_,
                        .person_mask = person_mask_});
  const int32_t code = instance_->ProcessFrame(&context);
  if (code == kOk) return true;
  return Fail("cannot render frame " + std::to_string(request.index), code, error);
}

}  // namespace krv::host
