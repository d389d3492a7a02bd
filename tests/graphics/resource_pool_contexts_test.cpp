// The pool under several GL contexts. Contexts count their texture names alike, so a name alone
// does not tell whose it is.
#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "graphics/gl_calls.h"
#include "graphics/opengl/impl/resource_pool.h"
#include "graphics/opengl/impl/shader.h"
#include "support/gl_fixture.h"

namespace krv::test {
namespace {

GL::ResourcePool& Pool() { return GL::ResourcePool::Instance(); }

uint32_t AcquireSmall() { return Pool().Acquire(GL_RGBA8, GL_RGBA, 8, 8); }

TEST(ResourcePoolContextsTest, FreeTexturesOfOneContextAreNotHandedToAnother) {
  const auto first = MakeCurrentContext();
  const auto second = MakeCurrentContext();
  ASSERT_TRUE(first && second);
  first->MakeCurrent();
  Pool().Release(AcquireSmall());
  second->MakeCurrent();
  EXPECT_EQ(Pool().FreeCount(), 0U);
  const TextureAllocations allocations;
  const uint32_t name = AcquireSmall();
  EXPECT_EQ(allocations.count(), 2);
  EXPECT_TRUE(glIsTexture(name));
  first->MakeCurrent();
  EXPECT_EQ(Pool().FreeCount(), 1U);
}

// Acquires and releases on a context of the calling thread's own, and says whether every name was
// new or one that this thread had released.
void UsePoolOnOwnContext() {
  const auto context = MakeCurrentContext();
  ASSERT_NE(context, nullptr);
  std::set<uint32_t> in_use;
  std::set<uint32_t> released;
  for (int round = 0; round < 500; ++round) {
    const uint32_t name = AcquireSmall();
    ASSERT_TRUE(in_use.insert(name).second) << "a name that is in use was handed out";
    glBindTexture(GL_TEXTURE_2D, name);
    GLfloat mark = 0;
    glGetTexParameterfv(GL_TEXTURE_2D, GL_TEXTURE_MAX_LOD, &mark);
    const bool was_marked = mark == 5.0f;
    ASSERT_EQ(was_marked, released.contains(name));
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAX_LOD, 5.0f);
    glBindTexture(GL_TEXTURE_2D, 0);
    if (in_use.size() < 4) continue;
    const uint32_t done = *in_use.begin();
    in_use.erase(in_use.begin());
    Pool().Release(done);
    if (glIsTexture(done)) {
      released.insert(done);
    } else {
      released.erase(done);
    }
  }
}

TEST(ResourcePoolContextsTest, TwoContextsOnTwoThreadsNeverExchangeNames) {
  std::thread first(UsePoolOnOwnContext);
  std::thread second(UsePoolOnOwnContext);
  first.join();
  second.join();
}

TEST(ResourcePoolContextsTest, AContextThatFollowsADestroyedOneStartsAfresh) {
  uint64_t previous_owner = 0;
  for (int round = 0; round < 8; ++round) {
    const auto context = MakeCurrentContext();
    ASSERT_NE(context, nullptr);
    const uint64_t owner = Pool().CurrentOwner();
    EXPECT_NE(owner, previous_owner);
    EXPECT_EQ(Pool().FreeCount(), 0U);
    const uint32_t name = AcquireSmall();
    EXPECT_TRUE(glIsTexture(name));
    Pool().Release(name);
    EXPECT_EQ(Pool().FreeCount(), 1U);
    previous_owner = owner;
  }
}

TEST(ResourcePoolContextsTest, ATextureThatAContextMadeBeforeIsNotTakenForThePoolsOwn) {
  for (int round = 0; round < 8; ++round) {
    const auto context = MakeCurrentContext();
    ASSERT_NE(context, nullptr);
    GLuint names[4];
    glGenTextures(4, names);
    for (const GLuint name : names) glBindTexture(GL_TEXTURE_2D, name);
    EXPECT_EQ(Pool().FreeCount(), 0U);
    Pool().Release(AcquireSmall());
  }
}

// A name that the pool deletes at its next release.
uint32_t AcquireRecycled() {
  Pool().Release(AcquireSmall());
  return AcquireSmall();
}

TEST(ResourcePoolContextsTest, WithoutAContextTheDeletionWaitsUntilItsContextIsCurrent) {
  const auto context = MakeCurrentContext();
  ASSERT_NE(context, nullptr);
  const uint64_t owner = Pool().CurrentOwner();
  const uint32_t name = AcquireRecycled();
  const TextureDeletions deletions;
  context->ClearCurrent();
  Pool().Release(name, owner);
  EXPECT_EQ(deletions.count(), 0);
  context->MakeCurrent();
  EXPECT_TRUE(glIsTexture(name));
  Pool().FreeCount();
  EXPECT_FALSE(glIsTexture(name));
}

TEST(ResourcePoolContextsTest, ATextureReleasedWithoutAContextIsRecycledInItsOwn) {
  const auto context = MakeCurrentContext();
  ASSERT_NE(context, nullptr);
  const uint64_t owner = Pool().CurrentOwner();
  const uint32_t name = AcquireSmall();
  std::thread([&] { Pool().Release(name, owner); }).join();
  EXPECT_EQ(AcquireSmall(), name);
}

TEST(ResourcePoolContextsTest, WithoutAContextTheEvictionWaitsUntilItsContextIsCurrent) {
  const auto context = MakeCurrentContext();
  ASSERT_NE(context, nullptr);
  const uint64_t owner = Pool().CurrentOwner();
  const uint32_t large = Pool().Acquire(GL_RGBA8, GL_RGBA, 5120, 5121);
  context->ClearCurrent();
  Pool().Release(large, owner);
  context->MakeCurrent();
  EXPECT_EQ(Pool().FreeBytes(), 0U);
  EXPECT_FALSE(glIsTexture(large));
}

TEST(ResourcePoolContextsTest, AReleaseFromAnotherContextLeavesThatOnesTexturesAlone) {
  const auto first = MakeCurrentContext();
  const auto second = MakeCurrentContext();
  ASSERT_TRUE(first && second);
  second->MakeCurrent();
  const uint32_t other = AcquireRecycled();
  first->MakeCurrent();
  const uint64_t owner = Pool().CurrentOwner();
  const uint32_t name = AcquireRecycled();
  ASSERT_EQ(name, other) << "both contexts count their names alike";

  second->MakeCurrent();
  Pool().Release(name, owner);
  EXPECT_TRUE(glIsTexture(other));
  first->MakeCurrent();
  Pool().FreeCount();
  EXPECT_FALSE(glIsTexture(name));
}

TEST(ResourcePoolContextsTest, WhatBelongsToAContextThatIsGoneIsNotDeletedInAnother) {
  auto gone = MakeCurrentContext();
  ASSERT_NE(gone, nullptr);
  const uint64_t owner = Pool().CurrentOwner();
  const uint32_t name = AcquireRecycled();
  gone.reset();
  const auto next = MakeCurrentContext();
  ASSERT_NE(next, nullptr);
  Pool().CurrentOwner();
  const TextureDeletions deletions;
  Pool().Release(name, owner);
  Pool().FreeCount();
  EXPECT_EQ(deletions.count(), 0);
}

TEST(ResourcePoolContextsTest, AProgramIsNotDeletedInAContextThatDidNotMakeIt) {
  const auto first = MakeCurrentContext();
  const auto second = MakeCurrentContext();
  ASSERT_TRUE(first && second);
  first->MakeCurrent();
  auto shader = GL::Shader::Compile(GL::kDefaultVertexSource, "void main() {}", {});
  const GlCalls<glad_glDeleteProgram> deletions;
  second->MakeCurrent();
  shader.reset();
  EXPECT_EQ(deletions.count(), 0);
}

TEST(ResourcePoolContextsTest, WithoutAContextThereIsNoTexture) {
  auto context = MakeCurrentContext();
  ASSERT_NE(context, nullptr);
  context->ClearCurrent();
  EXPECT_EQ(AcquireSmall(), 0U);
  EXPECT_EQ(Pool().CurrentOwner(), 0U);
}

}  // namespace
}  // namespace krv::test
