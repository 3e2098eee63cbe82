// Programs run in a folder of a test's own.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <string>
#include <vector>

#include "tests/support/folder_test.h"

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
class ScratchTest : public FolderTest {
 protected:
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
};

std::vector<std::string> words(const std::string& text);

}  // namespace tests
