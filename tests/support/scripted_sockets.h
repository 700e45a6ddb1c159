#pragma once

#include <unistd.h>

#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/faulty_files.h"

namespace quorvel::test {

/// Sockets without a network: a test says what arrives and what fails, and sees what is sent and
/// what is asked of the system.
class ScriptedSockets : public SocketCalls {
 public:
  struct Sent {
    Ipv4Address to;
    uint16_t port;
    std::string bytes;
  };

  explicit ScriptedSockets(Faults& faults) : mFaults(faults) {}

  // A pipe that nobody writes to has nothing to read.
  int Open(int) override {
    if (opens) opens();
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return -1;
    open[ends[0]] = ends[1];
    return ends[0];
  }
  void Close(int socket) override {
    close(socket);
    close(open.extract(socket).mapped());
  }
  bool Bind(int, uint16_t) override { return !mFaults.Strike("Bind"); }
  bool SharePort(int) override { return true; }
  bool SetMulticastLoop(int, bool on) override { return loop = on, true; }
  bool SetMulticastHops(int, int count) override { return hops = count, true; }
  bool SetMulticastInterface(int, InterfaceIndex) override { return true; }
  bool Join(int, Ipv4Address group, InterfaceIndex) override {
    return joined.push_back(group), true;
  }
  bool Leave(int, Ipv4Address group, InterfaceIndex) override {
    return left.push_back(group), true;
  }
  bool Send(int, Ipv4Address to, uint16_t port, std::string_view bytes) override {
    return sent.push_back({to, port, std::string(bytes)}), true;
  }
  bool Receive(int, ReceiveBatch& batch) override {
    batch.Clear();
    if (mFaults.Strike("Receive")) return false;
    for (size_t i = 0; i < ReceiveBatch::kMostDatagrams && !arriving.empty(); ++i) {
      const auto& [from, bytes] = arriving.front();
      std::ranges::copy(bytes, batch.Slot(i).begin());
      batch.Add(from, bytes.size());
      arriving.pop_front();
    }
    errno = EAGAIN;
    return !batch.Received().empty();
  }
  std::vector<InterfaceIndex> UsableInterfaces() override { return {}; }

  /// Called before each socket is opened.
  std::function<void()> opens;
  std::deque<std::pair<Ipv4Address, std::string>> arriving;
  std::vector<Sent> sent;
  std::vector<Ipv4Address> joined, left;
  bool loop = false;
  int hops = 0;
  /// The open sockets.
  std::map<int, int> open;

 private:
  Faults& mFaults;
};

}  // namespace quorvel::test
