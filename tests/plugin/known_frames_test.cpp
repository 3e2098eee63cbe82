// Whole frames through the module's entry point, against the hashes of known_frames.txt. With
// BRISEL_UPDATE_HASHES set, the file is rewritten instead.
#include "tests/plugin/known_frames.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "render/kernels.h"

namespace {

using tests::KnownScene;
using tests::Painting;

std::vector<Painting> allPaintings() {
  std::vector<Painting> paintings{{1, ""}, {2, ""}, {8, ""}};
  for (const brisel::Kernels* kernels : brisel::availableKernels()) {
    paintings.push_back({3, kernels->name});
  }
  return paintings;
}

TEST(KnownFrames, AreUnchangedWhateverPaintsThem) {
  std::vector<std::string> lines = tests::readKnownFrames();
  const std::vector<KnownScene> scenes = tests::parseScenes(lines);
  EXPECT_FALSE(scenes.empty());
  const bool update = std::getenv("BRISEL_UPDATE_HASHES") != nullptr;
  for (const Painting& painting : allPaintings()) {
    SCOPED_TRACE(painting.instructionSet + " on " + std::to_string(painting.threads));
    for (const KnownScene& scene : scenes) {
      const std::string hash = tests::rendered(scene, painting);
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
