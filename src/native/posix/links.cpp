// Network interfaces, default routes, and notices of changes.

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <utility>

#include "native/network_calls.h"

#ifdef __linux__
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#endif

namespace quorvel {

namespace {

using ByIndex = std::map<InterfaceIndex, NetworkInterface>;

// An address may carry a label: the interface's name, a colon and more.
std::string NameOf(const ifaddrs& entry) {
  const std::string label = entry.ifa_name;
  return label.substr(0, label.find(':'));
}

void Describe(NetworkInterface& interface, const ifaddrs& entry) {
  const auto has = [&entry](unsigned flag) { return (entry.ifa_flags & flag) != 0; };
  interface.name = NameOf(entry);
  interface.up = has(IFF_UP);
  interface.running = has(IFF_RUNNING);
  interface.multicast = has(IFF_MULTICAST);
  interface.loopback = has(IFF_LOOPBACK);
  interface.point_to_point = has(IFF_POINTOPOINT);
  if (entry.ifa_addr == nullptr || entry.ifa_addr->sa_family != AF_INET) return;
  const auto* const address = reinterpret_cast<const sockaddr_in*>(entry.ifa_addr);
  interface.addresses.push_back(ntohl(address->sin_addr.s_addr));
}

#ifdef __linux__

constexpr size_t kNoticeBytes = 65536;

int OpenRouteSocket(unsigned groups, int flags) {
  const int opened = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | flags, NETLINK_ROUTE);
  if (opened < 0) return -1;
  sockaddr_nl local{};
  local.nl_family = AF_NETLINK;
  local.nl_groups = groups;
  if (bind(opened, reinterpret_cast<const sockaddr*>(&local), sizeof local) == 0) return opened;
  close(opened);
  return -1;
}

uint32_t LinkChanges(const nlmsghdr& header) {
  const auto* const link = static_cast<const ifinfomsg*>(NLMSG_DATA(&header));
  auto left = static_cast<int>(IFLA_PAYLOAD(&header));
  for (const rtattr* part = IFLA_RTA(link); RTA_OK(part, left); part = RTA_NEXT(part, left)) {
    if (part->rta_type == IFLA_CARRIER_CHANGES) {
      return *static_cast<const uint32_t*>(RTA_DATA(part));
    }
  }
  return 0;
}

/// Calls `take` with each message that one read of the descriptor brings. False when nothing was
/// read, with the reason in `errno`; EMSGSIZE for messages that did not fit.
template <class Take>
bool ReadMessages(int descriptor, const Take& take) {
  alignas(nlmsghdr) std::array<char, kNoticeBytes> room;
  const ssize_t length = recv(descriptor, room.data(), room.size(), MSG_TRUNC);
  if (length < 0) return false;
  if (static_cast<size_t>(length) > room.size()) {
    errno = EMSGSIZE;
    return false;
  }
  auto left = static_cast<int>(length);
  for (const auto* message = reinterpret_cast<const nlmsghdr*>(room.data());
       left > 0 && NLMSG_OK(message, static_cast<uint32_t>(left));
       message = NLMSG_NEXT(message, left)) {
    take(*message);
  }
  return true;
}

bool IsLoss(int error) { return error == ENOBUFS || error == EMSGSIZE; }

bool AskForLinks(int descriptor) {
  struct {
    nlmsghdr header{};
    ifinfomsg link{};
  } question;
  question.header.nlmsg_len = sizeof question;
  question.header.nlmsg_type = RTM_GETLINK;
  question.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
  return send(descriptor, &question, sizeof question, 0) == sizeof question;
}

// Without an answer, the counts stay 0, and the coming and going of a link shows by `running`.
void CountLinkChanges(ByIndex& interfaces) {
  const int descriptor = OpenRouteSocket(0, 0);
  if (descriptor < 0) return;
  bool more = AskForLinks(descriptor);
  while (more) {
    more = ReadMessages(
               descriptor,
               [&](const nlmsghdr& message) {
                 if (message.nlmsg_type == NLMSG_DONE || message.nlmsg_type == NLMSG_ERROR)
                   more = false;
                 if (message.nlmsg_type != RTM_NEWLINK) return;
                 const auto* const link = static_cast<const ifinfomsg*>(NLMSG_DATA(&message));
                 const auto found = interfaces.find(static_cast<InterfaceIndex>(link->ifi_index));
                 if (found != interfaces.end()) found->second.link_changes = LinkChanges(message);
               }) &&
           more;
  }
  close(descriptor);
}

void Note(LinkNotices& notices, const nlmsghdr& message) {
  int index = 0;
  if (message.nlmsg_type == RTM_DELLINK) {
    index = static_cast<const ifinfomsg*>(NLMSG_DATA(&message))->ifi_index;
  } else if (message.nlmsg_type == RTM_DELADDR) {
    index = static_cast<int>(static_cast<const ifaddrmsg*>(NLMSG_DATA(&message))->ifa_index);
  } else {
    return;
  }
  notices.renewed.push_back(static_cast<InterfaceIndex>(index));
}

// The table of routes has a line for each route, with numbers in hexadecimal digits.
std::vector<InterfaceIndex> ReadDefaultRoutes() {
  std::ifstream table("/proc/self/net/route");
  std::multimap<unsigned, InterfaceIndex> by_metric;
  std::string line;
  while (std::getline(table, line)) {
    std::istringstream fields(line);
    std::string name, destination, gateway, mask;
    unsigned flags = 0, references = 0, uses = 0, metric = 0;
    fields >> name >> destination >> gateway >> std::hex >> flags >> std::dec >> references >>
        uses >> metric >> mask;
    constexpr unsigned kRouteIsUp = 1;
    if (!fields || destination != "00000000" || mask != "00000000") continue;
    if ((flags & kRouteIsUp) != 0) by_metric.emplace(metric, if_nametoindex(name.c_str()));
  }
  std::vector<InterfaceIndex> best_first;
  for (const auto& [metric, index] : by_metric) best_first.push_back(index);
  return best_first;
}

#else

constexpr Ipv4Address kFarAddress = 0xCB007101;  // 203.0.113.1, an address for examples

void CountLinkChanges(ByIndex&) {}

// Of a socket that is connected to a far address, the local address is the address of the best
// route's interface. Connecting a datagram socket sends nothing.
Ipv4Address AddressOfBestRoute() {
  const int probe = socket(AF_INET, SOCK_DGRAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(9);
  address.sin_addr.s_addr = htonl(kFarAddress);
  socklen_t size = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  const bool known = connect(probe, plain, size) == 0 && getsockname(probe, plain, &size) == 0;
  close(probe);
  return known ? ntohl(address.sin_addr.s_addr) : 0;
}

#endif

class Posix final : public LinkCalls {
 public:
  std::optional<std::vector<NetworkInterface>> Interfaces() override {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) return std::nullopt;
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> list(first, &freeifaddrs);
    ByIndex by_index;
    for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
      const InterfaceIndex index = if_nametoindex(NameOf(*entry).c_str());
      // An interface that has gone since the list was made has no index.
      if (index == 0) continue;
      by_index[index].index = index;
      Describe(by_index[index], *entry);
    }
    CountLinkChanges(by_index);
    std::vector<NetworkInterface> all;
    for (auto& [index, interface] : by_index) all.push_back(std::move(interface));
    return all;
  }

#ifdef __linux__
  std::vector<InterfaceIndex> DefaultRoutes() override { return ReadDefaultRoutes(); }

  int OpenNotices() override {
    return OpenRouteSocket(RTMGRP_LINK | RTMGRP_IPV4_IFADDR, SOCK_NONBLOCK);
  }

  LinkNotices ReadNotices(int descriptor) override {
    LinkNotices notices;
    const auto note = [&notices](const nlmsghdr& message) { Note(notices, message); };
    while (ReadMessages(descriptor, note) || IsLoss(errno)) {
      if (IsLoss(std::exchange(errno, 0))) notices.complete = false;
    }
    return notices;
  }
#else
  std::vector<InterfaceIndex> DefaultRoutes() override {
    const Ipv4Address address = AddressOfBestRoute();
    std::vector<InterfaceIndex> best;
    for (const auto& interface : Interfaces().value_or(std::vector<NetworkInterface>{})) {
      if (std::ranges::count(interface.addresses, address) > 0) best.push_back(interface.index);
    }
    return best;
  }

  int OpenNotices() override {
    errno = ENOTSUP;
    return -1;
  }

  LinkNotices ReadNotices(int) override { return {}; }
#endif

  void CloseNotices(int descriptor) override { close(descriptor); }
};

}  // namespace

LinkCalls& PosixLinkCalls() {
  static Posix calls;
  return calls;
}

}  // namespace quorvel
