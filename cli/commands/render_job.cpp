#include "cli/commands/render_job.h"

#include <filesystem>
#include <map>
#include <string_view>

#include "cli/scene/layer_effect.h"

namespace cli {
namespace {

constexpr std::string_view kSceneField = "{scene}";

bool namesScene(const std::string& output) {
  return output.find(kSceneField) != std::string::npos;
}

// With the name of the scene's file, its extension left out, in place of {scene}.
std::string outputOfScene(std::string output, const std::filesystem::path& scene) {
  const std::string name = scene.stem().string();
  for (std::size_t at = 0; (at = output.find(kSceneField, at)) != std::string::npos;) {
    output.replace(at, kSceneField.size(), name);
    at += name.size();
  }
  return output;
}

FrameRange rangeToRender(const RenderOptions& options, const ScenePlan& plan) {
  const FrameRange whole{0, plan.frames - 1};
  if (!options.frames) return whole;
  const FrameRange range = parseFrameRange(*options.frames);
  if (range.last > whole.last) {
    throw UsageError("--frames " + inQuotes(*options.frames) + ": the scene has the frames 0-" +
                     std::to_string(whole.last));
  }
  return range;
}

FoundSound noSound() {
  return std::async(std::launch::deferred, [] { return std::optional<Soundtrack>(); });
}

// The sound for the frames of the range: the file of --audio, else the input's sound.
FoundSound soundtrackOf(const OutputTarget& target, const OutputOptions& options,
                        const ScenePlan& plan, FrameRange range) {
  const bool chosen = !options.audio.empty();
  if (!hasSound(target.format)) {
    if (chosen) throw UsageError("--audio: there is no sound in " + target.name());
    return noSound();
  }
  if (options.noAudio || !(chosen || (plan.input && !plan.input->source.isSequence))) {
    return noSound();
  }
  const MediaSource source =
      chosen ? findSource(options.audio, {.still = true}) : plan.input->source;
  const double perSecond = plan.rate.perSecond();
  FoundSound sound =
      std::async(findSoundtrack, source, range.first / perSecond, range.count() / perSecond);
  if (chosen && !sound.get()) throw WorkError("there is no sound in " + inQuotes(options.audio));
  return sound;
}

RenderJob planJob(const std::string& file, const RenderOptions& options) {
  const bool isAlone = options.scenes.size() == 1;
  const std::string name = isAlone ? "" : file;
  return namingScene(name, [&] {
    OutputOptions output = options.output;
    output.name = outputOfScene(output.name, file);
    const OutputTarget target = parseOutputTarget(output);
    ScenePlan plan = planScene(scene::readScene(file), options.overrides);
    const FrameRange range = rangeToRender(options, plan);
    std::vector<int> frames = framesToWrite(target, range, plan.depth, output);
    // A wrong value in the last scene must not surface only at the end of a long run.
    if (!isAlone) layerEffects(plan, options.renderer.module);
    auto sound = soundtrackOf(target, output, plan, range);
    return RenderJob{name, std::move(plan), target, range, std::move(frames), std::move(sound)};
  });
}

void checkThatOutputsDiffer(const std::vector<RenderJob>& jobs) {
  std::map<std::filesystem::path, const RenderJob*> writers;
  for (const RenderJob& job : jobs) {
    const int last = job.target.isNumbered ? job.range.last : job.range.first;
    for (int frame = job.range.first; frame <= last; ++frame) {
      const std::filesystem::path file = job.target.fileOf(frame);
      const auto [writer, isFirst] = writers.emplace(file, &job);
      if (isFirst) continue;
      throw UsageError(inQuotes(writer->second->plan.scene.file.string()) + " and " +
                       inQuotes(job.plan.scene.file.string()) + " would both write " +
                       inQuotes(file.string()));
    }
  }
}

}  // namespace

std::vector<RenderJob> planJobs(const RenderOptions& options) {
  if (options.scenes.size() > 1 && !namesScene(options.output.name)) {
    throw UsageError("several scenes need {scene} in the name of the output, such as " +
                     inQuotes("out/{scene}.mp4") + ", not " + inQuotes(options.output.name));
  }
  checkOptions(options.overrides);  // wrong ones are no scene's fault
  std::vector<RenderJob> jobs;
  for (const std::string& file : options.scenes) jobs.push_back(planJob(file, options));
  if (jobs.size() > 1) checkThatOutputsDiffer(jobs);
  return jobs;
}

std::string ofScene(const std::string& scene, const std::string& message) {
  if (scene.empty() || message.find(scene) != std::string::npos) return message;
  return scene + ": " + message;
}

}  // namespace cli
