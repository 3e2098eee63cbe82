// The frames that are known to be good: the scenes of known_frames.txt with their hashes, and how
// one is rendered through the module's entry point.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "hostkit/session.h"

namespace tests {

/// A stage: the parameters (label, text) that are set at one frame, and how frames look from then
/// on.
struct Stage {
  A_long from = 0;
  A_long width = 0, height = 0;
  hostkit::Depth depth = hostkit::Depth::Bits8;
  PF_Quality quality = PF_Quality_HI;
  std::vector<std::pair<std::string, std::string>> values;
};

struct KnownScene {
  std::string name;
  A_long frames = 0;
  std::vector<Stage> stages;
  PF_Point layer{}, input{};  // sizes; none are the frame's
  std::string hash;           // of all frames, as rendered() gives it
  std::size_t hashLine = 0;   // where the file says it
};

/// What a scene is painted with.
struct Painting {
  int threads;
  std::string instructionSet;  // "": the widest
};

std::vector<std::string> readKnownFrames();
std::vector<KnownScene> parseScenes(const std::vector<std::string>& lines);

/// The hash of all frames. With BRISEL_FRAMES_DIR set, the last frame of every stage is written
/// there as a picture, color above alpha.
std::string rendered(const KnownScene& scene, const Painting& painting);

/// FNV-1a of more bytes, and such a hash as text.
inline constexpr std::uint64_t kNoBytes = 14695981039346656037u;
void addToHash(std::uint64_t& hash, std::span<const std::uint8_t> bytes);
std::string hashText(std::uint64_t hash);

}  // namespace tests
