#include <arpa/inet.h>
#include <fcntl.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "native/system_calls.h"

namespace quorvel {

namespace {

constexpr int kSendPatienceMs = 1000;

sockaddr_in EndPoint(Ipv4Address address, uint16_t port) {
  sockaddr_in end_point{};
  end_point.sin_family = AF_INET;
  end_point.sin_port = htons(port);
  end_point.sin_addr.s_addr = htonl(address);
  return end_point;
}

template <class Value>
bool SetOption(int socket, int level, int name, const Value& value) {
  return setsockopt(socket, level, name, &value, sizeof value) == 0;
}

bool MakeNonBlocking(int socket) {
  return fcntl(socket, F_SETFL, O_NONBLOCK) == 0 && fcntl(socket, F_SETFD, FD_CLOEXEC) == 0;
}

// By default on Linux, a socket also hears the groups that other sockets of the host joined.
bool HearOwnGroupsOnly([[maybe_unused]] int socket) {
#ifdef IP_MULTICAST_ALL
  return SetOption(socket, IPPROTO_IP, IP_MULTICAST_ALL, int{0});
#else
  return true;
#endif
}

#ifdef __linux__

bool ReceiveMany(int socket, ReceiveBatch& batch) {
  std::array<mmsghdr, ReceiveBatch::kMostDatagrams> messages{};
  std::array<iovec, ReceiveBatch::kMostDatagrams> slots{};
  std::array<sockaddr_in, ReceiveBatch::kMostDatagrams> senders{};
  for (size_t i = 0; i < messages.size(); ++i) {
    slots[i] = {batch.Slot(i).data(), batch.Slot(i).size()};
    messages[i].msg_hdr.msg_name = &senders[i];
    messages[i].msg_hdr.msg_namelen = sizeof senders[i];
    messages[i].msg_hdr.msg_iov = &slots[i];
    messages[i].msg_hdr.msg_iovlen = 1;
  }
  const int count = recvmmsg(socket, messages.data(), messages.size(), MSG_DONTWAIT, nullptr);
  for (size_t i = 0; static_cast<int>(i) < count; ++i) {
    batch.Add(ntohl(senders[i].sin_addr.s_addr), messages[i].msg_len);
  }
  return count > 0;
}

#else

bool ReceiveMany(int socket, ReceiveBatch& batch) {
  for (size_t i = 0; i < ReceiveBatch::kMostDatagrams; ++i) {
    sockaddr_in sender{};
    socklen_t sender_size = sizeof sender;
    const ssize_t length =
        recvfrom(socket, batch.Slot(i).data(), batch.Slot(i).size(), MSG_DONTWAIT,
                 reinterpret_cast<sockaddr*>(&sender), &sender_size);
    if (length < 0) return i > 0;
    batch.Add(ntohl(sender.sin_addr.s_addr), static_cast<size_t>(length));
  }
  return true;
}

#endif

class Posix final : public SocketCalls {
 public:
  int Open(int receive_buffer_bytes) override {
    const int opened = socket(AF_INET, SOCK_DGRAM, 0);
    if (opened < 0) return -1;
    if (!MakeNonBlocking(opened) || !HearOwnGroupsOnly(opened)) {
      close(opened);
      return -1;
    }
    SetOption(opened, SOL_SOCKET, SO_RCVBUF, receive_buffer_bytes);
    return opened;
  }

  void Close(int socket) override { close(socket); }

  bool Bind(int socket, uint16_t port) override {
    const sockaddr_in local = EndPoint(INADDR_ANY, port);
    return bind(socket, reinterpret_cast<const sockaddr*>(&local), sizeof local) == 0;
  }

  bool SharePort(int socket) override {
#ifndef __linux__
    if (!SetOption(socket, SOL_SOCKET, SO_REUSEPORT, int{1})) return false;
#endif
    return SetOption(socket, SOL_SOCKET, SO_REUSEADDR, int{1});
  }

  bool SetMulticastLoop(int socket, bool on) override {
    return SetOption(socket, IPPROTO_IP, IP_MULTICAST_LOOP, static_cast<unsigned char>(on));
  }

  bool SetMulticastHops(int socket, int hops) override {
    return SetOption(socket, IPPROTO_IP, IP_MULTICAST_TTL,
                     static_cast<unsigned char>(std::clamp(hops, 0, 255)));
  }

  bool SetMulticastInterface(int socket, InterfaceIndex interface) override {
    return SetOption(socket, IPPROTO_IP, IP_MULTICAST_IF, Membership(INADDR_ANY, interface));
  }

  bool Join(int socket, Ipv4Address group, InterfaceIndex interface) override {
    return SetOption(socket, IPPROTO_IP, IP_ADD_MEMBERSHIP, Membership(group, interface));
  }

  bool Leave(int socket, Ipv4Address group, InterfaceIndex interface) override {
    return SetOption(socket, IPPROTO_IP, IP_DROP_MEMBERSHIP, Membership(group, interface));
  }

  bool Send(int socket, Ipv4Address to, uint16_t port, std::string_view bytes) override {
    const sockaddr_in remote = EndPoint(to, port);
    while (true) {
      if (sendto(socket, bytes.data(), bytes.size(), 0, reinterpret_cast<const sockaddr*>(&remote),
                 sizeof remote) >= 0) {
        return true;
      }
      // A full send buffer soon has room again. A second without room is a failure.
      const bool full = errno == EAGAIN || errno == EWOULDBLOCK || errno == ENOBUFS;
      pollfd writable{socket, POLLOUT, 0};
      if (errno != EINTR && !(full && poll(&writable, 1, kSendPatienceMs) > 0)) return false;
    }
  }

  bool Receive(int socket, ReceiveBatch& batch) override {
    batch.Clear();
    return ReceiveMany(socket, batch);
  }

  std::vector<InterfaceIndex> UsableInterfaces() override {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) return {};
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> list(first, &freeifaddrs);
    std::vector<InterfaceIndex> usable;
    std::vector<InterfaceIndex> loopback;
    for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
      if (entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != AF_INET) continue;
      if ((entry->ifa_flags & IFF_UP) == 0) continue;
      const bool is_loopback = (entry->ifa_flags & IFF_LOOPBACK) != 0;
      if (!is_loopback && (entry->ifa_flags & IFF_MULTICAST) == 0) continue;
      auto& kind = is_loopback ? loopback : usable;
      const InterfaceIndex index = if_nametoindex(entry->ifa_name);
      if (std::ranges::find(kind, index) == kind.end()) kind.push_back(index);
    }
    return usable.empty() ? loopback : usable;
  }

 private:
  static ip_mreqn Membership(Ipv4Address group, InterfaceIndex interface) {
    ip_mreqn membership{};
    membership.imr_multiaddr.s_addr = htonl(group);
    membership.imr_ifindex = static_cast<int>(interface);
    return membership;
  }
};

}  // namespace

SocketCalls& PosixSocketCalls() {
  static Posix calls;
  return calls;
}

}  // namespace quorvel
