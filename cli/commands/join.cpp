#include <chrono>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/media/clip_joining.h"
#include "cli/media/output_files.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

struct JoinOptions {
  std::vector<std::string> parts;
  std::string output;
  std::string frames;
  bool overwrite = false;
  std::string audio;
  bool noAudio = false;
};

// A part at either end may have been forgotten.
void checkThatNoneIsMissing(const JoinOptions& options, const ClipPart& part, FrameRange joined) {
  const FrameRange wanted =
      options.frames.empty() ? FrameRange{0, part.frames - 1} : parseFrameRange(options.frames);
  if (wanted.first == joined.first && wanted.last == joined.last) return;
  const std::string held = "the parts hold the frames " + rangeText(joined);
  if (!options.frames.empty()) throw WorkError(held + ", not " + rangeText(wanted));
  throw WorkError(held + ", but the scene has " + rangeText(wanted) + "; give --frames " +
                  rangeText(joined) + " if these are meant");
}

OutputTarget targetLike(const PartFile& part, const JoinOptions& options) {
  OutputOptions output;
  output.name = options.output;
  const OutputTarget target = parseOutputTarget(output);
  if (target.format != parseOutputTarget(part.path.string()).format) {
    throw UsageError("the parts are " + part.path.extension().string() + " clips, and " +
                     target.name() + " would be another kind");
  }
  output.codec = part.part.setting("codec");
  return parseOutputTarget(output);
}

std::optional<Soundtrack> soundOf(const JoinOptions& options, const ClipPart& part,
                                  FrameRange range) {
  const bool chosen = !options.audio.empty();
  const std::string file = chosen ? options.audio : part.sound;
  if (options.noAudio || file.empty()) return std::nullopt;
  if (!chosen && !std::filesystem::is_regular_file(file)) {
    throw WorkError("the sound of the parts was taken from " + inQuotes(file) +
                    ", which is not there; name a file with --audio, or give --no-audio");
  }
  const double perSecond = part.rate.perSecond();
  auto sound = findSoundtrack(findSource(file, {.still = true}), range.first / perSecond,
                              range.count() / perSecond);
  if (!sound) throw WorkError("there is no sound in " + inQuotes(file));
  return sound;
}

void join(const JoinOptions& options) {
  const auto start = std::chrono::steady_clock::now();
  std::vector<PartFile> parts;
  for (const std::string& file : options.parts) parts.push_back(readPart(file));
  const OutputTarget target = targetLike(parts.front(), options);
  checkOutputFile(target.path, options.overwrite);
  for (const PartFile& part : parts) {
    std::error_code isNew;
    if (std::filesystem::equivalent(part.path, target.path, isNew)) {
      throw UsageError("the output " + target.name() + " is one of the parts");
    }
  }
  const FrameRange range = sortAndCheckParts(parts);
  const ClipPart& part = parts.front().part;
  checkThatNoneIsMissing(options, part, range);
  joinParts(parts, target, soundOf(options, part, range));
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  std::fprintf(stderr, "%s: %d %s of %zu %s in %.1f s\n", target.path.filename().c_str(),
               range.count(), range.count() == 1 ? "frame" : "frames", parts.size(),
               parts.size() == 1 ? "part" : "parts", taken.count());
}

}  // namespace

void addJoinCommand(CLI::App& app) {
  const auto options = std::make_shared<JoinOptions>();
  CLI::App* command =
      app.add_subcommand("join", "Put clips of chunks together without encoding again");
  command
      ->add_option("PART", options->parts,
                   "The clips, in any order: .mov, .mp4 or .webm, each\n"
                   "rendered with --frames")
      ->type_name("")
      ->required();
  command->add_option("-o,--output", options->output, "The clip to write, of the parts' kind")
      ->type_name("FILE")
      ->required();
  command
      ->add_option("--frames", options->frames,
                   "The frames that the parts are to hold together;\n"
                   "otherwise all of the scene's")
      ->type_name("A-B");
  command->add_flag("--overwrite", options->overwrite, "Replace an existing clip");
  CLI::Option* audio = command
                           ->add_option("--audio", options->audio,
                                        "A file to take the sound from; otherwise the one\n"
                                        "that the parts took theirs from")
                           ->type_name("FILE");
  command->add_flag("--no-audio", options->noAudio, "Leave the sound out")->excludes(audio);
  command->callback([options] { join(*options); });
}

}  // namespace cli
