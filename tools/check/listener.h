#pragma once

#include <map>
#include <vector>

#include "messaging/easy_udp_socket.h"
#include "tools/check/facts.h"

namespace quorvel::check {

/// A listener like Quorvel's own, which counts what comes from whom, and sends probes to itself: an
/// empty datagram to the group by each joined interface. An empty datagram brings no message to any
/// listener.
class Listener : public EasyUDPSocket {
 public:
  Listener() { Constructor(); }

  /// Opens the port, joins the group of `key` and sends the probes.
  void Start(const Text& key);
  /// Adds what is known of the interfaces, the senders and the losses.
  void Tell(Facts& facts) const;

 protected:
  using EasyUDPSocket::Event_Error;
  void Event_Error(int32_t code) override;
  void Event_ReceivedMessage(const Text& from, int32_t command, const Text& data) override;
  void Heard(const DatagramHead& datagram) override;

 private:
  struct SentProbe {
    uint16_t port = 0;
    int error = 0;
    bool came_back = false;
  };
  struct Sender {
    uint64_t datagrams = 0;
    uint64_t messages = 0;
    std::set<InterfaceIndex> interfaces;
  };

  void SendProbe(const NetworkInterface& interface);
  [[nodiscard]] SentProbe* FindProbe(const DatagramHead& datagram);
  [[nodiscard]] InterfaceFacts Describe(const NetworkInterface& interface) const;
  [[nodiscard]] SenderFacts Describe(Ipv4Address address, const Sender& sender,
                                     const Interfaces& interfaces) const;

  Text mGroup;
  int mOpenError = 0;
  int mJoinError = 0;
  std::map<InterfaceIndex, SentProbe> mProbes;
  std::map<Ipv4Address, Sender> mSenders;
};

}  // namespace quorvel::check
