// A shipped package over the scene, rendered with any values of its parameters.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "packages/package_scene.h"
#include "plugin_host.h"

namespace krv::test {

using Values = std::map<std::string, host::HostValue>;

// A change of one parameter, and the values of others that it needs to be seen.
struct ParameterChange {
  std::string name;
  host::HostValue value;
  Values needs;
};

// `own` and the changes of what the family's effects have in common: opacity, colours, light and
// the part of the sound that they follow.
inline std::vector<ParameterChange> WithFamilyChanges(std::vector<ParameterChange> own) {
  own.insert(own.end(), {{"alpha", 40.0f, {}},
                         {"single_color", 1, {}},
                         {"color", 255, {{"single_color", 1}}},
                         {"color_speed", 0.4f, {{"use_gradient_color", false}}},
                         {"use_gradient_color", false, {}},
                         {"gradient_color", std::string("2,16711680,0;255,100"), {}},
                         {"gradient_color_direction", 1, {}},
                         {"glow", 0, {}},
                         {"glow_intensity", 0.1f, {}},
                         {"intensity", 0.5f, {}},
                         {"audio_db_min", 80.0f, {{"audio_db_max", 135.0f}}},
                         {"audio_db_max", 135.0f, {}},
                         {"audio_frequency_min", 0.2f, {}},
                         {"audio_frequency_max", 0.9f, {}}});
  return own;
}

inline bool Same(const host::Picture& a, const host::Picture& b) {
  if (a.width() != b.width() || a.height() != b.height()) return false;
  for (int y = 0; y < a.height(); ++y) {
    if (std::memcmp(a.Row(y), b.Row(y), static_cast<size_t>(a.width()) * 4) != 0) return false;
  }
  return true;
}

class PackageTest : public ::testing::Test {
 protected:
  // A session of the package in that folder. Throws the plug-in's reason when there is none.
  std::unique_ptr<host::EffectSession> Open(const std::filesystem::path& package,
                                            const std::string& unique_name) {
    std::string error;
    if (plugin_ == nullptr) throw std::runtime_error(error_);
    if (!plugin_->RegisterPackages(package, &error)) throw std::runtime_error(error);
    auto session = host::EffectSession::Create(plugin_, unique_name, &error);
    if (session == nullptr) throw std::runtime_error(error);
    return session;
  }

  // One frame with these values, and the defaults for the rest.
  host::Picture Render(host::EffectSession* session, const Values& values) {
    session->parameters() = {};
    for (const auto& [name, value] : values) session->parameters().Set(name, value);
    return scene_.Render(session);
  }

  // Whether `changes` names every parameter once, and each change shows.
  void ExpectEveryParameterShows(host::EffectSession* session,
                                 const std::vector<ParameterChange>& changes) {
    EXPECT_EQ(changes.size(), session->effect().parameters.size());
    for (const ParameterChange& change : changes) {
      EXPECT_NE(session->effect().Find(change.name), nullptr) << change.name;
      Values changed = change.needs;
      changed.insert_or_assign(change.name, change.value);
      EXPECT_FALSE(Same(Render(session, change.needs), Render(session, changed))) << change.name;
    }
  }

  PackageScene scene_{320, 180};
  std::string error_;
  std::shared_ptr<host::PluginHost> plugin_ =
      host::PluginHost::Create({.plugin = KRV_PLUGIN_FILE}, &error_);
};

}  // namespace krv::test
