// A host of the built library for tests of effects: packages made as the tests go, frames in memory
// or in textures, a software OpenGL context.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "effects/test_frames.h"
#include "gl_context.h"
#include "krv/plugin.h"
#include "suites.h"
#include "support/scratch_folder.h"

namespace krv::test {

// What goes into a package's folder. The host adds "effect_type" and, where there is none, a unique
// name that no other package of the process has.
struct Package {
  nlohmann::json description = nlohmann::json::object();
  std::map<std::string, std::string> files;  // by their names in UTF-8
  std::filesystem::path folder;              // below the one that is registered
};

// A GLSL 1.20 fragment shader whose main function is `body`.
std::string Fragment(std::string_view body, std::string_view declarations = "");

// A package with one pass for each shader text.
Package PassPackage(const std::vector<std::string>& shaders);

// A package whose one pass writes the exact value of a vec4 expression into the output.
Package ValuePackage(std::string_view expression, std::string_view declarations);

// One entry of "params".
nlohmann::json Param(std::string_view name, int kind, const nlohmann::json& default_value);

// Records of values as a host answers and sets them.
ParameterValue Int(int32_t value);
ParameterValue Float(float value);
ParameterValue Double(double value);
ParameterValue Bool(uint8_t value);
ParameterValue Colour(int32_t value);
ParameterValue Text(const char* value);  // borrowed

// What the effect is told about a frame.
class TestContext final : public EffectContext {
 public:
  int64_t index = 0;
  int64_t rate_numerator = 25;
  int64_t rate_denominator = 1;
  HostFrame* output = nullptr;
  HostFrame* input = nullptr;
  AudioBlock* audio = nullptr;
  PersonMaskSource* person_mask = nullptr;
  std::map<std::string, ParameterValue> answers;
  std::map<std::string, ParameterValue> refusals;  // written, but answered with a failure
  std::vector<std::pair<std::string, int64_t>> asked;
  std::vector<uint32_t> extra_inputs;

  int64_t GetFrameIndex() override { return index; }
  void GetFrameRate(int64_t* numerator, int64_t* denominator) override;
  HostFrame* GetOutputFrame() override { return output; }
  HostFrame* GetInputFrame() override { return input; }
  AudioBlock* GetAudioBlock() override { return audio; }
  int32_t GetParameterValue(const char* name, int64_t position, ParameterValue* value) override;
  int32_t QueryProperty(const char* name, int32_t type, void* result, uint32_t size) override;
  void RequestExtraInput(uint32_t value) override { extra_inputs.push_back(value); }
};

struct EffectDeleter {
  void operator()(KRVEffect* effect) const;
};

// An instance, given back to the library at the end.
using Instance = std::unique_ptr<KRVEffect, EffectDeleter>;

// Slot 3, then slot 4.
int32_t ProcessFrame(KRVEffect& effect, TestContext& context);

// Loads the library on first use, starts it and makes an OpenGL context current. Throws, and so
// fails the test, when there is no context to be had.
class EffectHost {
 public:
  explicit EffectHost(host::DeviceUse device = host::DeviceUse::kMemory,
                      const host::HostPaths& paths = {});
  ~EffectHost();
  EffectHost(const EffectHost&) = delete;
  EffectHost& operator=(const EffectHost&) = delete;

  // Starts the library again, without offering the suites of these names.
  void StartWithout(const std::set<std::string>& suites);
  // Starts the library again, offering these in the place of the suites of their names, or none
  // where there is null. They have to live until the next start.
  void StartWith(std::map<std::string, void*> suites);

  // Writes the package and registers it; the unique name.
  std::string Register(Package package);
  // The folder of the package registered last.
  const ScratchFolder& folder() const { return *folders_.back(); }

  Instance Create(const std::string& unique_name);
  // Registers, creates and initialises; slot 1 has to succeed.
  Instance Make(Package package);

  // The texts of the error lines, or all lines, since the last call of either.
  std::vector<std::string> TakeErrors();
  std::vector<host::LogLine> TakeLog() { return services_.TakeLog(); }

  host::HostServices& services() { return services_; }
  host::GlContext& gl() { return *gl_; }
  // Destroys the OpenGL context with all that is in it, and makes a new one current.
  void ReplaceContext();

 private:
  host::DeviceUse device_;
  std::unique_ptr<host::GlContext> gl_;
  host::HostServices services_;
  std::vector<std::unique_ptr<ScratchFolder>> folders_;
};

}  // namespace krv::test
