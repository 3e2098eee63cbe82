#include "tests/plugin/known_frames.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace tests {

using hostkit::Depth;
using hostkit::World;

namespace {

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
  stage.depth = bits == 16 ? Depth::Bits16 : Depth::Bits8;
  stage.quality = quality == "high" ? PF_Quality_HI : PF_Quality_LO;
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

World colorRamps(A_long width, A_long height, Depth depth) {
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
    if (depth == Depth::Bits16) {
      paint(world.row16(y), y, 32768);
    } else {
      paint(world.row8(y), y, 255);
    }
  }
  return world;
}

void writePicture(const std::string& path, const World& world) {
  std::ofstream file(path, std::ios::binary);
  const bool deep = world.depth() == Depth::Bits16;
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

}  // namespace

std::vector<std::string> readKnownFrames() {
  std::ifstream file(KNOWN_FRAMES_PATH);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

std::vector<KnownScene> parseScenes(const std::vector<std::string>& lines) {
  std::vector<KnownScene> scenes;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::istringstream line(lines[i]);
    std::string word;
    line >> word;
    if (word == "scene") {
      KnownScene& s = scenes.emplace_back();
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

std::string rendered(const KnownScene& scene, const Painting& painting) {
  static const hostkit::Module module = hostkit::Module::load(BRISEL_MODULE_PATH);
  hostkit::Session session(module);
  session.open();
  session.usePainting(painting.threads, painting.instructionSet);
  session.records().masks.add(drop);
  session.parameters().resetToDefaults(scene.stages[0].width, scene.stages[0].height);
  std::uint64_t hash = kNoBytes;
  for (std::size_t i = 0; i < scene.stages.size(); ++i) {
    const Stage& stage = scene.stages[i];
    for (const auto& [label, text] : stage.values) setValue(session.parameters(), label, text);
    World input = scene.input.h == 0 ? colorRamps(stage.width, stage.height, stage.depth)
                                     : colorRamps(scene.input.h, scene.input.v, stage.depth);
    World output(stage.width, stage.height, stage.depth, {});
    const bool last = i + 1 == scene.stages.size();
    const A_long end = last ? scene.frames : scene.stages[i + 1].from;
    for (A_long frame = stage.from; frame < end; ++frame) {
      session.render(input, output,
                     {.frame = frame,
                      .quality = stage.quality,
                      .layerWidth = scene.layer.h,
                      .layerHeight = scene.layer.v});
      for (A_long y = 0; y < output.height(); ++y) addToHash(hash, output.rowPixelBytes(y));
    }
    if (const char* folder = std::getenv("BRISEL_FRAMES_DIR")) {
      const std::string suffix = last ? "" : "-" + std::to_string(end - 1);
      writePicture(std::string(folder) + "/" + scene.name + suffix + ".ppm", output);
    }
  }
  return hashText(hash);
}

void addToHash(std::uint64_t& hash, std::span<const std::uint8_t> bytes) {
  for (const std::uint8_t byte : bytes) hash = (hash ^ byte) * 1099511628211u;
}

std::string hashText(std::uint64_t hash) {
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
  return text;
}

}  // namespace tests
