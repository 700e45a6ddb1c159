#include "tools/check/program_output.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <sstream>

extern char** environ;

namespace quorvel::check {

namespace {

/// The path of an installed program; empty when there is no such program.
std::string FindProgram(const std::string& name) {
  const char* const path = std::getenv("PATH");
  std::string all = path == nullptr ? "" : path;
  all += ":/usr/sbin:/sbin";
  std::istringstream folders(all);
  for (std::string program; std::getline(folders, program, ':');) {
    program += "/" + name;
    if (program.starts_with('/') && access(program.c_str(), X_OK) == 0) return program;
  }
  return {};
}

/// Starts the program with its output on `output` and its errors unread; -1 on failure.
pid_t Start(std::vector<std::string> command, int output) {
  command.front() = FindProgram(command.front());
  if (command.front().empty()) return -1;
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t streams{};
  posix_spawn_file_actions_init(&streams);
  posix_spawn_file_actions_addopen(&streams, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&streams, output, STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&streams, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t started = -1;
  const int error =
      posix_spawn(&started, arguments.front(), &streams, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&streams);
  return error == 0 ? started : -1;
}

bool WaitForBytes(int descriptor, SteadyTime deadline) {
  const auto left =
      std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
  pollfd readable{descriptor, POLLIN, 0};
  return poll(&readable, 1, static_cast<int>(std::max<int64_t>(left.count(), 0))) > 0;
}

/// All that comes from the descriptor; nothing when the end does not come before `deadline`.
std::optional<std::string> ReadAll(int descriptor, SteadyTime deadline) {
  std::string all;
  std::array<char, 4096> bytes{};
  while (WaitForBytes(descriptor, deadline)) {
    const ssize_t count = read(descriptor, bytes.data(), bytes.size());
    if (count <= 0) return count == 0 ? std::optional(std::move(all)) : std::nullopt;
    all.append(bytes.data(), static_cast<size_t>(count));
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> OutputOf(const std::vector<std::string>& command, SteadyTime deadline) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return std::nullopt;
  for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
  const pid_t program = Start(command, ends[1]);
  close(ends[1]);
  auto output = program < 0 ? std::nullopt : ReadAll(ends[0], deadline);
  close(ends[0]);
  if (program < 0) return std::nullopt;
  if (!output) kill(program, SIGKILL);
  int status = 0;
  waitpid(program, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? std::move(output) : std::nullopt;
}

}  // namespace quorvel::check
