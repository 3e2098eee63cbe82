#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <thread>

#include "cli/commands/chunked_render.h"
#include "cli/commands/commands.h"
#include "cli/farm/farm_engine.h"
#include "cli/pipeline/progress.h"
#include "cli/support/errors.h"
#include "cli/support/interrupt.h"

namespace cli {
namespace {

struct FarmOptions {
  ChunkedOptions chunked;
  std::string engine;
  EngineOptions engineOptions;
  bool resume = false;
};

// Chunks side by side use the processors better than threads within each.
std::unique_ptr<FarmEngine> engineOf(const CLI::App& command, FarmOptions& options) {
  RendererOptions& renderer = options.chunked.render.renderer;
  if (command["--jobs"]->empty()) renderer.jobs = 1;
  options.engineOptions.jobs = renderer.jobs;
  const bool isSlurm = options.engine == "slurm";
  if (!isSlurm && !options.engineOptions.partition.empty()) {
    throw UsageError("--partition is for --engine slurm");
  }
  return isSlurm ? slurmEngine(options.engineOptions) : localEngine(options.engineOptions);
}

// The parts of a clip, sound included, or a last look whether all pictures are there and whole; any
// that is not is drawn.
std::string finishCommand(const FarmOptions& options, const RenderJob& job,
                          const std::vector<std::string>& given) {
  const std::string output = job.target.path.string();
  if (job.target.holdsPictures()) {
    return chunkCommand(options.chunked.scene, job.range, output, given);
  }
  std::vector<std::string> words = {programName(),        "join", "--frames",
                                    rangeText(job.range), "-o",   asFile(output)};
  if (options.chunked.render.output.overwrite) words.push_back("--overwrite");
  return shellCommand(words) + " " +
         shellWord((FarmJob::folderFor(job.target) / "parts").string()) + "/*";
}

// The options as they were given, but those named and those that say how the farm works.
std::vector<std::string> optionsOfRender(const CLI::App& command,
                                         std::vector<std::string> leftOut) {
  leftOut.insert(leftOut.end(), {"--chunks", "--jobs", "--overwrite", "--skip-existing", "--engine",
                                 "--retries", "--partition", "--resume"});
  return givenOptions(command, leftOut);
}

// What must be the same when it is resumed: all that shows in the frames, and which they are.
std::string callOf(const CLI::App& command, const RenderJob& job) {
  auto words = optionsOfRender(command, {});
  words.insert(words.begin(), {job.plan.scene.file.string(), sceneDigest(job.plan.scene)});
  return shellCommand(words);
}

FarmJob beginJob(const CLI::App& command, FarmOptions& options, FarmEngine& engine,
                 const RenderJob& job, const std::string& call) {
  const FrameCosts costs = measureJob(job, options.chunked.render);
  const int count = options.chunked.chunks > 0 ? options.chunked.chunks : engine.slots();
  const std::vector<Chunk> chunks = balancedChunks(job.range, count, costs);
  note("measured " + summaryOf(costs) + "; " + summaryOf(chunks, costs));

  auto given = optionsOfRender(command, {"--frames", "--output"});
  given.insert(given.end(),
               {"--jobs", std::to_string(options.engineOptions.jobs), "--skip-existing"});
  FarmPlan plan;
  plan.folder = std::filesystem::current_path();
  plan.call = call;
  plan.tries = options.engine == "slurm" ? options.engineOptions.retries + 1 : 1;
  const OutputTarget parts = FarmJob::partsOf(job.target);
  for (const Chunk& chunk : chunks) {
    const std::string output = outputOfChunk(parts, chunk.range, job.range.last);
    plan.chunks.push_back(chunk.range);
    plan.commands.push_back(chunkCommand(options.chunked.scene, chunk.range, output, given));
  }
  plan.finish = finishCommand(options, job, given);
  return FarmJob::begin(job.target, job.plan.depth, plan);
}

// With --overwrite: what is there must not pass for what a chunk has drawn.
void removeOutputs(const RenderJob& job) {
  if (!job.target.holdsPictures()) return;
  std::error_code ignored;
  for (const int frame : job.frames) std::filesystem::remove(job.target.fileOf(frame), ignored);
}

FarmJob resumeJob(const std::string& call, const RenderJob& job) {
  FarmJob farm = FarmJob::resume(job.target, job.plan.depth);
  if (farm.call() == call) return farm;
  throw UsageError("--resume: the chunks of " + job.target.name() +
                   " were begun with other options, or the scene has changed since; remove " +
                   inQuotes(farm.folder().string()) + " to begin anew");
}

std::string failureOf(const FarmJob& farm, const OutputTarget& target) {
  const std::vector<int> missing = farm.chunksToDo();
  if (missing.empty()) {
    return target.name() + " could not be put together: " + farm.lastWordOfFinish();
  }
  const auto said = [&](int number) { return !farm.lastWord(number).empty(); };
  const auto telling = std::ranges::find_if(missing, said);
  const int number = telling == missing.end() ? missing.front() : *telling;
  return "the frames " + rangeText(farm.chunk(number)) + " failed: " +
         (said(number)
              ? farm.lastWord(number)
              : "their process was killed, or does not see " + inQuotes(farm.folder().string()));
}

// Looks at the files now and then until nothing runs any more.
void waitFor(FarmEngine& engine, const std::function<void()>& look) {
  constexpr std::chrono::milliseconds kLookInterval(200);
  std::string hindrance;
  while (engine.isRunning()) {
    throwIfInterrupted();
    look();
    if (engine.hindrance() != hindrance) {
      hindrance = engine.hindrance();
      if (!hindrance.empty()) note(hindrance);
    }
    std::this_thread::sleep_for(kLookInterval);
  }
  look();
}

// An engine that refuses, for want of such a partition perhaps, leaves nothing to resume.
void startChunks(const FarmJob& farm, FarmEngine& engine, bool isNew) {
  try {
    engine.start(farm, farm.chunksToDo());
  } catch (const WorkError&) {
    if (isNew) farm.remove();
    throw;
  }
}

// A task that was ended as a whole, by a lack of memory for instance, is started again from here.
void runChunks(FarmJob& farm, FarmEngine& engine, const RenderJob& job, int retries, bool isNew) {
  const int there = farm.framesDone();
  const int missing = job.range.count() - there;
  if (there > 0) {
    note(std::to_string(there) + " of " + std::to_string(job.range.count()) + " frames of " +
         job.target.name() + " are there already");
  }
  Progress progress(job.target.path.filename().string(), 0, std::max(1, missing));
  int shown = 0;
  const auto showUpTo = [&](int frames) {
    for (; shown < frames; ++shown) progress.frameDone();
  };
  const auto look = [&] { showUpTo(farm.framesDone() - there); };
  bool isRunning = engine.attach(farm);
  for (int round = 0; isRunning || !farm.isFinished(); ++round) {
    if (!isRunning) startChunks(farm, engine, round == 0 && isNew);
    isRunning = false;
    waitFor(engine, look);
    if (farm.isFinished()) break;
    const std::string failure = failureOf(farm, job.target);
    const std::string verdict = engine.verdict();
    if (round == retries || !verdict.empty()) {
      throw WorkError(failure + (verdict.empty() ? "" : " (" + verdict + ")") +
                      "; --resume goes on with what is missing");
    }
    note(failure + "; trying again");
  }
  showUpTo(missing);
  if (missing > 0) progress.finish();
}

void farm(const CLI::App& command, FarmOptions& options) {
  OutputOptions& output = options.chunked.render.output;
  const bool isThere =
      options.resume &&
      std::filesystem::exists(FarmJob::folderFor(parseOutputTarget(output)) / "job.json");
  const auto engine = engineOf(command, options);
  if (options.resume) output.skipExisting = !output.overwrite || isThere;
  if (isThere) output.overwrite = false;
  const RenderJob job = planChunkedJob(options.chunked);
  const std::string call = callOf(command, job);
  if (!isThere) FarmJob::checkThatNoneIsThere(job.target);
  if (!isThere && job.frames.empty()) {
    note("all frames of " + job.target.name() + " are there already");
    return;
  }
  FarmJob farm = isThere ? resumeJob(call, job) : beginJob(command, options, *engine, job, call);
  if (output.overwrite) removeOutputs(job);
  farm.setAttended(true);
  try {
    const int retries = options.engine == "slurm" ? options.engineOptions.retries : 0;
    runChunks(farm, *engine, job, retries, !isThere);
  } catch (const Interrupted&) {
    farm.setAttended(false);
    throw Interrupted("interrupted; " + engine->leave());
  }
  for (const std::string& word : farm.words()) std::fprintf(stderr, "%s\n", word.c_str());
  const std::string damage = farm.damage();
  farm.remove();
  if (!damage.empty()) throw WorkError(damage + "; " + job.target.name() + kWrittenAllTheSame);
}

}  // namespace

void addFarmCommand(CLI::App& app) {
  const auto options = std::make_shared<FarmOptions>();
  CLI::App* command =
      app.add_subcommand("farm", "Render a scene in chunks on many machines, or side by side");
  command
      ->add_option("--engine", options->engine,
                   "What runs the chunks: slurm, on its machines, which\n"
                   "see the same folders; or local, GNU parallel here")
      ->option_text("slurm|local")
      ->check(CLI::IsMember({"slurm", "local"}))
      ->required();
  addChunkCountOption(*command, options->chunked,
                      "How many chunks; otherwise one for each processor\n"
                      "of the engine, up to 100");
  command
      ->add_option("--retries", options->engineOptions.retries,
                   "How often a chunk that fails is tried again, twice\n"
                   "if not given; complete frames are kept")
      ->option_text("N")
      ->check(CLI::Range(0, 100));
  command
      ->add_option("--partition", options->engineOptions.partition,
                   "Slurm's partition, otherwise its default")
      ->type_name("NAME");
  command->add_flag("--resume", options->resume,
                    "Go on with a farm that was interrupted or failed");
  addChunkedOptions(*command, options->chunked);
  command->callback([command, options] { farm(*command, *options); });
}

}  // namespace cli
