#pragma once

#include <string>

// The cores that this process may use: those of its affinity, no more than its control groups grant it time for. At
// least one. `groups` is where they are mounted, and `own_group` the file that tells the group of the process.
unsigned available_cores(const std::string& groups = "/sys/fs/cgroup",
                         const std::string& own_group = "/proc/self/cgroup");
