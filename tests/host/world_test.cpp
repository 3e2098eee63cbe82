#include "hostkit/world.h"

#include <gtest/gtest.h>

#include <limits>

#include "hostkit/error.h"
#include "sdk/codes.h"

namespace {

using hostkit::Depth;
using hostkit::World;

TEST(World, RecordDescribesThePixels) {
  World shallow(7, 3, Depth::k8, {.rowPadding = 5});
  EXPECT_EQ(shallow.record().rowbytes, 7 * 4 + 5);
  EXPECT_EQ(shallow.record().width, 7);
  EXPECT_EQ(shallow.record().height, 3);
  EXPECT_EQ(shallow.record().world_flags, 0);
  EXPECT_EQ(shallow.record().data, shallow.row8(0).data());

  World deep(7, 3, Depth::k16, {.rowPadding = 6});
  EXPECT_EQ(deep.record().rowbytes, 7 * 8 + 6);
  EXPECT_EQ(deep.record().world_flags, PF_WorldFlag_DEEP);
  EXPECT_EQ(reinterpret_cast<std::uint8_t*>(deep.row16(2).data()),
            reinterpret_cast<std::uint8_t*>(deep.record().data) + 2 * 62);
}

TEST(World, GuardsNoticeTheByteBeforeAndTheByteAfter) {
  World world(4, 4, Depth::k8, {.rowPadding = 3});
  world.fill(0x11);
  EXPECT_TRUE(world.guardsIntact());
  auto* first = reinterpret_cast<std::uint8_t*>(world.record().data);
  first[-1] ^= 1;
  EXPECT_FALSE(world.guardsIntact());
  first[-1] ^= 1;
  first[4 * 19] ^= 1;
  EXPECT_FALSE(world.guardsIntact());
}

TEST(World, PixelsAreComparedWithoutTheirPadding) {
  World a(3, 2, Depth::k8);
  World b(3, 2, Depth::k8, {.rowPadding = 8});
  EXPECT_TRUE(samePixels(a, b));
  b.row8(1)[2].blue = 1;
  EXPECT_FALSE(samePixels(a, b));
  EXPECT_FALSE(samePixels(a, World(2, 3, Depth::k8)));
  EXPECT_FALSE(samePixels(a, World(3, 2, Depth::k16)));
}

TEST(World, RefusesSizesThatNoPictureHas) {
  EXPECT_THROW(World(-1, 4, Depth::k8), hostkit::Error);
  EXPECT_THROW(World(std::numeric_limits<A_long>::max(), 1, Depth::k16), hostkit::Error);
  EXPECT_THROW(World(4, 4, Depth::k16, {.rowPadding = 3}), hostkit::Error);
  EXPECT_NO_THROW(World(0, 0, Depth::k16));
}

}  // namespace
