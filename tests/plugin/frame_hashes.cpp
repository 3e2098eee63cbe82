// Prints what this build makes of the known frames, a line for each instruction set that there is
// and each number of threads: instruction set, threads, one hash of all scenes, and the names of
// those that are not as known_frames.txt has them. Fails when there are any. scripts/reproduce.sh
// makes a table of many builds.
#include <cstdio>
#include <exception>

#include "render/kernels.h"
#include "tests/plugin/known_frames.h"

namespace {

void printHashes(const std::vector<tests::KnownScene>& scenes, const tests::Painting& painting) {
  std::uint64_t all = tests::kNoBytes;
  std::string different;
  for (const tests::KnownScene& scene : scenes) {
    const std::string hash = tests::rendered(scene, painting);
    tests::addToHash(all, {reinterpret_cast<const std::uint8_t*>(hash.data()), hash.size()});
    if (hash != scene.hash) different += " " + scene.name;
  }
  std::printf("%s %d %s%s\n", painting.instructionSet.c_str(), painting.threads,
              tests::hashText(all).c_str(), different.c_str());
}

}  // namespace

int main() {
  try {
    const auto scenes = tests::parseScenes(tests::readKnownFrames());
    if (scenes.empty()) throw hostkit::Error("no scenes in " KNOWN_FRAMES_PATH);
    for (const brisel::Kernels* kernels : brisel::availableKernels()) {
      for (const int threads : {1, 4}) printHashes(scenes, {threads, kernels->name});
    }
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "frame_hashes: %s\n", error.what());
    return 1;
  }
}
