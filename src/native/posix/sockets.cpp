#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "native/network_calls.h"

#ifdef __linux__
#include <linux/sock_diag.h>
#endif

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
void HearOwnGroupsOnly([[maybe_unused]] int socket) {
#ifdef IP_MULTICAST_ALL
  SetOption(socket, IPPROTO_IP, IP_MULTICAST_ALL, int{0});
#endif
}

// Has the system tell the interface, the destination and the time of each datagram.
void TellArrivals(int socket) {
#ifdef SO_TIMESTAMPNS
  SetOption(socket, SOL_SOCKET, SO_TIMESTAMPNS, int{1});
#endif
#ifdef IP_RECVPKTINFO
  SetOption(socket, IPPROTO_IP, IP_RECVPKTINFO, int{1});
#else
  SetOption(socket, IPPROTO_IP, IP_PKTINFO, int{1});
#endif
}

// One datagram that is being received: the room for the system's answers.
struct Receiving {
  sockaddr_in sender{};
  iovec slot{};
  alignas(cmsghdr)
      std::array<char, CMSG_SPACE(sizeof(in_pktinfo)) + CMSG_SPACE(sizeof(timespec))> control{};

  msghdr Message(std::span<char> room) {
    slot = {room.data(), room.size()};
    msghdr message{};
    message.msg_name = &sender;
    message.msg_namelen = sizeof sender;
    message.msg_iov = &slot;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    return message;
  }
};

bool IsBroadcast([[maybe_unused]] const msghdr& message, const in_pktinfo& info) {
#ifdef MSG_BCAST
  return (message.msg_flags & MSG_BCAST) != 0 || info.ipi_addr.s_addr == INADDR_BROADCAST;
#else
  // Of a datagram to this host alone, the destination is the local address too.
  return info.ipi_addr.s_addr != info.ipi_spec_dst.s_addr &&
         !IN_MULTICAST(ntohl(info.ipi_addr.s_addr));
#endif
}

void NoteDestination(DatagramHead& datagram, const msghdr& message, const cmsghdr& part) {
  in_pktinfo info{};
  std::memcpy(&info, CMSG_DATA(&part), sizeof info);
  datagram.to = ntohl(info.ipi_addr.s_addr);
  datagram.interface = static_cast<InterfaceIndex>(info.ipi_ifindex);
  datagram.broadcast = IsBroadcast(message, info);
}

void NoteTime([[maybe_unused]] DatagramHead& datagram, [[maybe_unused]] const cmsghdr& part) {
#ifdef SO_TIMESTAMPNS
  if (part.cmsg_level != SOL_SOCKET || part.cmsg_type != SCM_TIMESTAMPNS) return;
  timespec time{};
  std::memcpy(&time, CMSG_DATA(&part), sizeof time);
  datagram.stamp = std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
#endif
}

DatagramHead Describe(const Receiving& receiving, msghdr& message) {
  DatagramHead datagram;
  datagram.from = ntohl(receiving.sender.sin_addr.s_addr);
  datagram.from_port = ntohs(receiving.sender.sin_port);
  for (cmsghdr* part = CMSG_FIRSTHDR(&message); part != nullptr;
       part = CMSG_NXTHDR(&message, part)) {
    const bool tells_destination = part->cmsg_level == IPPROTO_IP && part->cmsg_type == IP_PKTINFO;
    if (tells_destination) NoteDestination(datagram, message, *part);
    NoteTime(datagram, *part);
  }
  return datagram;
}

#ifdef __linux__

bool ReceiveMany(int socket, ReceiveBatch& batch) {
  std::array<Receiving, ReceiveBatch::kMostDatagrams> receiving;
  std::array<mmsghdr, ReceiveBatch::kMostDatagrams> messages{};
  for (size_t i = 0; i < messages.size(); ++i) {
    messages[i].msg_hdr = receiving[i].Message(batch.Slot(i));
  }
  const int count = recvmmsg(socket, messages.data(), messages.size(), MSG_DONTWAIT, nullptr);
  for (size_t i = 0; static_cast<int>(i) < count; ++i) {
    batch.Add(Describe(receiving[i], messages[i].msg_hdr), messages[i].msg_len);
  }
  return count > 0;
}

#else

bool ReceiveMany(int socket, ReceiveBatch& batch) {
  for (size_t i = 0; i < ReceiveBatch::kMostDatagrams; ++i) {
    Receiving receiving;
    msghdr message = receiving.Message(batch.Slot(i));
    const ssize_t length = recvmsg(socket, &message, MSG_DONTWAIT);
    if (length < 0) return i > 0;
    batch.Add(Describe(receiving, message), static_cast<size_t>(length));
  }
  return true;
}

#endif

class Posix final : public SocketCalls {
 public:
  int Open(int receive_buffer_bytes) override {
    const int opened = socket(AF_INET, SOCK_DGRAM, 0);
    if (opened < 0) return -1;
    if (!MakeNonBlocking(opened)) {
      close(opened);
      return -1;
    }
    HearOwnGroupsOnly(opened);
    TellArrivals(opened);
    SetOption(opened, SOL_SOCKET, SO_RCVBUF, receive_buffer_bytes);
    return opened;
  }

  void Close(int socket) override { close(socket); }

  bool Bind(int socket, uint16_t port) override {
    const sockaddr_in local = EndPoint(INADDR_ANY, port);
    return bind(socket, reinterpret_cast<const sockaddr*>(&local), sizeof local) == 0;
  }

  bool ShareAddress(int socket) override {
    return SetOption(socket, SOL_SOCKET, SO_REUSEADDR, int{1});
  }

  bool SharePort(int socket) override {
    return SetOption(socket, SOL_SOCKET, SO_REUSEPORT, int{1});
  }

  bool SetMulticastLoop(int socket, bool on) override {
    return SetOption(socket, IPPROTO_IP, IP_MULTICAST_LOOP, static_cast<unsigned char>(on));
  }

  bool SetMulticastHops(int socket, int hops) override {
    return SetOption(socket, IPPROTO_IP, IP_MULTICAST_TTL,
                     static_cast<unsigned char>(std::clamp(hops, 0, 255)));
  }

  bool SetMulticastInterface(int socket, InterfaceIndex interface, Ipv4Address source) override {
    ip_mreqn leaving = Membership(INADDR_ANY, interface);
    leaving.imr_address.s_addr = htonl(source);
    return SetOption(socket, IPPROTO_IP, IP_MULTICAST_IF, leaving);
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

  bool WaitToReceive(int socket, int stop, int most_ms) override {
    std::array<pollfd, 2> waiting = {pollfd{stop, POLLIN, 0}, pollfd{socket, POLLIN, 0}};
    poll(waiting.data(), waiting.size(), most_ms);
    return waiting[0].revents == 0;
  }

  size_t ReceiveBufferBytes(int socket) override {
    int bytes = 0;
    socklen_t size = sizeof bytes;
    const bool known = getsockopt(socket, SOL_SOCKET, SO_RCVBUF, &bytes, &size) == 0;
    return known ? static_cast<size_t>(bytes) : 0;
  }

  uint32_t DroppedBySystem([[maybe_unused]] int socket) override {
#ifdef SO_MEMINFO
    std::array<uint32_t, SK_MEMINFO_VARS> counts{};
    socklen_t size = sizeof counts;
    if (getsockopt(socket, SOL_SOCKET, SO_MEMINFO, counts.data(), &size) == 0) {
      return counts[SK_MEMINFO_DROPS];
    }
#endif
    return 0;
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
