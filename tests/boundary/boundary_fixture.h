// A started plug-in between a raw host and a raw registrar.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "boundary/built_library.h"
#include "boundary/package_text.h"
#include "support/raw_host.h"
#include "support/raw_registrar.h"
#include "support/scratch_folder.h"

namespace krv::test {

// Effects stay registered as long as the process lives, so every test uses names of its own.
class BoundaryTest : public ::testing::Test {
 protected:
  BoundaryTest() { StartUp(); }
  // Leaves the library without pointers to this host.
  ~BoundaryTest() override {
    void* no_suites[2] = {nullptr, nullptr};
    library_.startup(no_suites, nullptr);
  }

  void StartUp() { library_.startup(host_.context(), nullptr); }

  // Starts the plug-in up again on a host with these devices.
  void StartUpWithDevices(const std::vector<uint32_t>& apis) {
    host_.device_apis = apis;
    StartUp();
  }

  // A name that no other test has used.
  std::string Unique(const std::string& name) const {
    return packages_.path().filename().string() + "." + name;
  }

  std::filesystem::path WritePackage(const std::filesystem::path& folder, const std::string& text) {
    return packages_.Write(folder / "description.json", text);
  }

  int32_t Register() { return Register(packages_.text()); }
  int32_t Register(const std::string& path) {
    return library_.register_from_path(path.c_str(), registrar_.object());
  }

  // Registers one package of that name and returns what the registrar was told.
  std::vector<std::string> Announce(const std::string& unique_name, const std::string& params) {
    WritePackage("package", PackageText(unique_name, params));
    EXPECT_EQ(Register(), 0);
    return registrar_.calls;
  }

  // Whether an effect of that name can be created on a host without a GPU device.
  bool CanCreate(const std::string& unique_name) {
    void* effect = nullptr;
    const int32_t code = library_.create(unique_name.c_str(), 0, &effect);
    library_.release(effect);
    return code == 0 && effect != nullptr;
  }

  // How many effects the process knows.
  uint32_t EffectCount() {
    RawRegistrar ignored;
    uint32_t count = 0;
    while (library_.register_effect(count, ignored.object()) != 2) ++count;
    return count;
  }

  const BuiltLibrary& library_ = BuiltLibrary::Get();
  RawHost host_;
  RawRegistrar registrar_;
  ScratchFolder packages_;
};

}  // namespace krv::test
