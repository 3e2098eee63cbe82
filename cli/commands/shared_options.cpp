#include <cstdio>
#include <regex>

#include "cli/commands/commands.h"
#include "cli/support/errors.h"
#include "hostkit/session.h"
#include "scene/text/printable.h"

namespace cli {
namespace {

// What is wrong with it, where the library would take -1 for no limit, or name its own types.
std::string checkMemorySize(const std::string& text) {
  static const std::regex kSize("[0-9]{1,18}|[0-9]{1,7} ?([KMGT]i?)?B?", std::regex::icase);
  return std::regex_match(text, kSize) ? "" : inQuotes(text) + " is no size such as 500M or 2G";
}

}  // namespace

void addModuleOption(CLI::App& command, std::string& modulePath) {
  command
      .add_option("--module", modulePath,
                  "The effect module; otherwise the one beside this\n"
                  "program or in ../lib/brisel from there")
      ->type_name("FILE");
}

void addThreadsOption(CLI::App& command, std::optional<int>& threads,
                      const std::string& otherwise) {
  command.add_option("--threads", threads, "Threads that paint a frame; otherwise " + otherwise)
      ->option_text("N")
      ->check(CLI::Range(1, hostkit::Session::kMostThreads));
}

void addSceneOptions(CLI::App& command, SceneOptions& options) {
  command
      .add_option("-i,--input", options.input,
                  "Still or clip to put the effect on, anything ffmpeg\n"
                  "reads but lists of other files, alpha kept; numbered\n"
                  "pictures as f.####.png, f.%04d.png or 'f.*.png'; -\n"
                  "is standard input; the last frame of a clip that is\n"
                  "too short holds")
      ->type_name("FILE");
  command.add_flag("--still", options.reading.still,
                   "Take a numbered picture alone, not as a sequence");
  command.add_flag("--tolerate-damage", options.reading.tolerateDamage,
                   "Take what can be read of a damaged input as success");
  command.add_flag("--keep-fields", options.reading.keepFields,
                   "Do not deinterlace an interlaced clip");
  command.add_option("--size", options.size, "Size of the frame in pixels")->type_name("WxH");
  command
      .add_option("--scale", options.scale,
                  "Smaller pictures of the same frame, as a host's\n"
                  "reduced resolution shows it")
      ->option_text("1/2|1/3|1/4")
      ->check(CLI::IsMember({"1/2", "1/3", "1/4"}));
  command
      .add_option("--preroll", options.preroll,
                  "Steps before frame 0, so that a clip starts in full\n"
                  "swing")
      ->option_text("N")
      ->check(CLI::Range(0, scene::kMaxFrames));
  command.add_option("--fps", options.rate, "Frames per second: 25, 29.97 or 30000/1001")
      ->type_name("RATE");
  command.add_option("--depth", options.depth, "Bits per channel")
      ->option_text("8|16")
      ->check(CLI::IsMember({"8", "16"}));
  command.add_option("--quality", options.quality, "Smooth or plain edges of rays")
      ->option_text("high|low")
      ->check(CLI::IsMember({"high", "low"}));
  addValueOptions(command, options);
  addAllowOption(command, options);
  command
      .add_option("--limit-memory", options.memoryLimit,
                  "Refuse what would take more, ffmpeg not counted;\n"
                  "otherwise three quarters of the machine's memory")
      ->option_text("500M|2G|...")
      ->transform(CLI::AsSizeValue(false))
      ->transform(CLI::Validator(checkMemorySize, ""));  // which goes before the other
}

void addValueOptions(CLI::App& command, SceneOptions& options) {
  command
      .add_option("--preset", options.presets,
                  "A preset that \"brisel presets\" lists; may be\n"
                  "repeated, and --set goes on from there")
      ->type_name("PRESET")
      ->allow_extra_args(false);
  command
      .add_option("--set", options.settings,
                  "A parameter's value: \"Size=40\", \"Start=0.5,0.5\",\n"
                  "\"Type=Type glow1\", \"Color of particles=#ffcc66\";\n"
                  "may be repeated")
      ->type_name("LABEL=VALUE")
      ->allow_extra_args(false);
}

void addAllowOption(CLI::App& command, SceneOptions& options) {
  command
      .add_option("--allow", options.allowed,
                  "A folder that scenes may name files in, besides their\n"
                  "own; may be repeated")
      ->type_name("FOLDER")
      ->allow_extra_args(false)
      ->check(CLI::ExistingDirectory.description(""));  // which would be shown behind the name
}

void warn(const std::string& message) {
  std::fprintf(stderr, "brisel: warning: %s\n", scene::printable(message).c_str());
}

void note(const std::string& message) {
  std::fprintf(stderr, "brisel: note: %s\n", scene::printable(message).c_str());
}

}  // namespace cli
