// Tests that draw.
#pragma once

#include <glad/gl.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "gl_context.h"

namespace krv::test {

// A new software context, made current on the calling thread. Null when there is none, which fails
// the current test.
std::unique_ptr<host::GlContext> MakeCurrentContext();

// A test with a software context of its own, current on the test's thread. The test fails when
// there is no such context, and when it leaves errors behind that GL reported and it did not take.
class GlTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  host::GlContext& context() { return *context_; }

  // The errors that GL reported since the last call.
  std::vector<std::string> TakeGlErrors();

 private:
  std::unique_ptr<host::GlContext> context_;
  std::vector<std::string> gl_errors_;
};

}  // namespace krv::test
