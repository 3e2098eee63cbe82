// A render in chunks that is under way: what is left to do, and how far it is. All of it lies in a
// hidden folder beside the output, so that another process, or another machine, finds it again.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/media/frame_range.h"
#include "cli/media/output_target.h"
#include "cli/pictures/frame.h"
#include "cli/support/file_descriptor.h"

namespace cli {

// What is decided before the first chunk is begun.
struct FarmPlan {
  std::string call;  // the options that it depends on, to tell another render from the same
  std::vector<FrameRange> chunks;
  std::vector<std::string> commands;  // one for each, for a shell in `folder`
  std::string finish;                 // the last command, once all of them are done
  std::filesystem::path folder;       // that the commands are for
  int tries = 1;                      // of a chunk, before it counts as failed
};

class FarmJob {
 public:
  // The folder beside the output, which need not be there.
  static std::filesystem::path folderFor(const OutputTarget& output);

  // Where the chunks go that are clips: into that folder.
  static OutputTarget partsOf(const OutputTarget& output);

  // Throws WorkError where it is there.
  static void checkThatNoneIsThere(const OutputTarget& output);

  // Writes the folder, which no other process may then take. Throws WorkError when that does not
  // work, or another one was first.
  static FarmJob begin(const OutputTarget& output, Depth depth, const FarmPlan& plan);

  // Reads it. Throws WorkError when it holds no such thing, or another process has taken it.
  static FarmJob resume(const OutputTarget& output, Depth depth);

  const std::string& call() const { return call_; }
  const std::filesystem::path& folder() const { return folder_; }
  FrameRange range() const { return {chunks_.front().first, chunks_.back().last}; }
  // These take, and give, numbers of chunks from 1.
  FrameRange chunk(int number) const { return chunks_[static_cast<std::size_t>(number) - 1]; }
  std::vector<int> chunksToDo() const;
  // What a chunk's process said last, for a message about its failure.
  std::string lastWord(int number) const;
  std::string lastWordOfFinish() const;
  // What a render of all would have said: failures that a second try has mended, and notes and
  // warnings that hold for every chunk.
  std::vector<std::string> words() const;
  // What a chunk said of a damaged input, which another try does not mend; empty where none did.
  std::string damage() const;

  std::filesystem::path chunkScript() const { return folder_ / "chunk.sh"; }
  std::filesystem::path finishScript() const { return folder_ / "finish.sh"; }

  // Frames that are there, or in a part that is being written.
  int framesDone();

  bool isFinished() const { return std::filesystem::exists(folder_ / "finished"); }

  // What identifies it where it runs, kept for a later process; empty at first.
  std::string ticket() const;
  void setTicket(const std::string& ticket) const;

  // Whether somebody waits who removes the folder in the end; otherwise the last command does.
  void setAttended(bool attended) const;

  // The folder, and what killed processes have left half-written beside pictures.
  void remove() const;

 private:
  FarmJob(OutputTarget output, Depth depth, std::string call, std::vector<FrameRange> chunks);

  void take();
  void write(const FarmPlan& plan) const;
  bool isDone(int number) const;
  int framesDoneOf(std::size_t index);

  OutputTarget output_;
  Depth depth_;
  std::filesystem::path folder_;
  std::string call_;
  std::vector<FrameRange> chunks_;
  std::vector<int> done_;  // frames of each chunk, as far as was looked
  FileDescriptor taken_;   // the folder, locked as long as this is open
};

}  // namespace cli
