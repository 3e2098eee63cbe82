#include "cli/commands/commands.h"

namespace cli {

void addOutputOptions(CLI::App& command, OutputOptions& options) {
  command
      .add_option("-o,--output", options.name,
                  "What to write, told by its name:\n"
                  "name_%04d.png  numbered frames with alpha; .exr too,\n"
                  "               and name.####.png for four digits\n"
                  "name.png       one frame with alpha\n"
                  "name.mov       ProRes 4444 clip with alpha\n"
                  "name.webm      VP9 clip with alpha\n"
                  "name.mp4       clip over black\n"
                  "name.gif       animation over black\n"
                  "name.apng      lossless animation with alpha\n"
                  "name.webp      small animation with alpha\n"
                  "-              standard output, with --format")
      ->type_name("FILE")
      ->required();
  command
      .add_option("--format", options.format,
                  "What to write whatever the name: png, exr, mov,\n"
                  "mp4, webm, gif, apng or webp")
      ->option_text("NAME")
      ->check(CLI::IsMember({"png", "exr", "mov", "mp4", "webm", "gif", "apng", "webp"}));
  command
      .add_option("--codec", options.codec,
                  "What a .mov holds: prores4444 if not given, or\n"
                  "lossless png (8 and 16 bits) or qtrle (8 bits)")
      ->option_text("NAME")
      ->check(CLI::IsMember({"prores4444", "qtrle", "png"}));
  command
      .add_option("--start-number", options.startNumber,
                  "The number of frame 0 in the names of numbered\n"
                  "frames, 0 if not given")
      ->option_text("N")
      ->check(CLI::Range(0, 1'000'000'000));
  CLI::Option* overwrite =
      command.add_flag("--overwrite", options.overwrite, "Replace outputs that exist");
  command
      .add_flag("--skip-existing", options.skipExisting,
                "Keep outputs that exist, and go on with the frames\n"
                "that are missing")
      ->excludes(overwrite);
  CLI::Option* audio = command
                           .add_option("--audio", options.audio,
                                       "A file to take the sound of a .mov, .mp4 or .webm\n"
                                       "from; otherwise the input's")
                           ->type_name("FILE");
  command.add_flag("--no-audio", options.noAudio, "Leave the sound out")->excludes(audio);
}

}  // namespace cli
