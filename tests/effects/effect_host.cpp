#include "effects/effect_host.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "effects/plugin_under_test.h"
#include "registrar.h"
#include "support/file_system.h"

namespace krv::test {
namespace {

std::unique_ptr<host::GlContext> MakeContext() {
  std::string error;
  auto context = host::GlContext::Create(host::GlContext::Renderer::kSoftware, &error);
  if (context == nullptr) throw std::runtime_error(error);
  if (!context->MakeCurrent()) throw std::runtime_error("the context cannot be made current");
  return context;
}

// Offers the suites of another provider, except some, of which it may have another one.
class PickyProvider final : public SuiteProvider {
 public:
  PickyProvider(SuiteProvider& suites, std::map<std::string, void*> replaced)
      : suites_(suites), replaced_(std::move(replaced)) {}
  int32_t AcquireSuite(const char* name, uint32_t version, void** suite) override {
    const auto found = replaced_.find(name);
    if (found == replaced_.end()) return suites_.AcquireSuite(name, version, suite);
    if (found->second == nullptr) return kNothingToDo;
    *suite = found->second;
    return kOk;
  }

 private:
  SuiteProvider& suites_;
  std::map<std::string, void*> replaced_;
};

std::string NewUniqueName() {
  static std::atomic<int> count = 0;
  return "effect_under_test_" + std::to_string(count++);
}

ParameterValue Record(int32_t kind) {
  ParameterValue value{};
  value.kind = kind;
  return value;
}

}  // namespace

std::string Fragment(std::string_view body, std::string_view declarations) {
  return "#version 120\n" + std::string(declarations) + "\nvoid main() { " + std::string(body) +
         " }\n";
}

Package PassPackage(const std::vector<std::string>& shaders) {
  Package package;
  for (size_t i = 0; i < shaders.size(); ++i) {
    const std::string file = "pass" + std::to_string(i) + ".glsl";
    package.description["opengl_frag"].push_back(file);
    package.files[file] = shaders[i];
  }
  return package;
}

Package ValuePackage(std::string_view expression, std::string_view declarations) {
  Package package =
      PassPackage({Fragment("gl_FragColor = " + std::string(expression) + ";", declarations)});
  package.description["original"] = true;
  return package;
}

nlohmann::json Param(std::string_view name, int kind, const nlohmann::json& default_value) {
  return {{"name", name}, {"type", kind}, {"default_value", default_value}};
}

ParameterValue Int(int32_t value) {
  ParameterValue record = Record(kKindInt);
  record.as_int = value;
  return record;
}

ParameterValue Float(float value) {
  ParameterValue record = Record(kKindFloat);
  record.as_float = value;
  return record;
}

ParameterValue Double(double value) {
  ParameterValue record = Record(kKindDouble);
  record.as_double = value;
  return record;
}

ParameterValue Bool(uint8_t value) {
  ParameterValue record = Record(kKindBool);
  record.as_bool = value;
  return record;
}

ParameterValue Colour(int32_t value) {
  ParameterValue record = Record(kKindColor);
  record.as_int = value;
  return record;
}

ParameterValue Text(const char* value) {
  ParameterValue record = Record(kKindText);
  record.as_text = value;
  return record;
}

void TestContext::GetFrameRate(int64_t* numerator, int64_t* denominator) {
  *numerator = rate_numerator;
  *denominator = rate_denominator;
}

int32_t TestContext::GetParameterValue(const char* name, int64_t position, ParameterValue* value) {
  asked.emplace_back(name, position);
  if (const auto answer = answers.find(name); answer != answers.end()) {
    *value = answer->second;
    return kOk;
  }
  if (const auto refusal = refusals.find(name); refusal != refusals.end()) {
    *value = refusal->second;
  }
  return kNothingToDo;
}

int32_t TestContext::QueryProperty(const char* name, int32_t type, void* result, uint32_t size) {
  if (std::string_view(name) != kPersonMaskProperty || type != kPropertyPointer ||
      size != sizeof(person_mask)) {
    return kNothingToDo;
  }
  std::memcpy(result, &person_mask, sizeof(person_mask));
  return kOk;
}

void EffectDeleter::operator()(KRVEffect* effect) const {
  PluginUnderTest().release_effect(effect);
}

int32_t ProcessFrame(KRVEffect& effect, TestContext& context) {
  effect.ClearInputs();
  return effect.ProcessFrame(&context);
}

EffectHost::EffectHost(host::DeviceUse device, const host::HostPaths& paths)
    : device_(device), gl_(MakeContext()), services_(device, paths) {
  PluginUnderTest().startup(services_.context(), nullptr);
}

EffectHost::~EffectHost() { services_.DeleteReleasedFrames(); }

void EffectHost::StartWithout(const std::set<std::string>& suites) {
  std::map<std::string, void*> replaced;
  for (const std::string& name : suites) replaced[name] = nullptr;
  StartWith(std::move(replaced));
}

void EffectHost::StartWith(std::map<std::string, void*> suites) {
  PickyProvider provider(*services_.context()->suites, std::move(suites));
  HostContext context{nullptr, &provider};
  PluginUnderTest().startup(&context, nullptr);
}

std::string EffectHost::Register(Package package) {
  package.description["effect_type"] = "audio_visualization";
  if (!package.description.contains("unique_name")) {
    package.description["unique_name"] = NewUniqueName();
  }
  auto& folder = *folders_.emplace_back(std::make_unique<ScratchFolder>());
  folder.Write(package.folder / "description.json", package.description.dump());
  for (const auto& [name, text] : package.files) {
    folder.Write(package.folder / Utf8Path(name), text);
  }
  host::RecordingRegistrar registrar;
  EXPECT_EQ(PluginUnderTest().register_effect_from_conf_path(folder.text().c_str(), &registrar),
            kOk);
  services_.TakeLog();
  return package.description["unique_name"];
}

Instance EffectHost::Create(const std::string& unique_name) {
  KRVEffect* effect = nullptr;
  const int32_t kind = device_ == host::DeviceUse::kGpu ? kDeviceKindGpu : kDeviceKindMemory;
  if (PluginUnderTest().create_effect(unique_name.c_str(), kind, &effect) != kOk) {
    throw std::runtime_error("cannot create " + unique_name);
  }
  return Instance(effect);
}

Instance EffectHost::Make(Package package) {
  Instance instance = Create(Register(std::move(package)));
  TestContext context;
  EXPECT_EQ(instance->Initialize(&context), kOk);
  return instance;
}

std::vector<std::string> EffectHost::TakeErrors() {
  std::vector<std::string> errors;
  for (host::LogLine& line : services_.TakeLog()) {
    if (line.level == kLogError) errors.push_back(std::move(line.text));
  }
  return errors;
}

void EffectHost::ReplaceContext() {
  gl_.reset();
  gl_ = MakeContext();
}

}  // namespace krv::test
