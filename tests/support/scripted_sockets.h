#pragma once

#include <unistd.h>

#include <array>
#include <cerrno>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "support/side.h"

namespace quorvel {

/// Sockets with no network: what arrives is scripted, what is sent is kept.
class ScriptedSockets : public SocketCalls {
 public:
  struct Sent {
    Ipv4Address to;
    uint16_t port;
    std::string bytes;
  };

  // A pipe that nobody writes to has nothing to read.
  int Open(int) override {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return -1;
    mSilent = ends[1];
    return ends[0];
  }
  void Close(int socket) override {
    close(socket);
    close(mSilent);
  }
  bool Bind(int, uint16_t) override { return true; }
  bool SharePort(int) override { return true; }
  bool SetMulticastLoop(int, bool) override { return true; }
  bool SetMulticastHops(int, int) override { return true; }
  bool SetMulticastInterface(int, InterfaceIndex) override { return true; }
  bool Join(int, Ipv4Address, InterfaceIndex) override { return true; }
  bool Leave(int, Ipv4Address, InterfaceIndex) override { return true; }
  bool Send(int, Ipv4Address to, uint16_t port, std::string_view bytes) override {
    sent.push_back({to, port, std::string(bytes)});
    return true;
  }
  bool Receive(int, ReceiveBatch& batch) override {
    batch.Clear();
    if (failure != 0) {
      errno = std::exchange(failure, 0);
      return false;
    }
    for (size_t i = 0; i < ReceiveBatch::kMostDatagrams && !arriving.empty(); ++i) {
      const auto& [from, bytes] = arriving.front();
      std::copy(bytes.begin(), bytes.end(), batch.Slot(i).begin());
      batch.Add(from, bytes.size());
      arriving.pop_front();
    }
    errno = EAGAIN;
    return !batch.Received().empty();
  }
  std::vector<InterfaceIndex> UsableInterfaces() override { return {}; }

  std::deque<std::pair<Ipv4Address, std::string>> arriving;
  std::vector<Sent> sent;
  /// What the next receive fails with; 0 for nothing.
  int failure = 0;

 private:
  int mSilent = -1;
};

/// A headless side without a network.
class OfflineSide : public test::Side {
 public:
  SocketCalls& Sockets() override { return sockets; }

  ScriptedSockets sockets;
};

}  // namespace quorvel
