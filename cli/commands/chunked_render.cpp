#include "cli/commands/chunked_render.h"

#include <algorithm>
#include <fstream>

#include "cli/commands/commands.h"
#include "cli/support/errors.h"

namespace cli {

void addChunkedOptions(CLI::App& command, ChunkedOptions& options) {
  command.add_option("SCENE", options.scene, "The scene file, TOML")->type_name("")->required();
  addRenderOptions(command, options.render);
}

CLI::Option* addChunkCountOption(CLI::App& command, ChunkedOptions& options,
                                 const std::string& help) {
  return command.add_option("-n,--chunks", options.chunks, help)
      ->option_text("N")
      ->check(CLI::Range(1, 100'000));
}

RenderJob planChunkedJob(ChunkedOptions& options) {
  if (options.render.overrides.input == "-") {
    throw UsageError(
        "each chunk reads the input anew, which standard input cannot give; name a file");
  }
  options.render.scenes = {options.scene};
  std::vector<RenderJob> jobs = planJobs(options.render);
  checkThatChunksFit(jobs.front().target);
  return std::move(jobs.front());
}

FrameCosts measureJob(const RenderJob& job, const RenderOptions& options) {
  FrameCosts costs = measureFrames(job.plan, job.target, job.range, options.renderer);
  if (!options.fromState.empty()) {
    costs.preroll = 0;
    std::ranges::fill(costs.steps, 0.0);
  }
  return costs;
}

std::vector<std::string> givenOptions(const CLI::App& command,
                                      const std::vector<std::string>& leftOut) {
  std::vector<std::string> words;
  for (const CLI::Option* option : command.get_options()) {
    if (option->count() == 0 || option->get_positional()) continue;
    const std::string name = "--" + option->get_lnames().front();
    if (std::ranges::find(leftOut, name) != leftOut.end()) continue;
    if (option->get_items_expected_max() == 0) {
      words.push_back(name);
      continue;
    }
    for (const std::string& value : option->results()) {
      if (value.starts_with('-')) {  // which by itself would be taken for an option
        words.push_back(name + "=" + value);
      } else {
        words.insert(words.end(), {name, value});
      }
    }
  }
  return words;
}

std::string programName() {
  std::ifstream words("/proc/self/cmdline");
  std::string name;
  std::getline(words, name, '\0');
  return name.empty() ? "brisel" : name;
}

std::string asFile(const std::string& name) {
  return name.starts_with('-') ? "./" + name : name;
}

std::string chunkCommand(const std::string& scene, FrameRange range, const std::string& output,
                         const std::vector<std::string>& options) {
  std::vector<std::string> words = {programName(),    "render", asFile(scene), "--frames",
                                    rangeText(range), "-o",     asFile(output)};
  words.insert(words.end(), options.begin(), options.end());
  std::string command = shellCommand(words);
  if (command.find('\n') != command.npos) {
    throw UsageError(
        "a command for a chunk is one line, so no name or value may have a line break");
  }
  return command;
}

}  // namespace cli
