// Runs of frames that are rendered by a process each, on one machine or many.
#pragma once

#include <string>
#include <vector>

#include "cli/farm/chunk_costs.h"
#include "cli/media/frame_range.h"
#include "cli/media/output_target.h"

namespace cli {

struct Chunk {
  FrameRange range;
  double seconds = 0;  // of a process that renders only these: it starts, steps up to them, draws
};

// The range in so many chunks that the dearest is as cheap as can be; fewer when the range has
// fewer frames. `count` is at least 1.
std::vector<Chunk> balancedChunks(FrameRange range, int count, const FrameCosts& costs);

// "the dearest chunk takes about 3.1 s, all frames in one go 41.2 s".
std::string summaryOf(const std::vector<Chunk>& chunks, const FrameCosts& costs);

// Where a chunk goes: to the same numbered pictures, or to a clip of its own with the range in its
// name, by which they sort. `last` is the scene's last frame.
std::string outputOfChunk(const OutputTarget& target, FrameRange chunk, int last);

// A word for a POSIX shell, in quotes where it needs them; a command of such words.
std::string shellWord(const std::string& word);
std::string shellCommand(const std::vector<std::string>& words);

// Throws UsageError when the output cannot be made in chunks.
void checkThatChunksFit(const OutputTarget& target);

}  // namespace cli
