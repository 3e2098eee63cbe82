// A folder of a test's own, and programs run in it.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace tests {

struct CommandResult {
  int exitCode;
  std::string out;
  std::string err;

  // Checks an error message: one line that begins with "brisel: ".
  bool isOneSentence() const {
    return err.starts_with("brisel: ") && err.find('\n') == err.size() - 1;
  }
};

// The program runs in the folder, so names are short.
class ScratchTest : public ::testing::Test {
 protected:
  std::filesystem::path path(const std::string& name) const { return folder_.path() / name; }
  void write(const std::string& name, const std::string& text) const;
  std::string read(const std::string& name) const;
  // The names in the folder, hidden ones too, sorted; those of `run`'s own log files left out.
  std::vector<std::string> names() const;

  // Starts a program of this build or of PATH in the folder.
  pid_t start(const std::vector<std::string>& command) const;
  CommandResult waitFor(pid_t process) const;
  CommandResult run(const std::vector<std::string>& command) const {
    return waitFor(start(command));
  }
  CommandResult brisel(std::vector<std::string> arguments) const;

  // "ffmpeg -v error -y ..." on words separated by spaces, which must work.
  void ffmpeg(const std::string& words) const;

 private:
  TemporaryFolder folder_;
};

std::vector<std::string> words(const std::string& text);

// What an Error thrown by `work` says; "none" without one.
template <typename Error, typename Work>
std::string errorOf(const Work& work) {
  try {
    work();
  } catch (const Error& error) {
    return error.what();
  }
  return "none";
}

// Pairs of what is given and how the complaint about it begins.
using Complaints = std::vector<std::pair<std::string, std::string>>;

template <typename Complain>
void expectComplaints(const Complaints& cases, const Complain& complain) {
  for (const auto& [given, expected] : cases) {
    const std::string message = complain(given);
    EXPECT_TRUE(message.starts_with(expected)) << given << "\nis answered by: " << message;
  }
}

}  // namespace tests
