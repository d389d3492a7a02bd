#include "validate/check_runner.h"

#include <algorithm>
#include <deque>
#include <fstream>

#include "command.h"
#include "platform/child_process.h"
#include "platform/file_system.h"
#include "platform/process.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

using host::platform::ChildEnd;
using Clock = std::chrono::steady_clock;

std::vector<std::string> Arguments(const Check& check, const BenchOptions& options,
                                   const std::filesystem::path& journal) {
  std::vector<std::string> arguments = {"validate",      host::Utf8(options.plugin),
                                        "--strictness",  std::to_string(options.strictness),
                                        kRunCheckOption, check.name,
                                        kJournalOption,  host::Utf8(journal)};
  for (const std::filesystem::path& folder : options.packages) {
    arguments.insert(arguments.end(), {"--packages", host::Utf8(folder)});
  }
  return arguments;
}

std::string LastLines(const std::filesystem::path& file) {
  constexpr size_t kLines = 12;
  std::ifstream stream(host::platform::OpenablePath(file), std::ios::binary);
  std::deque<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty()) lines.push_back(line);
    if (lines.size() > kLines) lines.pop_front();
  }
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

// How a process ended that was still at work, or that ended badly after its work.
void Blame(const ChildEnd& end, std::chrono::milliseconds limit, CheckResult* result) {
  const std::string during = result->journal.complete ? std::string(" while the process ended")
                                                      : " during: " + result->journal.step;
  switch (end.kind) {
    case ChildEnd::Kind::kTimedOut:
      result->outcome = Outcome::kHung;
      result->reason = "no end after " + std::to_string(limit.count() / 1000) + " s" + during;
      break;
    case ChildEnd::Kind::kNotStarted:
      result->outcome = Outcome::kFailed;
      result->reason = "the process of the test cannot be started: " + end.reason;
      break;
    case ChildEnd::Kind::kCrashed:
      result->outcome = Outcome::kCrashed;
      result->reason = "crashed (" + end.reason + ")" + during;
      break;
    case ChildEnd::Kind::kEnded:
      result->outcome = Outcome::kCrashed;
      result->reason = "the process ended itself (code " + std::to_string(end.code) + ")" + during;
  }
}

}  // namespace

const char* OutcomeName(Outcome outcome) {
  switch (outcome) {
    case Outcome::kPassed:
      return "passed";
    case Outcome::kFailed:
      return "failed";
    case Outcome::kCrashed:
      return "crashed";
    default:
      return "hung";
  }
}

CheckResult RunInChild(const Check& check, const BenchOptions& options,
                       std::chrono::milliseconds limit, const std::filesystem::path& scratch) {
  const std::filesystem::path journal = scratch / (std::string(check.name) + ".journal");
  const std::filesystem::path output = scratch / (std::string(check.name) + ".output");
  const auto start = Clock::now();
  const ChildEnd end = host::platform::RunChild({.program = host::platform::ExecutableFile(),
                                                 .arguments = Arguments(check, options, journal),
                                                 .output = output,
                                                 .limit = limit});
  CheckResult result;
  result.check = &check;
  result.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  result.journal = ReadJournal(journal);
  const bool ended_well = end.kind == ChildEnd::Kind::kEnded && end.code == kExitOk;
  if (!ended_well || !result.journal.complete) {
    Blame(end, limit, &result);
    result.output = LastLines(output);
  } else if (!result.journal.failures.empty()) {
    result.outcome = Outcome::kFailed;
  }
  return result;
}

int RunHere(const Check& check, const BenchOptions& options, const std::filesystem::path& journal) {
  host::platform::CrashQuietly();
  JournalWriter writer(journal);
  Examiner examiner(&writer);
  try {
    // Never destroyed: what a plug-in is started with lives as long as it is loaded.
    static Bench* bench = nullptr;
    bench = new Bench(options, &examiner);
    check.run(*bench);
    examiner.Step("ShutdownKRV at the end");
    const int32_t code = examiner.Call("ShutdownKRV", [] { return bench->plugin().shutdown(); });
    examiner.ExpectCode("ShutdownKRV", code, {kOk});
  } catch (const std::exception& error) {
    examiner.Fail(error.what());
  }
  examiner.Finish();
  return kExitOk;
}

}  // namespace krv::tool
