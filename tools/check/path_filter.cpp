#include "tools/check/path_filter.h"

#include <algorithm>
#include <fstream>

namespace quorvel::check {

namespace {

std::optional<int> SettingOf(const std::string& interface) {
  std::ifstream file("/proc/sys/net/ipv4/conf/" + interface + "/rp_filter");
  int value = 0;
  return file >> value ? std::optional(value) : std::nullopt;
}

}  // namespace

// The system goes by the higher of the two settings.
std::optional<int> ReversePathFilter(const std::string& interface) {
  return std::max(SettingOf("all"), SettingOf(interface));
}

}  // namespace quorvel::check
