#pragma once

#include <unistd.h>

#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "native/network_calls.h"
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
    InterfaceIndex by;
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
  bool ShareAddress(int) override { return !mFaults.Strike("ShareAddress"); }
  bool SharePort(int) override { return !mFaults.Strike("SharePort"); }
  bool SetMulticastLoop(int, bool on) override { return loop = on, true; }
  bool SetMulticastHops(int, int count) override { return hops = count, true; }
  bool SetMulticastInterface(int, InterfaceIndex interface, Ipv4Address) override {
    if (mFaults.Strike("SetMulticastInterface")) return false;
    return sends_by = interface, true;
  }
  bool Join(int, Ipv4Address group, InterfaceIndex interface) override {
    if (mFaults.Strike("Join")) return false;
    if (memberships.size() >= most_memberships) return errno = ENOBUFS, false;
    if (!memberships.emplace(group, interface).second) return errno = EADDRINUSE, false;
    return joined.push_back(group), true;
  }
  bool Leave(int, Ipv4Address group, InterfaceIndex interface) override {
    memberships.erase({group, interface});
    return left.push_back(group), true;
  }
  bool Send(int, Ipv4Address to, uint16_t port, std::string_view bytes) override {
    if (mFaults.Strike("Send")) return false;
    return sent.push_back({to, port, std::string(bytes), sends_by}), true;
  }
  bool Receive(int, ReceiveBatch& batch) override {
    batch.Clear();
    if (mFaults.Strike("Receive")) return false;
    for (size_t i = 0; i < ReceiveBatch::kMostDatagrams && !arriving.empty(); ++i) {
      const auto& [from, bytes] = arriving.front();
      std::ranges::copy(bytes, batch.Slot(i).begin());
      arrival.from = from;
      batch.Add(arrival, bytes.size());
      arriving.pop_front();
    }
    errno = EAGAIN;
    return !batch.Received().empty();
  }
  bool WaitToReceive(int, int, int) override { return false; }
  [[nodiscard]] bool AllowsThread() const override { return false; }
  size_t ReceiveBufferBytes(int) override { return 0; }
  uint32_t DroppedBySystem(int) override { return 0; }

  /// Called before each socket is opened.
  std::function<void()> opens;
  std::deque<std::pair<Ipv4Address, std::string>> arriving;
  /// All but the senders and the bytes of the arriving datagrams.
  DatagramHead arrival;
  std::vector<Sent> sent;
  std::vector<Ipv4Address> joined, left;
  std::set<std::pair<Ipv4Address, InterfaceIndex>> memberships;
  size_t most_memberships = 20;
  InterfaceIndex sends_by = 0;
  bool loop = false;
  int hops = 0;
  /// The open sockets.
  std::map<int, int> open;

 private:
  Faults& mFaults;
};

/// Network interfaces as a test sets them, without notices: the program looks every two seconds.
class ScriptedLinks : public LinkCalls {
 public:
  explicit ScriptedLinks(Faults& faults) : mFaults(faults) {}

  std::optional<std::vector<NetworkInterface>> Interfaces() override {
    if (mFaults.Strike("Interfaces")) return std::nullopt;
    return interfaces;
  }
  std::vector<InterfaceIndex> DefaultRoutes() override { return default_routes; }
  int OpenNotices() override { return -1; }
  void CloseNotices(int) override {}
  LinkNotices ReadNotices(int) override { return {}; }

  static NetworkInterface Card(InterfaceIndex index, Ipv4Address address) {
    NetworkInterface card;
    card.index = index;
    card.name = "card" + std::to_string(index);
    card.up = card.running = card.multicast = true;
    card.addresses = {address};
    return card;
  }
  std::vector<NetworkInterface> interfaces = {Card(2, 0x0A00000F)};
  std::vector<InterfaceIndex> default_routes;

 private:
  Faults& mFaults;
};

}  // namespace quorvel::test
