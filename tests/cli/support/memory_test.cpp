// What of the machine's memory this process may have.
#include "cli/support/memory.h"

#include <gtest/gtest.h>

#include "tests/support/folder_test.h"

namespace {

class AvailableMemory : public tests::FolderTest {};

TEST_F(AvailableMemory, IsTheLowestOfTheMachinesAndThatOfEachGroup) {
  const std::uint64_t machine = cli::availableMemory(path("none"));
  ASSERT_GT(machine, 3'000'000u);
  std::filesystem::create_directories(path("proc/self"));
  std::filesystem::create_directories(path("sys/fs/cgroup/farm/task"));
  struct Case {
    std::string own, top, farm, task;
    std::uint64_t expected;
  };
  const std::vector<Case> cases = {
      {"4:memory:/x\n0::/farm/task\n", "max", "max", "max", machine},
      {"0::/farm/task\n", "3000000", "max", "2000000", 2'000'000},
      {"0::/farm/task\n", "3000000", "1000000", "2000000", 1'000'000},
      {"0::/farm\n", "3000000", "max", "2000000", 3'000'000},
      {"0::/\n", "3000000", "1000000", "1000000", 3'000'000},
      {"0::/hidden/from/containers\n", "3000000", "1000000", "1000000", 3'000'000},
      {"4:memory:/farm\n", "9223372036854775807", "1", "1", machine},
  };
  for (const auto& [own, top, farm, task, expected] : cases) {
    write("proc/self/cgroup", own);
    write("sys/fs/cgroup/memory.max", top + "\n");
    write("sys/fs/cgroup/farm/memory.max", farm + "\n");
    write("sys/fs/cgroup/farm/task/memory.max", task + "\n");
    EXPECT_EQ(cli::availableMemory(path("")), expected) << own << top << farm << task;
  }
}

}  // namespace
