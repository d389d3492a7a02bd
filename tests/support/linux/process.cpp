#include "support/process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <system_error>

namespace krv::test {
namespace {

class FileActions {
 public:
  FileActions() { posix_spawn_file_actions_init(&actions_); }
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  void Open(int descriptor, const std::string& path, int flags) {
    posix_spawn_file_actions_addopen(&actions_, descriptor, path.c_str(), flags, 0600);
  }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_;
};

// The array of C texts that the system takes; they stay in `texts`.
std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// Of two variables with one name the first counts.
std::vector<std::string> Variables(const Environment& environment) {
  std::vector<std::string> variables;
  for (const auto& [name, value] : environment) variables.push_back(name + "=" + value);
  for (char** variable = environ; *variable != nullptr; ++variable) variables.push_back(*variable);
  return variables;
}

}  // namespace

void Process::Start(const std::string& program, const std::vector<std::string>& arguments,
                    Interruptible /*all are*/, const Environment& environment) {
  FileActions files;
  constexpr int kNewFile = O_WRONLY | O_CREAT | O_TRUNC;
  files.Open(STDIN_FILENO, "/dev/null", O_RDONLY);
  files.Open(STDOUT_FILENO, (folder_.path() / "stdout").string(), kNewFile);
  files.Open(STDERR_FILENO, (folder_.path() / "stderr").string(), kNewFile);
  std::vector<std::string> line = {program};
  line.insert(line.end(), arguments.begin(), arguments.end());
  std::vector<std::string> variables = Variables(environment);
  pid_t id = 0;
  const int error = posix_spawnp(&id, program.c_str(), files.get(), nullptr, Pointers(line).data(),
                                 Pointers(variables).data());
  if (error != 0) throw std::system_error(error, std::generic_category(), program);
  process_ = id;
}

void Process::Interrupt() { kill(static_cast<pid_t>(process_), SIGINT); }

int Process::WaitForCode() {
  int status = 0;
  while (waitpid(static_cast<pid_t>(process_), &status, 0) < 0 && errno == EINTR) continue;
  process_ = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace krv::test
