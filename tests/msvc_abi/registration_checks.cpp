#include "c_library.h"
#include "checks.h"
#include "registrar.h"
#include "report.h"

namespace abi {
namespace {

constexpr char kFlagsInMemory[] = "SetEffectFlags 0x808032";
constexpr char kFlagsOnGpu[] = "SetEffectFlags 0x808112";

// Announces the effect of that name. False when none of the registered effects has it.
bool Announce(Host& host, const char* unique_name, RecordingRegistrar& registrar) {
  char names[64];
  snprintf(names, sizeof(names), "SetEffectNames %s ", unique_name);
  for (uint32_t index = 0;; ++index) {
    registrar.calls.Clear();
    const int32_t code = host.plugin.register_effect(index, &registrar);
    if (code != kOk) return !ExpectEqual(code, kNothingToDo, "RegisterKRVEffect past the last");
    const char* first = registrar.calls.line(0);
    if (first != nullptr && memcmp(first, names, strlen(names)) == 0) return true;
  }
}

void CheckEveryKind(Host& host, RecordingRegistrar& registrar) {
  // Kinds of the plug-in's own and parameters without a default are not announced.
  const char* const expected[] = {
      "SetEffectNames every_kind Every kind",
      host.on_gpu() ? kFlagsOnGpu : kFlagsInMemory,
      "SetEffectOption 0",
      "AddFloatParam -1 0 level level 0.25 4 1.5 0",
      "AddIntParam -1 0 count count -3 250 7 1 0",
      "AddColorParam -1 0 color color 3368601 1 16777215 0",
      "AddBoolParam -1 0 on on 1 0",
      "AddStringParam -1 0 gradient_color gradient_color 2,255,0;65280,100 0",
      "AddFloatParam -1 0 hidden_level hidden_level -1 1 -0.5 1",
      "AddIntParam -1 0 hidden_count hidden_count 2 4 3 1 1",
      "AddColorParam -1 0 hidden_color hidden_color 128 0 255 1",
      "AddBoolParam -1 0 hidden_on hidden_on 0 1",
      "AddStringParam -1 0 hidden_text hidden_text note 1",
  };
  if (!Expect(Announce(host, "every_kind", registrar), "the effect of every kind is registered")) {
    return;
  }
  ExpectLines(registrar.calls, expected, "EffectRegistrar");
}

// The one line that registering writes into the host's log. It names the package that the walk of
// the folder met last, which the platform decides.
void CheckLog(Host& host, const char* folder, const RecordingRegistrar& registrar) {
  Recorder& log = host.suites.util.log;
  ExpectEqual(log.count(), 1, "lines logged by RegisterKRVEffectFromConfPath");
  const char* names = registrar.calls.line(0);
  if (!Expect(names != nullptr, "RegisterKRVEffectFromConfPath announces an effect")) return;
  const bool every_kind = strcmp(names, "SetEffectNames every_kind Every kind") == 0;
  char expected[Recorder::kMaxLength];
  snprintf(expected, sizeof(expected), "1: <audio_visual> Register Effect [%s] from path : %s\n",
           every_kind ? "every_kind" : "person", folder);
  ExpectText(log.line(0), expected, "HostUtilSuite::Log");
}

}  // namespace

void CheckRegistration(Host& host, const char* folder) {
  static RecordingRegistrar registrar;
  registrar.calls.Clear();
  host.suites.util.log.Clear();
  ExpectEqual(host.plugin.register_from_path("no such folder", &registrar), kNothingToDo,
              "RegisterKRVEffectFromConfPath of no folder");
  ExpectEqual(registrar.calls.count(), 0, "calls to EffectRegistrar without an effect");
  ExpectEqual(host.plugin.register_from_path(folder, &registrar), kOk,
              "RegisterKRVEffectFromConfPath");
  CheckLog(host, folder, registrar);
  CheckEveryKind(host, registrar);
}

void CheckOtherPackages(Host& host, const char* folder) {
  static RecordingRegistrar registrar;
  ExpectEqual(host.plugin.register_from_path(folder, nullptr), kNothingToDo,
              "RegisterKRVEffectFromConfPath without a registrar");
  ExpectEqual(host.plugin.register_from_path(folder, &registrar), kOk,
              "RegisterKRVEffectFromConfPath of the plug-in's packages");
  Expect(Announce(host, "audio_visualization_bars", registrar), "the effect of bars is registered");
}

}  // namespace abi
