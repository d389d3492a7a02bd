// RegisterKRVEffectFromConfPath and RegisterKRVEffect.
#include "platform/file_system.h"
#include "temporary_folder.h"
#include "utf8_path.h"
#include "validate/announcement_recorder.h"
#include "validate/bench.h"
#include "validate/checks.h"

namespace krv::tool {
namespace {

constexpr size_t kLongText = 1 << 20;  // bytes

int32_t RegisterPath(Bench& bench, const char* path, EffectRegistrar* registrar) {
  return bench.examiner().Call("RegisterKRVEffectFromConfPath", [&] {
    return bench.plugin().register_effect_from_conf_path(path, registrar);
  });
}

int32_t RegisterIndex(Bench& bench, uint32_t index, EffectRegistrar* registrar) {
  return bench.examiner().Call("RegisterKRVEffect",
                               [&] { return bench.plugin().register_effect(index, registrar); });
}

uint32_t CountEffects(Bench& bench) {
  uint32_t count = 0;
  host::RecordingRegistrar ignored;
  while (RegisterIndex(bench, count, &ignored) == kOk) ++count;
  return count;
}

std::unique_ptr<host::TemporaryFolder> MakeFolder() {
  std::string error;
  auto folder = host::TemporaryFolder::Create(&error);
  if (folder == nullptr) throw CannotGoOn(error);
  return folder;
}

void RefusePath(Bench& bench, const std::string& what, const std::string& path,
                std::initializer_list<int32_t> codes = {kNothingToDo}) {
  Examiner& examiner = bench.examiner();
  examiner.Step("RegisterKRVEffectFromConfPath of " + what);
  AnnouncementRecorder announced(&examiner, kEffectFlagsInMemory);
  examiner.ExpectCode("RegisterKRVEffectFromConfPath",
                      RegisterPath(bench, path.c_str(), &announced), codes);
  examiner.ExpectCount("calls of the registrar", announced.calls(), 0);
}

}  // namespace

void CheckAnnouncements(Bench& bench) {
  bench.Prepare();
  Examiner& examiner = bench.examiner();
  for (const bool device : {false, true}) {
    examiner.Step(device ? "announcements to a host with a GPU device" : "announcements");
    bench.Start(device ? HostPlan{.device_apis = {kDeviceOpenGl}} : HostPlan{});
    for (uint32_t index = 0; index < bench.effects().size(); ++index) {
      AnnouncementRecorder announced(&examiner, device ? kEffectFlagsOnGpu : kEffectFlagsInMemory);
      examiner.ExpectCode("RegisterKRVEffect", RegisterIndex(bench, index, &announced), {kOk});
      announced.Finish();
    }
  }
}

void CheckIndices(Bench& bench) {
  bench.Prepare();
  Examiner& examiner = bench.examiner();
  AnnouncementRecorder announced(&examiner, kEffectFlagsInMemory);
  const auto count = static_cast<uint32_t>(bench.effects().size());
  for (const uint32_t index : {count, count + 1, uint32_t{0x7FFFFFFF}, uint32_t{0xFFFFFFFF}}) {
    examiner.Step("RegisterKRVEffect of index " + std::to_string(index) + " of " +
                  std::to_string(count));
    examiner.ExpectCode("RegisterKRVEffect", RegisterIndex(bench, index, &announced),
                        {kNothingToDo});
    examiner.ExpectCount("calls of the registrar", announced.calls(), 0);
  }
}

void CheckRegistrationNullArguments(Bench& bench) {
  bench.Prepare();
  Examiner& examiner = bench.examiner();
  const uint32_t count = CountEffects(bench);
  examiner.Step("RegisterKRVEffect without a registrar");
  examiner.ExpectCode("RegisterKRVEffect", RegisterIndex(bench, 0, nullptr), {kNothingToDo});
  examiner.Step("RegisterKRVEffectFromConfPath without a path");
  AnnouncementRecorder announced(&examiner, kEffectFlagsInMemory);
  examiner.ExpectCode("RegisterKRVEffectFromConfPath", RegisterPath(bench, nullptr, &announced),
                      {kNothingToDo});
  examiner.ExpectCount("calls of the registrar", announced.calls(), 0);
  for (const std::filesystem::path& folder : bench.packages()) {
    examiner.Step("RegisterKRVEffectFromConfPath without a registrar");
    examiner.ExpectCode("RegisterKRVEffectFromConfPath",
                        RegisterPath(bench, host::Utf8(folder).c_str(), nullptr), {kNothingToDo});
  }
  examiner.ExpectCount("effects afterwards", CountEffects(bench), count);
}

void CheckBadPaths(Bench& bench) {
  bench.Start();
  const auto folder = MakeFolder();
  RefusePath(bench, "an empty text", "");
  RefusePath(bench, "a folder that is not there", host::Utf8(folder->path() / "none"));
  RefusePath(bench, "an empty folder", host::Utf8(folder->path()));
  RefusePath(bench, "a text of 1 MB", std::string(kLongText, 'x'), {kNothingToDo, kFailed});
  RefusePath(bench, "a text that is not UTF-8", "\xff\xfe\x80/x", {kNothingToDo, kFailed});
  RefusePath(bench, "a text with placeholders", "%s%n%d");
  std::error_code code;
  host::platform::CreateFolder(folder->path() / "description.json", code);
  RefusePath(bench, "a folder whose description is a folder", host::Utf8(folder->path()));
}

void CheckRegistrationAgain(Bench& bench) {
  bench.Prepare();
  Examiner& examiner = bench.examiner();
  const uint32_t count = CountEffects(bench);
  examiner.ExpectCount("effects in all", count, static_cast<int64_t>(bench.effects().size()));
  for (const std::filesystem::path& folder : bench.packages()) {
    examiner.Step("the same packages once more");
    AnnouncementRecorder announced(&examiner, kEffectFlagsInMemory);
    examiner.ExpectCode("RegisterKRVEffectFromConfPath",
                        RegisterPath(bench, host::Utf8(folder).c_str(), &announced), {kOk});
    announced.Finish();
  }
  examiner.ExpectCount("effects afterwards", CountEffects(bench), count);
}

}  // namespace krv::tool
