#include <iostream>
#include <memory>

#include "cli/commands/chunked_render.h"
#include "cli/commands/commands.h"

namespace cli {
namespace {

void printChunks(const CLI::App& command, ChunkedOptions& options) {
  const RenderJob job = planChunkedJob(options);
  const FrameCosts costs = measureJob(job, options.render);
  const std::vector<Chunk> chunks = balancedChunks(job.range, options.chunks, costs);
  const auto given = givenOptions(command, {"--chunks", "--frames", "--output"});
  for (const Chunk& chunk : chunks) {
    const std::string output = outputOfChunk(job.target, chunk.range, job.plan.frames - 1);
    std::cout << chunkCommand(options.scene, chunk.range, output, given) << "\n";
  }
  note("measured " + summaryOf(costs) + "; " + summaryOf(chunks, costs));
  if (static_cast<int>(chunks.size()) < options.chunks) {
    note("there are only " + std::to_string(chunks.size()) + " frames to share out");
  }
}

}  // namespace

void addChunksCommand(CLI::App& app) {
  const auto options = std::make_shared<ChunkedOptions>();
  CLI::App* command =
      app.add_subcommand("chunks", "Print render commands that share out a scene, for any queue");
  addChunkCountOption(*command, *options,
                      "How many commands to print, each for a part of the\n"
                      "frames that takes about as long as the others")
      ->required();
  addChunkedOptions(*command, *options);
  command->callback([command, options] { printChunks(*command, *options); });
}

}  // namespace cli
