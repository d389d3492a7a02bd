// The pool of GL textures: names are recycled by shape instead of being deleted, and each texture
// gets a framebuffer while it is drawn into or read.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <memory_resource>
#include <mutex>
#include <vector>

#include "memory/frame_memory.h"

namespace krv::GL {

// One per process, made on first use and never destroyed; guarded by a mutex. Textures and
// framebuffers are not shareable here: every record belongs to the GL context that was current when
// the name was acquired or adopted, and names never cross to another. What belongs to a context
// that is gone is forgotten. All operations but Release need the GL context current on the calling
// thread.
class ResourcePool {
 public:
  // The most that the free textures of one context may occupy.
  static constexpr uint64_t kBudgetBytes = 104857600;

  static ResourcePool& Instance();

  // A texture of that shape on GL_TEXTURE_2D: a free one, most recently released first, or a new
  // one without defined content. 0 when GL gives none or the internal format is not supported.
  // Leaves unit 0 active, and nothing bound to it nor to GL_PIXEL_UNPACK_BUFFER, when it makes one.
  //
  // A name that comes from the free list has no user count, so the next Release deletes it: a
  // texture is recycled at most once.
  uint32_t Acquire(uint32_t internal_format, uint32_t format, uint32_t width, uint32_t height);

  // Registers a texture that belongs to someone else, or counts one more user of it. The pool never
  // deletes it while it has a record.
  void Adopt(uint32_t name, uint32_t internal_format, uint32_t format, uint32_t width,
             uint32_t height);

  // Gives up one use of a name. The last use of a texture of the pool puts it on the free list and
  // deletes the oldest free ones beyond the budget; the last use of an external one forgets it; a
  // name without a user count is deleted. Name 0 does nothing.
  void Release(uint32_t name);

  // The same for a name of the context `owner`, on any thread: when that context is not current, GL
  // work is put off until it is; when it is gone, nothing happens.
  void Release(uint32_t name, uint64_t owner);

  // Binds the texture's framebuffer to GL_FRAMEBUFFER, making it first if need be. False, with
  // nothing bound, for a name without a record and when GL gives none. The caller checks
  // completeness.
  bool BindFramebuffer(uint32_t name);

  // Binds framebuffer 0 and deletes the texture's framebuffer.
  void UnbindFramebuffer(uint32_t name);

  // Identifies the current GL context for the pool's purposes; never the same number for two
  // contexts, even where the system reuses its handle.
  uint64_t CurrentOwner();

  // Free textures of the current context, and their size.
  size_t FreeCount();
  uint64_t FreeBytes();

 private:
  struct TextureRecord {
    uint32_t internal_format;
    uint32_t format;
    uint32_t width;
    uint32_t height;
    uint32_t framebuffer;  // 0 when none
    bool external;         // belongs to someone else, such as the host
  };

  // What the pool knows of one GL context.
  struct ContextRecords {
    uint64_t owner = 0;
    uint32_t witness = 0;  // a texture whose parameters tell this context from a successor
    bool intel = false;    // the GL vendor, for work-arounds
    // In memory that frames hand out again: the host's textures come and go with every frame.
    std::pmr::map<uint32_t, uint8_t> users{&FrameMemory()};
    std::pmr::map<uint32_t, TextureRecord> records{&FrameMemory()};
    std::pmr::list<uint32_t> free_list{&FrameMemory()};  // most recently released at the front
    uint64_t free_bytes = 0;
    std::vector<uint32_t> doomed;  // to be deleted when the context is current again
  };

  ContextRecords* Current();
  void ReleaseIn(ContextRecords& context, uint32_t name, bool is_current);
  static uint32_t TakeFree(ContextRecords& context, uint32_t internal_format, uint32_t format,
                           uint32_t width, uint32_t height);
  static void Trim(ContextRecords& context);
  static void AddUser(ContextRecords& context, uint32_t name, const TextureRecord& record);

  std::mutex mutex_;
  uint64_t last_owner_ = 0;
  std::map<void*, ContextRecords> contexts_;  // by the platform's handle
};

// Bytes of one texel of an internal format; 0 for formats the pool does not support.
uint64_t TexelBytes(uint32_t internal_format);

}  // namespace krv::GL
