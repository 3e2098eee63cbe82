// The small host's own books: what the other tests rely on to notice a module's misuse.
#include <gtest/gtest.h>

#include "hostkit/callbacks.h"
#include "hostkit/path_suites.h"
#include "hostkit/world.h"
#include "sdk/codes.h"

namespace {

using hostkit::World;

TEST(HostKit, GuardsNoticeTheByteBeforeAndTheByteAfter) {
  World world(4, 4, hostkit::Depth::k8, {.rowPadding = 3});
  auto* first = reinterpret_cast<std::uint8_t*>(world.record().data);
  for (std::uint8_t* outside : {first - 1, first + 4 * 19}) {
    EXPECT_TRUE(world.guardsIntact());
    *outside ^= 1;
    EXPECT_FALSE(world.guardsIntact());
    *outside ^= 1;
  }
}

TEST(HostKit, MisuseOfMasksAndSuitesIsCounted) {
  hostkit::HostRecords host;
  const hostkit::CurrentHost current(host);
  const PF_PathQuerySuite1& query = hostkit::pathQuerySuite();
  const PF_PathDataSuite1& data = hostkit::pathDataSuite();
  const PF_PathID id = host.masks.add([](const hostkit::MaskTime&) {
    return hostkit::MaskShape{{{0, 0, 0, 0, 0, 0}}, true};
  });
  A_long count = 0;
  query.PF_NumPaths(host.effectRef, &count);
  EXPECT_EQ(host.suites.callsUnheld(), 1);

  PF_PathOutlinePtr path = nullptr;
  query.PF_CheckoutPath(host.effectRef, id, 0, 1, 25, &path);
  EXPECT_FALSE(host.masks.balanced()) << "not handed back yet";
  query.PF_CheckinPath(host.effectRef, id, 0, path);
  EXPECT_TRUE(host.masks.balanced());
  query.PF_CheckinPath(host.effectRef, id, 0, path);
  EXPECT_EQ(host.masks.wrongCheckins(), 1);
  EXPECT_EQ(data.PF_PathNumSegments(host.effectRef, path, &count), PF_Err_BAD_CALLBACK_PARAM);
  EXPECT_EQ(host.masks.staleOutlines(), 1);
}

}  // namespace
