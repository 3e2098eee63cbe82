#include "cli/scene/starter_scene.h"

#include "cli/support/errors.h"

namespace cli {
namespace {

constexpr char kSceneTable[] = R"([scene]
size = [1280, 720]
frames = 100
fps = 25
preroll = 30               # steps before frame 0, so that the clip starts in full swing
# input = "clip.mp4"       # a still or a clip that stars go over, relative to this file;
                           # size, frames and fps are the input's where they are left out
)";

constexpr char kOwnLook[] = R"(
[params]                                    # "brisel params" lists them all
"Standard path" = "Bezier"                  # where stars are born; also "Point", "Line", "Circle"
"Start" = [0.1, 0.7]                        # points are fractions of the frame
"Control start" = [0.35, 0.1]
"End" = [0.65, 0.9]
"Control end" = [0.9, 0.3]
"Intensity" = 10                            # births in every two frames
"Maximum number of stars" = 150
"Orientation" = "Random all directions"
"Initial speed" = [ { frame = 0, value = 5 }, { frame = "4s", value = 25 } ]   # keyframes
"Speed dispersion" = 80                     # percent
"Terminate type" = "Fade"
"Time life" = 40                            # frames
"Time life dispersion" = 60
"Type" = "Type 6"                           # what a star looks like
"Size" = 6                                  # half percent of the frame's width
"Size dispersion" = 80
"Color of particles" = "#ffcc66"
)";

constexpr char kOverPresets[] = R"(
[params]                                    # these win over the presets; "brisel params" lists all
# "Start" = [0.5, 0.5]                      # points are fractions of the frame
# "Intensity" = 12                          # births in every two frames
# "Size" = 6                                # half percent of the frame's width
# "Color of particles" = "#ffcc66"
# "Direction" = [ { frame = 0, value = 0 }, { frame = "4s", value = 360 } ]     # keyframes
)";

}  // namespace

std::string starterScene(const std::filesystem::path& name,
                         const std::vector<std::string>& presets) {
  std::string text = "# Render it with: brisel render " + name.string() + " -o " +
                     name.stem().string() + ".mp4\n\n" + kSceneTable;
  if (presets.empty()) return text + kOwnLook;
  std::string names;
  for (const std::string& preset : presets) {
    names += (names.empty() ? "" : ", ") + inQuotes(preset);
  }
  return text + "presets = [" + names + "]\n" + kOverPresets;
}

}  // namespace cli
