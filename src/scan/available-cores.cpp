#include "available-cores.h"

#include <tbb/info.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

namespace fs = std::filesystem;

namespace {

// "quota period" in one file, or a number in each of two; a quota that is none stands for no limit.
double cores_of(std::istream& quota, std::istream& period) {
  double granted = 0;
  double of = 0;
  if (quota >> granted && period >> of && granted > 0 && of > 0) return granted / of;
  return std::numeric_limits<double>::infinity();
}

double limit_of_group(const fs::path& group) {
  std::ifstream both(group / "cpu.max");
  std::ifstream quota(group / "cpu.cfs_quota_us");
  std::ifstream period(group / "cpu.cfs_period_us");
  return both ? cores_of(both, both) : cores_of(quota, period);
}

// A group is also held to the limits of those that it is in.
double limit_on_the_way_up(const fs::path& mount, fs::path group) {
  double least = limit_of_group(mount);
  for (; group.has_relative_path(); group = group.parent_path()) {
    least = std::min(least, limit_of_group(mount / group.relative_path()));
  }
  return least;
}

}  // namespace

unsigned available_cores(const std::string& groups, const std::string& own_group) {
  double least = tbb::info::default_concurrency();
  std::ifstream lines(own_group);
  for (std::string line; std::getline(lines, line);) {  // number:controllers:path
    const std::size_t first = line.find(':');
    const std::size_t second = first == std::string::npos ? first : line.find(':', first + 1);
    if (second == std::string::npos) continue;
    const std::string controllers = line.substr(first + 1, second - first - 1);
    const fs::path mount = controllers.empty() ? fs::path(groups) : fs::path(groups) / controllers;
    least = std::min(least, limit_on_the_way_up(mount, line.substr(second + 1)));
  }
  return static_cast<unsigned>(std::max(1.0, std::ceil(least)));
}
