#include "tests/cli/scratch.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace tests {
namespace {

constexpr char kOut[] = ".stdout";
constexpr char kErr[] = ".stderr";

}  // namespace

std::vector<std::string> ScratchTest::names() const {
  std::vector<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(path(""))) {
    const std::string name = entry.path().filename();
    if (name != kOut && name != kErr) found.push_back(name);
  }
  std::ranges::sort(found);
  return found;
}

pid_t ScratchTest::start(const std::vector<std::string>& command) const {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const std::string out = path(kOut);
  const std::string err = path(kErr);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addchdir_np(&files, path("").c_str());
  constexpr int kCreate = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, out.c_str(), kCreate, 0600);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, err.c_str(), kCreate, 0600);
  pid_t process = -1;
  const int error =
      posix_spawnp(&process, arguments[0], &files, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  EXPECT_EQ(error, 0) << command.front();
  return process;
}

CommandResult ScratchTest::waitFor(pid_t process) const {
  int status = 0;
  waitpid(process, &status, 0);
  const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return {exitCode, read(kOut), read(kErr)};
}

CommandResult ScratchTest::brisel(std::vector<std::string> arguments) const {
  arguments.insert(arguments.begin(), BRISEL_PROGRAM);
  return run(arguments);
}

void ScratchTest::ffmpeg(const std::string& arguments) const {
  const CommandResult result = run(words("ffmpeg -v error -nostdin -y " + arguments));
  ASSERT_EQ(result.exitCode, 0) << arguments << "\n" << result.err;
}

std::vector<std::string> words(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> found;
  for (std::string word; stream >> word;) found.push_back(word);
  return found;
}

}  // namespace tests
