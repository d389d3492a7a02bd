#include "platform/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

#include <optional>
#include <system_error>
#include <thread>

namespace krv::host::platform {
namespace {

using Clock = std::chrono::steady_clock;

// Nothing when the program does not end in time.
std::optional<int> WaitUntil(pid_t id, Clock::time_point end) {
  constexpr std::chrono::milliseconds kPause(5);
  for (;;) {
    int status = 0;
    const pid_t ended = waitpid(id, &status, WNOHANG);
    if (ended == id) return status;
    if (Clock::now() >= end) return std::nullopt;
    std::this_thread::sleep_for(kPause);
  }
}

// The array of C texts that the system takes; they stay in `texts`.
std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// 0, or an error number.
int Start(const ChildCommand& command, pid_t* id) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, command.output.c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
  std::vector<std::string> line = {command.program.string()};
  line.insert(line.end(), command.arguments.begin(), command.arguments.end());
  const int error =
      posix_spawn(id, command.program.c_str(), &files, nullptr, Pointers(line).data(), environ);
  posix_spawn_file_actions_destroy(&files);
  return error;
}

}  // namespace

ChildEnd RunChild(const ChildCommand& command) {
  const Clock::time_point end = Clock::now() + command.limit;
  pid_t id = 0;
  if (const int error = Start(command, &id); error != 0) {
    return {ChildEnd::Kind::kNotStarted, 0, std::generic_category().message(error)};
  }
  const auto status = WaitUntil(id, end);
  if (!status) {
    kill(id, SIGKILL);
    waitpid(id, nullptr, 0);
    return {ChildEnd::Kind::kTimedOut, 0, {}};
  }
  if (WIFEXITED(*status)) return {ChildEnd::Kind::kEnded, WEXITSTATUS(*status), {}};
  const int signal = WTERMSIG(*status);
  return {ChildEnd::Kind::kCrashed, 0,
          std::string("SIG") + sigabbrev_np(signal) + ", " + sigdescr_np(signal)};
}

}  // namespace krv::host::platform
