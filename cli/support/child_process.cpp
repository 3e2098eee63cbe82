#include "cli/support/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "cli/support/errors.h"
#include "cli/support/interrupt.h"

namespace cli {
namespace {

// Room for more than a row of pixels at a time; the default of 64 KiB wakes both sides too often.
constexpr int kPipeBytes = 1 << 20;

struct SpawnSetup {
  posix_spawn_file_actions_t files;
  posix_spawnattr_t attributes;

  SpawnSetup() {
    posix_spawn_file_actions_init(&files);
    posix_spawnattr_init(&attributes);
    // The child must not inherit our ignored SIGPIPE: a decoder ends by it when we stop reading.
    // Nor the signals that are blocked while a writer starts.
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
  }
  ~SpawnSetup() {
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
  }
  SpawnSetup(const SpawnSetup&) = delete;
  SpawnSetup& operator=(const SpawnSetup&) = delete;
};

std::string withoutSourceTag(const std::string& line) {
  if (!line.starts_with('[')) return line;
  const std::size_t end = line.find("] ");
  return end == std::string::npos ? line : line.substr(end + 2);
}

// Ours but for what has ffmpeg write colors into what it says, of which people see a part, or a
// report into the working folder.
std::vector<char*> environmentForChild() {
  std::vector<char*> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string_view text = *variable;
    if (!text.starts_with("AV_LOG_FORCE_") && !text.starts_with("FFREPORT=")) {
      variables.push_back(*variable);
    }
  }
  variables.push_back(nullptr);
  return variables;
}

// Waits until the pipe can be read or written, or has lost its other end. A signal ends a wait of
// one thread only, so the request that it made is looked at now and then.
void waitFor(int pipe, short event) {
  constexpr int kLookInterval = 50;  // milliseconds
  pollfd state{pipe, event, 0};
  do {
    throwIfInterrupted();
  } while (poll(&state, 1, kLookInterval) <= 0);
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, Pipe pipe)
    : name_(command.front()), writes_(pipe != Pipe::FromItsOutput) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    throw WorkError("cannot open a pipe to " + name_ + ": " + std::strerror(errno));
  }
  FileDescriptor readEnd(ends[0]);
  FileDescriptor writeEnd(ends[1]);
  fcntl(ends[1], F_SETPIPE_SZ, kPipeBytes);
  errors_ = FileDescriptor(memfd_create("errors", MFD_CLOEXEC));

  SpawnSetup setup;
  if (pipe == Pipe::FromItsOutput) {
    posix_spawn_file_actions_addopen(&setup.files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&setup.files, writeEnd.get(), STDOUT_FILENO);
    pipe_ = std::move(readEnd);
  } else {
    posix_spawn_file_actions_adddup2(&setup.files, readEnd.get(), STDIN_FILENO);
    if (pipe == Pipe::ToItsInput) {
      posix_spawn_file_actions_addopen(&setup.files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    pipe_ = std::move(writeEnd);
  }
  // For our end alone: it is another description than the child's.
  fcntl(pipe_.get(), F_SETFL, O_NONBLOCK);
  posix_spawn_file_actions_adddup2(&setup.files, errors_.get(), STDERR_FILENO);

  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  const std::vector<char*> environment = environmentForChild();
  int error = 0;
  const auto start = [&] {
    error = posix_spawnp(&process_, name_.c_str(), &setup.files, &setup.attributes,
                         arguments.data(), environment.data());
    return error == 0 ? process_ : 0;
  };
  if (writes_) {
    startUnfinishedWriter(start);
  } else {
    start();
  }
  if (error != 0) {
    process_ = -1;
    throw WorkError("cannot start " + inQuotes(name_) + ": " + std::strerror(error) +
                    "; is it installed?");
  }
}

ChildProcess::~ChildProcess() {
  if (process_ < 0) return;
  kill();
  reap();
}

std::size_t ChildProcess::read(std::span<std::uint8_t> buffer) {
  std::size_t filled = 0;
  while (filled < buffer.size()) {
    const ssize_t count = ::read(pipe_.get(), buffer.data() + filled, buffer.size() - filled);
    if (count == 0) break;
    if (count > 0) {
      filled += static_cast<std::size_t>(count);
    } else if (errno == EAGAIN || errno == EINTR) {
      waitFor(pipe_.get(), POLLIN);
    } else {
      throw WorkError("cannot read from " + name_ + ": " + std::strerror(errno));
    }
  }
  return filled;
}

bool ChildProcess::write(std::span<const std::uint8_t> bytes) {
  throwIfInterrupted();
  while (!bytes.empty()) {
    const ssize_t count = ::write(pipe_.get(), bytes.data(), bytes.size());
    if (count >= 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN || errno == EINTR) {
      waitFor(pipe_.get(), POLLOUT);
    } else {
      return false;
    }
  }
  return true;
}

bool ChildProcess::finish() {
  if (process_ < 0) return succeeded_;
  pipe_.close();
  // Without taking its number back: until then kill() is sure to mean this process.
  siginfo_t end = {};
  while (waitid(P_PID, static_cast<id_t>(process_), &end, WEXITED | WNOWAIT) < 0) {
    if (errno != EINTR) throw WorkError("lost track of " + name_ + ": " + std::strerror(errno));
    throwIfInterrupted();
  }
  const int status = reap();
  succeeded_ = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return succeeded_;
}

bool ChildProcess::hasEnded() const {
  if (process_ < 0) return true;
  siginfo_t end = {};
  waitid(P_PID, static_cast<id_t>(process_), &end, WEXITED | WNOWAIT | WNOHANG);
  return end.si_pid == process_;
}

void ChildProcess::terminate() {
  const std::lock_guard lock(reaping_);
  if (process_ > 0) ::kill(-process_, SIGTERM);
}

void ChildProcess::kill() {
  const std::lock_guard lock(reaping_);
  if (process_ > 0) ::kill(process_, SIGKILL);
}

// Of a program that has ended or is about to.
int ChildProcess::reap() {
  if (writes_) forgetUnfinishedWriter();
  const std::lock_guard lock(reaping_);
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
  return status;
}

std::string ChildProcess::firstComplaint() const {
  std::array<char, 1024> text;
  const ssize_t count = pread(errors_.get(), text.data(), text.size(), 0);
  const std::string all(text.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
  const std::size_t start = all.find_first_not_of(" \r\n");
  if (start == std::string::npos) return {};
  return withoutSourceTag(all.substr(start, all.find_first_of("\r\n", start) - start));
}

bool ChildProcess::complainedOf(std::string_view text) const {
  constexpr off_t kSearched = 1 << 16;
  struct stat file = {};
  if (fstat(errors_.get(), &file) != 0) return false;
  std::string end(static_cast<std::size_t>(std::min(file.st_size, kSearched)), ' ');
  const auto count =
      pread(errors_.get(), end.data(), end.size(), file.st_size - static_cast<off_t>(end.size()));
  return count > 0 && end.find(text) != std::string::npos;
}

std::string outputOf(const std::vector<std::string>& command, const std::string& failure,
                     std::string* complaint) {
  constexpr std::size_t kMostPrinted = std::size_t{1} << 28;
  ChildProcess process(command, ChildProcess::Pipe::FromItsOutput);
  std::string output;
  std::array<std::uint8_t, 4096> buffer;
  std::size_t count;
  do {
    count = process.read(buffer);
    output.append(buffer.begin(), buffer.begin() + count);
    if (output.size() > kMostPrinted) throw WorkError(failure + ": there is too much in it");
  } while (count == buffer.size());
  const bool succeeded = process.finish();
  // About the file that ends the command, which the failure names already.
  std::string said = process.firstComplaint();
  const std::string file = command.back() + ": ";
  if (said.starts_with(file)) said.erase(0, file.size());
  if (complaint) *complaint = said;
  if (!succeeded) throw WorkError(failure + ": " + said);
  return output;
}

}  // namespace cli
