#include "available-cores.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "support/temporary-directory.h"

namespace {

// Control groups as they are mounted, and the file that tells the group of a process.
class AvailableCores : public testing::Test {
 protected:
  CTemporaryDirectory place;

  void write(const std::string& name, const std::string& text) {
    const std::filesystem::path path = place.path(name);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << text;
  }
  unsigned cores() { return available_cores(place.path("groups"), place.path("own")); }
};

unsigned cores_of_affinity() {
  cpu_set_t set;
  CPU_ZERO(&set);
  sched_getaffinity(0, sizeof set, &set);
  return static_cast<unsigned>(CPU_COUNT(&set));
}

TEST_F(AvailableCores, AreThoseOfTheAffinityWithoutAnyLimit) {
  EXPECT_EQ(cores(), cores_of_affinity());
  write("own", "0::/user/session\n");
  write("groups/user/session/cpu.max", "max 100000\n");
  EXPECT_EQ(cores(), cores_of_affinity());
}

TEST_F(AvailableCores, AreNoMoreThanAGroupIsGranted) {
  write("own", "0::/user/session\n");
  write("groups/user/session/cpu.max", "50000 100000\n");
  EXPECT_EQ(cores(), 1U);
  write("groups/user/session/cpu.max", "110000 100000\n");
  EXPECT_EQ(cores(), std::min(2U, cores_of_affinity()));
}

TEST_F(AvailableCores, AreHeldToTheLimitsOfTheGroupsAround) {
  write("own", "0::/user/session\n");
  write("groups/user/cpu.max", "100000 100000\n");
  EXPECT_EQ(cores(), 1U);
}

TEST_F(AvailableCores, KnowTheOlderGroups) {
  write("own", "4:memory:/a\n3:cpu,cpuacct:/a\n");
  write("groups/cpu,cpuacct/a/cpu.cfs_quota_us", "100000\n");
  write("groups/cpu,cpuacct/a/cpu.cfs_period_us", "100000\n");
  EXPECT_EQ(cores(), 1U);
  write("groups/cpu,cpuacct/a/cpu.cfs_quota_us", "-1\n");
  EXPECT_EQ(cores(), cores_of_affinity());
}

}  // namespace
