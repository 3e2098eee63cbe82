// Whole frames through the module's entry point, against the hashes of known_frames.txt. With
// BRISEL_UPDATE_HASHES set, the file is rewritten instead; with BRISEL_FRAMES_DIR set, the last
// frame of every stage is written there as a picture, colour above alpha.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "hostkit/session.h"
#include "render/kernels.h"

namespace {

using hostkit::Depth;
using hostkit::World;

/// A stage: the parameters (label, text) that are set at one frame, and how frames look from then
/// on.
struct Stage {
  A_long from = 0;
  A_long width = 0, height = 0;
  Depth depth = Depth::k8;
  PF_Quality quality = PF_Quality_HI;
  std::vector<std::pair<std::string, std::string>> values;
};

struct Scene {
  std::string name;
  A_long frames = 0;
  std::vector<Stage> stages;
  PF_Point layer{}, input{};  // sizes; none are the frame's
  std::string hash;
  std::size_t hashLine = 0;
};

std::vector<std::string> readLines() {
  std::ifstream file(KNOWN_FRAMES_PATH);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

PF_Point readSize(std::istream& line) {
  PF_Point size{};
  char x;
  line >> size.h >> x >> size.v;
  return size;
}

void readLook(std::istream& line, Stage& stage) {
  const auto [width, height] = readSize(line);
  int bits;
  std::string word, quality;
  if (!(line >> bits >> word >> quality)) return;
  stage.width = width;
  stage.height = height;
  stage.depth = bits == 16 ? Depth::k16 : Depth::k8;
  stage.quality = quality == "high" ? PF_Quality_HI : PF_Quality_LO;
}

std::vector<Scene> parseScenes(const std::vector<std::string>& lines) {
  std::vector<Scene> scenes;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::istringstream line(lines[i]);
    std::string word;
    line >> word;
    if (word == "scene") {
      Scene& s = scenes.emplace_back();
      line >> s.name;
      readLook(line, s.stages.emplace_back());
      line >> s.frames;
    } else if (word == "from") {
      Stage stage = scenes.back().stages.back();
      stage.values.clear();
      line >> word >> stage.from;
      readLook(line, stage);
      scenes.back().stages.push_back(stage);
    } else if (word == "layer") {
      scenes.back().layer = readSize(line);
    } else if (word == "input") {
      scenes.back().input = readSize(line);
    } else if (word == "hash") {
      line >> scenes.back().hash;
      scenes.back().hashLine = i;
    } else if (const auto sign = lines[i].find(" = "); sign != std::string::npos) {
      scenes.back().stages.back().values.emplace_back(lines[i].substr(0, sign),
                                                      lines[i].substr(sign + 3));
    }
  }
  return scenes;
}

void setValue(hostkit::ParameterSet& parameters, const std::string& label,
              const std::string& text) {
  const hostkit::Parameter* parameter = parameters.find(label);
  if (parameter == nullptr) throw hostkit::Error("no parameter " + label);
  double n[3] = {};
  std::istringstream(text) >> n[0] >> n[1] >> n[2];
  const auto byte = [&](int i) { return static_cast<A_u_char>(n[i]); };
  switch (parameter->type()) {
    case PF_Param_POPUP: {
      const auto item = std::ranges::find(parameter->items, text);
      return parameters.setItem(parameter->index,
                                static_cast<int>(item - parameter->items.begin()) + 1);
    }
    case PF_Param_CHECKBOX:
      return parameters.setChecked(parameter->index, n[0] != 0);
    case PF_Param_POINT:
      return parameters.setPoint(parameter->index, n[0], n[1]);
    case PF_Param_COLOR:
      return parameters.setColor(parameter->index, byte(0), byte(1), byte(2));
    case PF_Param_PATH:
      return parameters.setPath(parameter->index, static_cast<PF_PathID>(n[0]));
    default:
      return parameters.setNumber(parameter->index, n[0]);
  }
}

/// The layer's one mask: round above, with a point below that swings.
hostkit::MaskShape drop(const hostkit::MaskTime& time) {
  const double tip = 60.0 + 25.0 * time.time / time.scale;
  return {{{70, 12, 50, 12, 92, 12},
           {100, 40, 100, 26, 97, 55},
           {tip, 72, tip, 72, tip, 72},
           {40, 40, 42, 58, 38, 24}}};
}

World colourRamps(A_long width, A_long height, Depth depth) {
  World world(width, height, depth, {});
  const auto paint = [&]<class Pixel>(std::span<Pixel> row, A_long y, int full) {
    using Channel = decltype(Pixel::red);
    for (A_long x = 0; x < width; ++x) {
      const auto ramp = [&](A_long at, A_long of) { return static_cast<Channel>(at * full / of); };
      row[static_cast<std::size_t>(x)] = {ramp((x + y) % 40, 39), ramp(x, width), ramp(y, height),
                                          ramp(width - x, width)};
    }
  };
  for (A_long y = 0; y < height; ++y) {
    if (depth == Depth::k16) {
      paint(world.row16(y), y, 32768);
    } else {
      paint(world.row8(y), y, 255);
    }
  }
  return world;
}

void addToHash(std::uint64_t& hash, const World& world) {
  for (A_long y = 0; y < world.height(); ++y) {
    for (const std::uint8_t byte : world.rowPixelBytes(y)) hash = (hash ^ byte) * 1099511628211u;
  }
}

void writePicture(const std::string& path, const World& world) {
  std::ofstream file(path, std::ios::binary);
  const bool deep = world.depth() == Depth::k16;
  file << "P6 " << world.width() << ' ' << 2 * world.height() << (deep ? " 32768\n" : " 255\n");
  const std::size_t channelBytes = deep ? 2 : 1;
  for (const bool alpha : {false, true}) {
    for (A_long y = 0; y < world.height(); ++y) {
      const auto row = world.rowPixelBytes(y);
      for (std::size_t i = 0; i < row.size() / channelBytes; ++i) {
        if (i % 4 == 0) continue;
        const std::size_t from = alpha ? i / 4 * 4 : i;
        for (std::size_t b = channelBytes; b-- > 0;) {
          file.put(static_cast<char>(row[from * channelBytes + b]));
        }
      }
    }
  }
}

/// What a scene is painted with.
struct Painting {
  int threads;
  std::string instructionSet;  // "": the widest
};

std::string render(const Scene& scene, const Painting& painting) {
  static const hostkit::Module module = hostkit::Module::load(BRISEL_MODULE_PATH);
  hostkit::Session session(module);
  session.open();
  session.usePainting(painting.threads, painting.instructionSet);
  session.records().masks.add(drop);
  session.parameters().resetToDefaults(scene.stages[0].width, scene.stages[0].height);
  std::uint64_t hash = 14695981039346656037u;
  for (std::size_t i = 0; i < scene.stages.size(); ++i) {
    const Stage& stage = scene.stages[i];
    for (const auto& [label, text] : stage.values) setValue(session.parameters(), label, text);
    World input = scene.input.h == 0 ? colourRamps(stage.width, stage.height, stage.depth)
                                     : colourRamps(scene.input.h, scene.input.v, stage.depth);
    World output(stage.width, stage.height, stage.depth, {});
    const bool last = i + 1 == scene.stages.size();
    const A_long end = last ? scene.frames : scene.stages[i + 1].from;
    for (A_long frame = stage.from; frame < end; ++frame) {
      session.render(input, output,
                     {.frame = frame,
                      .quality = stage.quality,
                      .layerWidth = scene.layer.h,
                      .layerHeight = scene.layer.v});
      addToHash(hash, output);
    }
    if (const char* folder = std::getenv("BRISEL_FRAMES_DIR")) {
      const std::string suffix = last ? "" : "-" + std::to_string(end - 1);
      writePicture(std::string(folder) + "/" + scene.name + suffix + ".ppm", output);
    }
  }
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
  return text;
}

std::vector<Painting> allPaintings() {
  std::vector<Painting> paintings{{1, ""}, {2, ""}, {8, ""}};
  for (const brisel::Kernels* kernels : brisel::availableKernels()) {
    paintings.push_back({3, kernels->name});
  }
  return paintings;
}

TEST(KnownFrames, AreUnchangedWhateverPaintsThem) {
  std::vector<std::string> lines = readLines();
  const std::vector<Scene> scenes = parseScenes(lines);
  EXPECT_FALSE(scenes.empty());
  const bool update = std::getenv("BRISEL_UPDATE_HASHES") != nullptr;
  for (const Painting& painting : allPaintings()) {
    SCOPED_TRACE(painting.instructionSet + " on " + std::to_string(painting.threads));
    for (const Scene& scene : scenes) {
      const std::string hash = render(scene, painting);
      if (update) {
        lines[scene.hashLine] = "hash " + hash;
      } else {
        EXPECT_EQ(hash, scene.hash) << scene.name << ": see scripts/update_frame_hashes.sh";
      }
    }
  }
  if (!update) return;
  std::ofstream file(KNOWN_FRAMES_PATH);
  for (const std::string& line : lines) file << line << '\n';
}

}  // namespace
