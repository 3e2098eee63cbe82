// Memory that runs out at any one allocation: the tracer says so, keeps nothing and writes nothing.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <vector>

#include "contour/mesh_builder.h"
#include "platform/pages.h"

// Heap and page allocation in place of the system's, to be made to fail.
namespace {

int allocationsLeft = -1;  // below 0 all succeed
int blocksHeld = 0;        // of either kind

void* allocate(std::size_t bytes) {
  if (allocationsLeft == 0) return nullptr;
  if (allocationsLeft > 0) --allocationsLeft;
  ++blocksHeld;
  return std::calloc(1, bytes);
}

void release(void* block) {
  blocksHeld -= block != nullptr;
  std::free(block);
}

}  // namespace

void* operator new(std::size_t bytes) {
  if (void* block = allocate(bytes)) return block;
  throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
  release(block);
}
void operator delete(void* block, std::size_t) noexcept {
  release(block);
}

namespace brisel {

void* allocatePages(std::size_t bytes) {
  return allocate(bytes);
}
void releasePages(void* block, std::size_t) {
  release(block);
}

TEST(ContourMemory, EveryFailedAllocationIsReportedAndNothingIsKept) {
  constexpr int kSide = 60;
  std::vector<std::uint8_t> mask(kSide * kSide);
  for (int i = 0; i < kSide * kSide; ++i) {
    const int x = i % kSide - kSide / 2, y = i / kSide - kSide / 2;
    if (x * x + y * y < 700 || x * y % 37 == 5) mask[static_cast<std::size_t>(i)] = 255;
  }
  int refusals = 0, exceptions = 0;
  for (int allocations = 0;; ++allocations) {
    SCOPED_TRACE("allocations " + std::to_string(allocations));
    const int heldBefore = blocksHeld;
    std::int32_t pointCount = -1, segmentCount = -1;
    ContourPoint* points = nullptr;
    ContourSegment* segments = nullptr;
    bool outOfMemory = false, result = false;
    allocationsLeft = allocations;
    try {
      result = CMeshBuilder().LoadMask(kSide, kSide, kSide, mask.data(), 1.0f, 2, pointCount,
                                       segmentCount, points, segments);
    } catch (const std::bad_alloc&) {
      outOfMemory = true;
    }
    allocationsLeft = -1;
    if (result) {
      EXPECT_GT(pointCount, 0);
      EXPECT_EQ(blocksHeld, heldBefore + 2) << "the two arrays";
      releasePages(points, 0);
      releasePages(segments, 0);
      break;
    }
    ++(outOfMemory ? exceptions : refusals);
    ASSERT_EQ(blocksHeld, heldBefore);
    ASSERT_TRUE(points == nullptr && segments == nullptr);
    ASSERT_TRUE(pointCount == 0 && segmentCount == 0);
  }
  EXPECT_EQ(refusals, 2) << "one for each array";
  EXPECT_GT(exceptions, 10);
}

}  // namespace brisel
