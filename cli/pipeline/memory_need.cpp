#include "cli/pipeline/memory_need.h"

#include <cstdio>
#include <string>

#include "cli/support/errors.h"

namespace cli {
namespace {

constexpr std::uint64_t kProgram = std::uint64_t{64} << 20;
constexpr std::uint64_t kLayer = std::uint64_t{8} << 20;  // its stars, sprites and mask

std::uint64_t bytesOf(FrameSize size, std::uint64_t perPixel) {
  return static_cast<std::uint64_t>(size.width) * static_cast<std::uint64_t>(size.height) *
         perPixel;
}

std::string gigabytes(std::uint64_t bytes) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f GB", static_cast<double>(bytes) / (1 << 30));
  return text;
}

}  // namespace

std::uint64_t memoryNeededBy(const ScenePlan& plan, int jobs) {
  const std::uint64_t perPixel = plan.depth == Depth::Bits16 ? 8 : 4;
  const std::uint64_t frame = bytesOf(plan.size, perPixel);
  const auto inFlight = static_cast<std::uint64_t>(SceneRenderer::framesAtOnce(jobs));
  const auto working = std::min(inFlight, static_cast<std::uint64_t>(jobs));
  std::uint64_t need = kProgram + kLayer * plan.scene.layers.size();
  need += 3 * inFlight * frame;   // painted, copied for its format, encoded
  need += 2 * working * frame;    // filtered and packed meanwhile
  need += 2 * frame;              // without input, and what lies below a layer
  need += bytesOf(plan.size, 8);  // maps of where stars may be born
  if (!plan.input) return need;
  const std::uint64_t read = bytesOf(plan.input->size, plan.input->isDeep ? 8 : perPixel);
  need += (plan.input->isStill() ? 2 : inFlight + 1) * (frame + read);
  return need + working * (frame + 2 * read);  // in another depth and fitted
}

void checkMemory(const ScenePlan& plan, int jobs, std::uint64_t more) {
  const std::uint64_t need = memoryNeededBy(plan, jobs) + more;
  if (need <= plan.memoryLimit) return;
  const FrameSize size = plan.size;
  throw WorkError("frames of " + std::to_string(size.width) + "x" + std::to_string(size.height) +
                  " pixels would take about " + gigabytes(need) + " of memory, more than the " +
                  gigabytes(plan.memoryLimit) + " allowed; " +
                  (jobs > 1 && more == 0 ? "--jobs 1 or " : "") +
                  "--scale takes less, and --limit-memory allows more");
}

}  // namespace cli
