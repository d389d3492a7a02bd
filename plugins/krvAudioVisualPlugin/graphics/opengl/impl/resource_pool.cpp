#include "graphics/opengl/impl/resource_pool.h"

#include <glad/gl.h>

#include <algorithm>
#include <cstring>

#include "graphics/opengl/impl/gl_check.h"
#include "platform/current_context.h"

namespace krv::GL {
namespace {

// The pixel type that goes with an internal format when a texture is made; 0 when not supported.
uint32_t PixelTypeFor(uint32_t internal_format) {
  switch (internal_format) {
    case GL_R16F:
    case GL_R32F:
    case GL_RG16F:
    case GL_RG32F:
    case GL_RGB16F:
    case GL_RGBA16F:
    case GL_RGB32F:
    case GL_RGBA32F:
      return GL_FLOAT;
    case GL_R8:
    case GL_RG8:
    case GL_RGB8:
    case GL_RGBA8:
    case GL_SRGB8:
    case GL_SRGB8_ALPHA8:
      return GL_UNSIGNED_BYTE;
    default:
      return 0;
  }
}

template <class Record>
uint64_t SizeOf(const Record& record) {
  return uint64_t{record.width} * record.height * TexelBytes(record.internal_format);
}

uint32_t MakeTexture(uint32_t internal_format, uint32_t format, uint32_t width, uint32_t height) {
  const uint32_t type = PixelTypeFor(internal_format);
  if (type == 0) return 0;
  GLuint name = 0;
  glActiveTexture(GL_TEXTURE0);
  CheckGl();
  glGenTextures(1, &name);
  CheckGl();
  if (name == 0) return 0;
  glBindTexture(GL_TEXTURE_2D, name);
  CheckGl();
  // With an unpack buffer bound, "no pixels" would mean the start of that buffer.
  glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
  CheckGl();
  glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(internal_format), static_cast<GLsizei>(width),
               static_cast<GLsizei>(height), 0, format, type, nullptr);
  CheckGl();
  glBindTexture(GL_TEXTURE_2D, 0);
  CheckGl();
  return name;
}

void DeleteTexture(uint32_t name) {
  glDeleteTextures(1, &name);
  CheckGl();
}

// The witness of a context: a texture with a level-of-detail limit that no one else would set.
float WitnessMark(uint64_t owner) { return -2000.0f - static_cast<float>(owner); }

uint32_t MakeWitness(uint64_t owner) {
  GLuint name = 0;
  glActiveTexture(GL_TEXTURE0);
  glGenTextures(1, &name);
  if (name == 0) return 0;  // the next call makes another
  glBindTexture(GL_TEXTURE_2D, name);
  glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MIN_LOD, WitnessMark(owner));
  glBindTexture(GL_TEXTURE_2D, 0);
  CheckGl();
  return name;
}

bool WitnessIsPresent(uint32_t name, uint64_t owner) {
  if (!glIsTexture(name)) return false;
  GLfloat mark = 0;
  glActiveTexture(GL_TEXTURE0);
  glBindTexture(GL_TEXTURE_2D, name);
  glGetTexParameterfv(GL_TEXTURE_2D, GL_TEXTURE_MIN_LOD, &mark);
  glBindTexture(GL_TEXTURE_2D, 0);
  CheckGl();
  return mark == WitnessMark(owner);
}

bool VendorIsIntel() {
  const auto* vendor = reinterpret_cast<const char*>(glGetString(GL_VENDOR));
  return vendor != nullptr &&
         (std::strstr(vendor, "Intel") != nullptr || std::strstr(vendor, "INTEL") != nullptr);
}

}  // namespace

uint64_t TexelBytes(uint32_t internal_format) {
  switch (internal_format) {
    case GL_R8:
      return 1;
    case GL_RG8:
    case GL_R16F:
      return 2;
    case GL_RGB8:
    case GL_SRGB8:
      return 3;
    case GL_RGBA8:
    case GL_SRGB8_ALPHA8:
    case GL_RG16F:
    case GL_R32F:
      return 4;
    case GL_RGB16F:
      return 6;
    case GL_RGBA16F:
    case GL_RG32F:
      return 8;
    case GL_RGB32F:
      return 12;
    case GL_RGBA32F:
      return 16;
    default:
      return 0;
  }
}

ResourcePool& ResourcePool::Instance() {
  static auto* pool = new ResourcePool;  // outlives every texture handle
  return *pool;
}

// The records of the current context. A handle that the system has given to a new context starts
// afresh; deletions and evictions put off earlier are done now. Null without a current context.
ResourcePool::ContextRecords* ResourcePool::Current() {
  void* handle = platform::CurrentGlContext();
  if (handle == nullptr) return nullptr;
  auto found = contexts_.find(handle);
  if (found != contexts_.end() && !WitnessIsPresent(found->second.witness, found->second.owner)) {
    contexts_.erase(found);
    found = contexts_.end();
  }
  if (found == contexts_.end()) {
    found = contexts_.try_emplace(handle).first;
    ContextRecords& fresh = found->second;
    fresh.owner = ++last_owner_;
    fresh.witness = MakeWitness(fresh.owner);
    fresh.intel = VendorIsIntel();
  }
  ContextRecords& context = found->second;
  for (const uint32_t name : context.doomed) DeleteTexture(name);
  context.doomed.clear();
  Trim(context);
  return &context;
}

uint64_t ResourcePool::CurrentOwner() {
  const std::lock_guard lock(mutex_);
  const ContextRecords* context = Current();
  return context == nullptr ? 0 : context->owner;
}

size_t ResourcePool::FreeCount() {
  const std::lock_guard lock(mutex_);
  const ContextRecords* context = Current();
  return context == nullptr ? 0 : context->free_list.size();
}

uint64_t ResourcePool::FreeBytes() {
  const std::lock_guard lock(mutex_);
  const ContextRecords* context = Current();
  return context == nullptr ? 0 : context->free_bytes;
}

void ResourcePool::AddUser(ContextRecords& context, uint32_t name, const TextureRecord& record) {
  const auto [user, is_new] = context.users.try_emplace(name, uint8_t{1});
  if (is_new) {
    context.records[name] = record;
  } else {
    ++user->second;
  }
}

uint32_t ResourcePool::TakeFree(ContextRecords& context, uint32_t internal_format, uint32_t format,
                                uint32_t width, uint32_t height) {
  const auto fits = [&](uint32_t name) {
    const TextureRecord& record = context.records.at(name);
    return record.internal_format == internal_format && record.format == format &&
           record.width == width && record.height == height;
  };
  const auto found = std::find_if(context.free_list.begin(), context.free_list.end(), fits);
  if (found == context.free_list.end()) return 0;
  const uint32_t name = *found;
  context.free_list.erase(found);
  context.free_bytes -= SizeOf(context.records.at(name));
  return name;
}

uint32_t ResourcePool::Acquire(uint32_t internal_format, uint32_t format, uint32_t width,
                               uint32_t height) {
  const std::lock_guard lock(mutex_);
  ContextRecords* context = Current();
  if (context == nullptr) return 0;
  const uint32_t recycled = TakeFree(*context, internal_format, format, width, height);
  if (recycled != 0) return recycled;
  const uint32_t name = MakeTexture(internal_format, format, width, height);
  if (name != 0) AddUser(*context, name, {internal_format, format, width, height, 0, false});
  return name;
}

void ResourcePool::Adopt(uint32_t name, uint32_t internal_format, uint32_t format, uint32_t width,
                         uint32_t height) {
  const std::lock_guard lock(mutex_);
  ContextRecords* context = Current();
  if (context != nullptr) {
    AddUser(*context, name, {internal_format, format, width, height, 0, true});
  }
}

void ResourcePool::Release(uint32_t name) {
  const std::lock_guard lock(mutex_);
  ContextRecords* context = Current();
  if (context != nullptr) ReleaseIn(*context, name, true);
}

void ResourcePool::Release(uint32_t name, uint64_t owner) {
  const std::lock_guard lock(mutex_);
  const ContextRecords* current = Current();
  const auto of_owner = [owner](const auto& entry) { return entry.second.owner == owner; };
  const auto found = std::find_if(contexts_.begin(), contexts_.end(), of_owner);
  if (found == contexts_.end()) return;
  ReleaseIn(found->second, name, &found->second == current);
}

void ResourcePool::ReleaseIn(ContextRecords& context, uint32_t name, bool is_current) {
  if (name == 0) return;
  const auto user = context.users.find(name);
  if (user == context.users.end()) {
    context.records.erase(name);
    if (is_current) {
      DeleteTexture(name);
    } else {
      context.doomed.push_back(name);
    }
    return;
  }
  if (--user->second > 0) return;
  context.users.erase(user);
  const TextureRecord& record = context.records.at(name);
  if (record.external) {
    context.records.erase(name);
    return;
  }
  context.free_list.push_front(name);
  context.free_bytes += SizeOf(record);
  if (is_current) Trim(context);
}

void ResourcePool::Trim(ContextRecords& context) {
  while (context.free_bytes > kBudgetBytes) {
    const uint32_t oldest = context.free_list.back();
    context.free_list.pop_back();
    context.free_bytes -= SizeOf(context.records.at(oldest));
    context.records.erase(oldest);
    DeleteTexture(oldest);
  }
}

bool ResourcePool::BindFramebuffer(uint32_t name) {
  const std::lock_guard lock(mutex_);
  ContextRecords* context = Current();
  if (context == nullptr) return false;
  const auto found = context->records.find(name);
  if (found == context->records.end()) return false;
  uint32_t& framebuffer = found->second.framebuffer;
  if (framebuffer != 0) {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    CheckGl();
    return true;
  }
  glGenFramebuffers(1, &framebuffer);
  CheckGl();
  if (framebuffer == 0) return false;  // the name of the host's window
  glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
  CheckGl();
  glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, name, 0);
  CheckGl();
  return true;
}

void ResourcePool::UnbindFramebuffer(uint32_t name) {
  const std::lock_guard lock(mutex_);
  ContextRecords* context = Current();
  if (context == nullptr) return;
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
  CheckGl();
  const auto found = context->records.find(name);
  if (found == context->records.end() || found->second.framebuffer == 0) return;
  glDeleteFramebuffers(1, &found->second.framebuffer);
  CheckGl();
  found->second.framebuffer = 0;
}

}  // namespace krv::GL
