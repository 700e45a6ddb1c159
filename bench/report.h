#pragma once

#include <sys/resource.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "messaging/channel.h"

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

/// The datagrams that the kernel dropped at the open sockets of the channel's port in this network
/// namespace: the last word of a socket's line, whose second word is the local address and port.
inline int64_t KernelDrops() {
  std::ifstream sockets("/proc/self/net/udp");
  std::ostringstream port;
  port << ':' << std::uppercase << std::hex << kPort;
  int64_t drops = 0;
  for (std::string line; std::getline(sockets, line);) {
    std::istringstream words(line);
    std::string number, local, word;
    words >> number >> local;
    while (words >> word) continue;
    if (local.ends_with(port.str())) drops += std::stoll(word);
  }
  return drops;
}

/// Writes the figures of a receiver as a line of JSON. The receiver's socket is still open.
inline void PrintReport(int64_t messages, size_t log_bytes) {
  std::printf(
      "{\"messages\": %lld, \"log_bytes\": %zu, \"drops\": %lld, \"processor_seconds\": %.6f, "
      "\"resident_kib\": %lld, \"peak_kib\": %lld}\n",
      static_cast<long long>(messages), log_bytes, static_cast<long long>(KernelDrops()),
      ProcessorSeconds(), static_cast<long long>(MemoryKib("VmRSS")),
      static_cast<long long>(MemoryKib("VmHWM")));
}

}  // namespace quorvel::bench
