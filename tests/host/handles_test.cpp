#include "hostkit/handles.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using hostkit::HandleTable;

TEST(Handles, KeepTheirBytesWhileMovingBetweenLocks) {
  HandleTable handles;
  const PF_Handle handle = handles.allocate(5);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(handles.size(handle), 5u);

  void* first = handles.lock(handle);
  std::memcpy(first, "star", 5);
  EXPECT_EQ(handles.lock(handle), first) << "a locked block stays where it is";
  EXPECT_EQ(*handle, first);
  EXPECT_EQ(handles.outstandingLocks(), 2);
  EXPECT_FALSE(handles.resize(handle, 50));
  handles.unlock(handle);
  handles.unlock(handle);

  EXPECT_TRUE(handles.resize(handle, 50));
  EXPECT_STREQ(static_cast<char*>(handles.lock(handle)), "star");
  handles.unlock(handle);
  handles.dispose(handle);
  EXPECT_EQ(handles.liveHandles(), 0);
  EXPECT_TRUE(handles.balanced());
}

TEST(Handles, MoveWheneverTheyAreLockedAnew) {
  HandleTable handles;
  const PF_Handle handle = handles.allocate(40);
  const void* before = *handle;
  EXPECT_NE(handles.lock(handle), before);
}

TEST(Handles, EveryMisuseIsCounted) {
  HandleTable handles;
  void* notAHandle = nullptr;
  EXPECT_EQ(handles.lock(nullptr), nullptr);
  handles.dispose(&notAHandle);
  EXPECT_EQ(handles.unknownHandles(), 2);

  const PF_Handle handle = handles.allocate(8);
  handles.unlock(handle);
  handles.lock(handle);
  handles.dispose(handle);
  EXPECT_EQ(handles.unbalancedLocks(), 2) << "unlocked once too often, then disposed of locked";
  handles.dispose(handle);
  EXPECT_EQ(handles.lock(handle), nullptr);
  EXPECT_EQ(handles.staleHandles(), 2);
  EXPECT_FALSE(handles.balanced());
}

TEST(Handles, AreRefusedOnOrder) {
  HandleTable handles;
  handles.refuseAllocation(2);
  const PF_Handle first = handles.allocate(8);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(handles.allocate(8), nullptr);
  EXPECT_NE(handles.allocate(8), nullptr);
  EXPECT_EQ(handles.liveHandles(), 2);

  handles.refuseLocks(true);
  EXPECT_EQ(handles.lock(first), nullptr);
  EXPECT_EQ(handles.outstandingLocks(), 0);
  handles.refuseLocks(false);
  EXPECT_NE(handles.lock(first), nullptr);
}

}  // namespace
