#include "cli/commands/render_job.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <string_view>

#include "cli/media/clip_part.h"
#include "cli/media/numbered_pictures.h"
#include "cli/pipeline/memory_need.h"
#include "cli/scene/layer_effect.h"
#include "cli/support/digest.h"
#include "scene/file_access.h"

namespace cli {
namespace {

constexpr std::string_view kSceneField = "{scene}";

bool namesScene(const std::string& output) {
  return output.find(kSceneField) != std::string::npos;
}

// With the name of the scene's file, its extension left out, in place of {scene}.
std::string filesOfScene(std::string files, const std::filesystem::path& scene) {
  const std::string name = scene.stem().string();
  for (std::size_t at = 0; (at = files.find(kSceneField, at)) != std::string::npos;) {
    files.replace(at, kSceneField.size(), name);
    at += name.size();
  }
  return files;
}

FrameRange rangeToRender(const RenderOptions& options, const ScenePlan& plan, int stateFrame) {
  const FrameRange whole{0, plan.frames - 1};
  if (stateFrame > whole.last) {
    throw UsageError("--from-state " + inQuotes(options.fromState) +
                     ": its stars stand before frame " + std::to_string(stateFrame) +
                     ", and the scene has the frames 0-" + std::to_string(whole.last));
  }
  if (!options.frames) return {stateFrame, whole.last};
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

// Of numbered states the one nearest to the frame, none where all of them are later.
std::optional<StarState> nearestState(const std::string& name, const NumberedPictures& states,
                                      int firstFrame) {
  if (states.pictures.empty()) {
    throw WorkError("no file is named as the state " + inQuotes(name) + " says");
  }
  const auto isLater = [&](const NumberedPictures::Picture& file) {
    return file.number > firstFrame;
  };
  const auto later = std::ranges::find_if(states.pictures, isLater);
  if (later == states.pictures.begin()) return std::nullopt;
  return readState(std::prev(later)->path);
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

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + inQuotes(word);
  return text;
}

// All that the clips of one render have in common.
ClipPart partOf(const OutputTarget& target, const SceneOptions& options, const ScenePlan& plan,
                FrameRange range, const FoundSound& sound) {
  static const char* const kCodecs[] = {"prores4444", "qtrle", "png"};
  const bool isMov = target.format == OutputFormat::Mov;
  ClipPart part{range, plan.frames, plan.rate, {}, {}};
  part.settings = {
      {"scene", plan.scene.file.filename().string() + " of digest " + sceneDigest(plan.scene)},
      {"input", plan.scene.input.filename().string()},
      {"size", std::to_string(plan.size.width) + "x" + std::to_string(plan.size.height)},
      {"scale", "1/" + std::to_string(plan.reduction)},
      {"depth", std::to_string(static_cast<int>(plan.depth))},
      {"quality", plan.scene.highQuality ? "high" : "low"},
      {"preroll", std::to_string(plan.scene.preroll)},
      {"--preset", joined(options.presets)},
      {"--set", joined(options.settings)},
      {"codec", isMov ? kCodecs[static_cast<int>(target.codec)] : ""},
  };
  if (sound.get()) part.sound = std::filesystem::absolute(sound.get()->name).string();
  return part;
}

RenderJob planJob(const std::string& file, const RenderOptions& options) {
  const bool isAlone = options.scenes.size() == 1;
  const std::string name = isAlone ? "" : file;
  return namingScene(name, [&] {
    OutputOptions output = options.output;
    output.name = filesOfScene(output.name, file);
    OutputTarget target = parseOutputTarget(output);
    ScenePlan plan = planScene(readScene(file, options.overrides), options.overrides);
    checkMemory(plan, options.renderer.jobs);
    const std::string stateName = filesOfScene(options.fromState, file);
    const auto states = picturesOfPattern(stateName);
    std::optional<StarState> state;
    if (!stateName.empty() && !states) state = readState(stateName);
    const FrameRange range = rangeToRender(options, plan, state ? state->frame : 0);
    std::vector<int> frames = framesToWrite(target, range, plan.depth, output);
    checkThatItStays(plan.scene.file, "scene", target, frames);
    checkThatItStays(plan.scene.input, "input", target, frames);
    const int firstFrame = frames.empty() ? range.first : frames.front();
    if (states) state = nearestState(stateName, *states, firstFrame);
    if (state && state->frame > firstFrame) {
      throw UsageError("the state " + inQuotes(state->file.string()) + " is later than frame " +
                       std::to_string(firstFrame) +
                       ", the first to render: its stars stand before frame " +
                       std::to_string(state->frame) + "; give an earlier one");
    }
    // A wrong value in the last scene must not surface only at the end of a long run.
    if (!isAlone) layerEffects(plan, options.renderer.module);
    auto sound = soundtrackOf(target, output, plan, range);
    if (options.frames && isJoinable(target.format)) {
      target.comment = commentOf(partOf(target, options.overrides, plan, range, sound));
    }
    return RenderJob{name,
                     std::move(plan),
                     target,
                     range,
                     std::move(frames),
                     std::move(sound),
                     {std::move(state), firstFrame}};
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

std::string sceneDigest(const scene::Scene& scene) {
  Digest digest;
  digest.add(scene::textOfFile(scene.file, "the scene " + inQuotes(scene.file.string())));
  return digest.text();
}

std::string ofScene(const std::string& scene, const std::string& message) {
  if (scene.empty() || message.find(scene) != std::string::npos) return message;
  return scene + ": " + message;
}

}  // namespace cli
