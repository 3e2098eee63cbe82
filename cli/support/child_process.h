// A child process, run without a shell and joined to this one by one pipe.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/support/file_descriptor.h"

namespace cli {

class ChildProcess {
 public:
  // With ThroughToOurOutput it takes its input from the pipe and writes to our standard output.
  enum class Pipe { FromItsOutput, ToItsInput, ThroughToOurOutput };

  // Starts command[0], looked up in PATH, in a process group of its own: Ctrl-C reaches only us,
  // and we decide what becomes of its work. Throws WorkError when it cannot be started.
  ChildProcess(const std::vector<std::string>& command, Pipe pipe);

  // Kills the program if it is still running.
  ~ChildProcess();

  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Fills the buffer; fewer bytes come back only at the end of the program's output.
  std::size_t read(std::span<std::uint8_t> buffer);

  // Sends all the bytes; false when the program no longer reads them.
  bool write(std::span<const std::uint8_t> bytes);

  // Closes the pipe, waits for the end and tells whether the program succeeded; so does
  // every later call.
  bool finish();

  // Whether the program has ended; does not wait.
  bool hasEnded() const;

  // Asks the program, and those that it has started in its process group, to end.
  void terminate();

  // Ends the program, whatever it is doing. Another thread may call this, to end a wait in read,
  // write or finish.
  void kill();

  // The first line the program wrote to its error output, without the "[decoder @ 0x55]" before it;
  // empty when it wrote no complaint.
  std::string firstComplaint() const;

  // Whether the program wrote that to its error output, of which the end is searched.
  bool complainedOf(std::string_view text) const;

 private:
  int reap();

  std::string name_;
  bool writes_;  // a file, of what it is sent
  FileDescriptor pipe_;
  FileDescriptor errors_;  // a file in memory, so that a talkative program never blocks
  std::mutex reaping_;     // held to change process_, and by other threads to look at it
  pid_t process_ = -1;     // -1 once it has ended
  bool succeeded_ = false;
};

// Runs the command to its end and returns what it printed; throws WorkError with the program's
// complaint, after `failure` and a colon, when it does not succeed, or prints beyond all measure.
// Its first complaint is told in any case.
std::string outputOf(const std::vector<std::string>& command, const std::string& failure,
                     std::string* complaint = nullptr);

}  // namespace cli
