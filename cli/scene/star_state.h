// States of a scene's stars in files, from which a render goes on.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/scene/star_facts.h"

namespace cli {

struct StarState {
  std::filesystem::path file;                     // for messages
  int frame = 0;                                  // that the stars stand before
  StarFacts facts;                                // what they came from
  std::vector<std::vector<std::uint8_t>> layers;  // as hostkit::Session saves and restores them
};

// What a state's file holds; docs/farm.md describes it.
std::vector<std::uint8_t> bytesOf(const StarState& state);

// Throws WorkError naming the file when it cannot be read, or holds no state that this program and
// this machine can take. Any bytes are safe.
StarState readState(const std::filesystem::path& file);

// The end of each such message: what to do.
inline constexpr char kMakeStates[] = "; \"brisel checkpoint\" makes new ones";

}  // namespace cli
