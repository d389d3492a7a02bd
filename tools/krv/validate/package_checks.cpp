// Packages that are damaged: cut off, or with one byte changed.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "folder_tree.h"
#include "package_files.h"
#include "platform/file_system.h"
#include "temporary_folder.h"
#include "utf8_path.h"
#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

namespace fs = std::filesystem;
namespace platform = host::platform;

std::string ReadFile(const fs::path& file) {
  std::ifstream stream(platform::OpenablePath(file), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteFile(const fs::path& file, const std::string& content) {
  std::ofstream stream(platform::OpenablePath(file), std::ios::binary);
  stream << content;
}

bool IsShaderFile(const platform::FolderEntry& entry) {
  return !entry.is_folder && entry.path.filename() != host::kDescriptionFileName;
}

// The first shader file of a package, if it has one of its own.
std::optional<fs::path> ShaderFile(const fs::path& package) {
  const auto entries = platform::ListFolder(package);
  if (!entries) return std::nullopt;
  const auto found = std::find_if(entries->begin(), entries->end(), IsShaderFile);
  return found == entries->end() ? std::nullopt : std::optional(found->path);
}

// A package on disk that can be damaged, and registered anew after every damage: the plug-in keeps
// the first package of a name, so the name changes every time.
class DamagedPackage {
 public:
  DamagedPackage(Bench& bench, const fs::path& original) : bench_(bench) {
    std::string error;
    folder_ = host::TemporaryFolder::Create(&error);
    if (folder_ == nullptr) throw CannotGoOn(error);
    host::CopyTree(original, folder_->path());
    description_ = ReadFile(folder_->path() / host::kDescriptionFileName);
  }

  // The description under a name that was not there before.
  std::string NextDescription() {
    std::string text = description_;
    const size_t key = text.find("\"unique_name\"");
    const size_t begin = key == std::string::npos ? key : text.find('"', text.find(':', key));
    const size_t end = begin == std::string::npos ? begin : text.find('"', begin + 1);
    if (end == std::string::npos) throw CannotGoOn("a description has no unique name");
    return text.insert(end, ".damaged" + std::to_string(count_++));
  }

  void Write(const fs::path& name, const std::string& content) {
    WriteFile(folder_->path() / name, content);
  }

  // Registers the folder; with code 0 makes an instance and, if `draw`, a frame.
  void Live(bool draw) {
    Examiner& examiner = bench_.examiner();
    host::RecordingRegistrar announced;
    const std::string path = host::Utf8(folder_->path());
    const int32_t code = examiner.Call("RegisterKRVEffectFromConfPath", [&] {
      return bench_.plugin().register_effect_from_conf_path(path.c_str(), &announced);
    });
    examiner.ExpectCode("RegisterKRVEffectFromConfPath", code, {kOk, kNothingToDo, kFailed});
    if (code != kOk) return;
    KRVEffect* effect = nullptr;
    const int32_t created = examiner.Call("CreateKRVEffect", [&] {
      return bench_.plugin().create_effect(announced.effect().unique_name.c_str(),
                                           bench_.device_kind(), &effect);
    });
    examiner.ExpectCode("CreateKRVEffect", created, {kOk, kFailed});
    if (effect == nullptr) return;
    const EffectPtr owner(effect, {bench_.plugin().release_effect});
    if (draw) Draw(*effect);
  }

 private:
  void Draw(KRVEffect& effect) {
    Examiner& examiner = bench_.examiner();
    GuardedPicture picture({.width = 16, .height = 16});
    host::MemoryFrame input(16, 16, kPixel8);
    host::MemoryFrame output(picture.Description(), picture.pixels());
    ScriptedContext context;
    context.input = &input;
    context.output = &output;
    const int32_t code = examiner.Call("slot 1", [&] { return effect.Initialize(&context); });
    examiner.ExpectCode("slot 1", code, {kOk, kFailed});
    if (code == kOk) {
      const int32_t frame = examiner.Call("slot 4", [&] { return effect.ProcessFrame(&context); });
      examiner.ExpectCode("slot 4", frame, {kOk, kFailed});
      examiner.Expect(picture.GuardsAreWhole(), "nothing written beside the rows",
                      "changed bytes there");
    }
    examiner.Call("slot 7", [&] { return effect.ReleaseResources(); });
    bench_.services().DeleteReleasedFrames();
    bench_.services().TakeLog();
    bench_.gl_errors().Take();
  }

  Bench& bench_;
  std::unique_ptr<host::TemporaryFolder> folder_;
  std::string description_;
  int count_ = 0;
};

// How many places of a file are damaged; at the highest strictness all.
struct Places {
  size_t thorough;
  size_t large;
};
constexpr Places kOfDescription = {60, 400};
constexpr Places kOfShader = {20, 200};  // each is compiled

// Calls `damage` at places all over a text of that size.
template <class Damage>
void ForPlaces(const Bench& bench, size_t size, const Places& places, Damage&& damage) {
  const size_t wanted = bench.Has(kLarge) ? places.large : places.thorough;
  const size_t step = bench.Has(kEverything) ? 1 : std::max<size_t>(1, size / wanted);
  for (size_t at = 0; at < size; at += step) damage(at);
}

std::vector<fs::path> Packages(Bench& bench, bool with_shader) {
  std::vector<fs::path> packages;
  for (const fs::path& folder : bench.packages()) {
    for (const fs::path& package : host::FindPackageFolders(folder)) {
      if (!with_shader || ShaderFile(package)) packages.push_back(package);
    }
  }
  packages.resize(std::min<size_t>(packages.size(), 1));
  return packages;
}

void ExpectSoundPicture(Bench& bench, const std::optional<Rows>& before) {
  bench.examiner().Step("a sound package after the damaged ones");
  Trial trial(&bench, bench.first_effect().unique_name);
  if (!trial.Initialise()) return;
  bench.examiner().Expect(trial.Render({}) == before, "the picture of before", "another");
  trial.Release();
}

std::optional<Rows> SoundPicture(Bench& bench) {
  bench.examiner().Step("a sound package");
  Trial trial(&bench, bench.first_effect().unique_name);
  if (!trial.Initialise()) return std::nullopt;
  auto picture = trial.Render({});
  trial.Release();
  return picture;
}

std::string Flipped(std::string text, size_t at) {
  constexpr unsigned char kMasks[] = {0x01, 0x10, 0x80, 0xFF};
  text[at] = static_cast<char>(static_cast<unsigned char>(text[at]) ^ kMasks[at % 4]);
  return text;
}

// Every how many damaged descriptions an effect is drawn.
constexpr size_t kDrawn = 16;

template <class Change>
void DamageDescriptions(Bench& bench, const char* what, Change&& change) {
  bench.Prepare();
  const auto before = SoundPicture(bench);
  for (const fs::path& original : Packages(bench, false)) {
    DamagedPackage package(bench, original);
    ForPlaces(bench, package.NextDescription().size(), kOfDescription, [&](size_t at) {
      bench.examiner().Step("the package " + host::Utf8(original.filename()) +
                            " with its description " + what + " at byte " + std::to_string(at));
      const std::string text = package.NextDescription();
      if (at < text.size()) package.Write(host::kDescriptionFileName, change(text, at));
      package.Live(at % kDrawn == 0);
    });
  }
  ExpectSoundPicture(bench, before);
}

template <class Change>
void DamageShaders(Bench& bench, const char* what, Change&& change) {
  bench.Prepare();
  const auto before = SoundPicture(bench);
  for (const fs::path& original : Packages(bench, true)) {
    const fs::path shader = *ShaderFile(original);
    const std::string source = ReadFile(shader);
    DamagedPackage package(bench, original);
    ForPlaces(bench, source.size(), kOfShader, [&](size_t at) {
      bench.examiner().Step("the package " + host::Utf8(original.filename()) +
                            " with a shader file " + what + " at byte " + std::to_string(at));
      package.Write(host::kDescriptionFileName, package.NextDescription());
      package.Write(shader.filename(), change(source, at));
      package.Live(true);
    });
  }
  ExpectSoundPicture(bench, before);
}

}  // namespace

void CheckTruncatedDescriptions(Bench& bench) {
  DamageDescriptions(bench, "cut off",
                     [](const std::string& text, size_t at) { return text.substr(0, at); });
}

void CheckFlippedDescriptions(Bench& bench) { DamageDescriptions(bench, "changed", Flipped); }

void CheckTruncatedShaders(Bench& bench) {
  DamageShaders(bench, "cut off",
                [](const std::string& text, size_t at) { return text.substr(0, at); });
}

void CheckFlippedShaders(Bench& bench) { DamageShaders(bench, "changed", Flipped); }

void CheckOddDescriptionsOfPackages(Bench& bench) {
  bench.Prepare();
  const auto before = SoundPicture(bench);
  const std::vector<fs::path> packages = Packages(bench, false);
  if (packages.empty()) return;
  DamagedPackage package(bench, packages.front());
  const std::string name = R"("effect_type": "audio_visualization", "unique_name": "odd)";
  constexpr size_t kMany = 100000;
  const std::pair<const char*, std::string> texts[] = {
      {"that is empty", ""},
      {"of one null byte", std::string(1, '\0')},
      {"of 1 MB of blanks", std::string(1 << 20, ' ')},
      {"of 100,000 brackets", std::string(kMany, '[')},
      {"of 100,000 braces",
       [] {
         std::string text;
         for (size_t i = 0; i < kMany; ++i) text += R"({"a":)";
         return text;
       }()},
      {"that is a number", "7"},
      {"that is a list", "[1, 2, 3]"},
      {"whose name is a number", R"({"unique_name": 7})"},
      {"whose shaders are numbers", "{" + name + R"(1", "opengl_frag": [1, 2, null]})"},
      {"whose parameters are texts", "{" + name + R"(2", "params": ["a", "b"]})"},
      {"with a parameter without anything", "{" + name + R"(3", "params": [{}]})"},
      {"whose shader is the folder itself", "{" + name + R"(4", "opengl_frag": ["."]})"},
      {"whose shader lies outside", "{" + name + R"(5", "opengl_frag": ["../../../etc/passwd"]})"},
      {"with a name of 1 MB", "{" + name + std::string(1 << 20, 'x') + R"("})"},
  };
  for (const auto& [what, text] : texts) {
    bench.examiner().Step(std::string("a package with a description ") + what);
    package.Write(host::kDescriptionFileName, text);
    package.Live(true);
  }
  ExpectSoundPicture(bench, before);
}

}  // namespace krv::tool
