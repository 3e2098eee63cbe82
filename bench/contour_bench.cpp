// Tracing one frame's outline: shapes as they come, and the worst that an alpha channel can hold,
// at three sizes. Time should grow with the frame's area and the outline's length.
#include <benchmark/benchmark.h>

#include <string>

#include "contour/mesh_builder.h"
#include "platform/pages.h"
#include "tests/contour/mask_shapes.h"

namespace {

using reference::Mask;

struct Shape {
  const char* name;
  Mask (*draw)(int width, int height);
};

const Shape kShapes[] = {
    {"disc", reference::disc},
    {"title", reference::title},
    {"noise", [](int width, int height) { return reference::noise(width, height, 0.5, 1); }},
    {"checkerboard", reference::checkerboard},
    {"notched_spiral", reference::notchedSpiral},
};

struct Size {
  int width;
  int height;
};

constexpr Size kSizes[] = {{480, 270}, {1920, 1080}, {3840, 2160}};

void trace(benchmark::State& state, const Shape& shape, Size size) {
  const Mask mask = shape.draw(size.width, size.height);
  std::int32_t pointCount = 0, segmentCount = 0;
  for ([[maybe_unused]] auto _ : state) {
    brisel::ContourPoint* points = nullptr;
    brisel::ContourSegment* segments = nullptr;
    brisel::CMeshBuilder().LoadMask(mask.width, mask.height, mask.width, mask.cells.data(), 1.0f,
                                    30, pointCount, segmentCount, points, segments);
    brisel::releasePages(points, static_cast<std::size_t>(pointCount) * sizeof *points);
    brisel::releasePages(segments, static_cast<std::size_t>(segmentCount) * sizeof *segments);
  }
  state.counters["points"] = pointCount;
  state.SetItemsProcessed(state.iterations() * mask.width * mask.height);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  for (const Shape& shape : kShapes) {
    for (const Size size : kSizes) {
      const std::string name = std::string("contour/") + shape.name + '/' +
                               std::to_string(size.width) + 'x' + std::to_string(size.height);
      benchmark::RegisterBenchmark(name.c_str(), trace, shape, size)->Unit(benchmark::kMillisecond);
    }
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
