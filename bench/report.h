#pragma once

#include <sys/resource.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

namespace quorvel::bench {

/// The processor time of this process since the start, user and system, in seconds.
inline double ProcessorSeconds() {
  rusage use{};
  getrusage(RUSAGE_SELF, &use);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(use.ru_utime) + seconds(use.ru_stime);
}

/// A line of /proc/self/status in KiB, such as VmRSS (memory in use) or VmHWM (the most so far).
inline int64_t MemoryKib(const std::string& name) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(name + ":")) return std::stoll(line.substr(name.size() + 1));
  }
  return 0;
}

/// Writes what a receiver has heard and used as a line of JSON.
inline void PrintReport(int64_t messages, size_t log_bytes, uint32_t drops) {
  std::printf(
      "{\"messages\": %lld, \"log_bytes\": %zu, \"drops\": %u, \"processor_seconds\": %.6f, "
      "\"resident_kib\": %lld, \"peak_kib\": %lld}\n",
      static_cast<long long>(messages), log_bytes, drops, ProcessorSeconds(),
      static_cast<long long>(MemoryKib("VmRSS")), static_cast<long long>(MemoryKib("VmHWM")));
}

}  // namespace quorvel::bench
