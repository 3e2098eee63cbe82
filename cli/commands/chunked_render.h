// A render that is shared out in chunks, each by a command line of its own.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "cli/commands/render_job.h"
#include "cli/farm/chunks.h"

namespace cli {

struct ChunkedOptions {
  std::string scene;
  int chunks = 0;  // as many at most
  RenderOptions render;
};

// SCENE and all options of a render.
void addChunkedOptions(CLI::App& command, ChunkedOptions& options);
// -n, --chunks with that help.
CLI::Option* addChunkCountOption(CLI::App& command, ChunkedOptions& options,
                                 const std::string& help);

// Throws as planJobs does, and when the output or the input does not go with chunks.
RenderJob planChunkedJob(ChunkedOptions& options);

// What the job's frames cost. Where chunks go on from states, no steps count: one is close by.
FrameCosts measureJob(const RenderJob& job, const RenderOptions& options);

// The options of the command as they were given, but those named ("--frames").
std::vector<std::string> givenOptions(const CLI::App& command,
                                      const std::vector<std::string>& leftOut);

// The program's own name or path, as it was called.
std::string programName();

// A file's name as a word of a command, which an option would begin likewise.
std::string asFile(const std::string& name);

// Renders that range, from the same folder. Throws UsageError when it takes more than a line.
std::string chunkCommand(const std::string& scene, FrameRange range, const std::string& output,
                         const std::vector<std::string>& options);

}  // namespace cli
