#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "native/network_calls.h"
#include "platform/network/interfaces.h"
#include "platform/network/sockets.h"

/// The facts that quorvel-check gathers, and nothing derived from them.
namespace quorvel::check {

enum class Probe : uint8_t { NotSent, Lost, CameBack };

struct InterfaceFacts {
  NetworkInterface interface;
  Unfit unfit = Unfit::No;
  /// The result of the group's join, 0 or an `errno`; nothing where the group is not to be joined.
  std::optional<int> join;
  Probe probe = Probe::NotSent;
  /// The `errno` of a probe that could not be sent.
  int probe_error = 0;
  /// The filter in force: 0 off, 1 strict, 2 loose. Nothing where the system has no such filter.
  std::optional<int> reverse_path_filter;
};

/// A program that has the port open, beside this program.
struct PortUser {
  /// 0 and an empty name when this program may not look.
  int64_t pid = 0;
  std::string name;
  /// The system's number of the user who opened the port.
  int64_t user = 0;
};

struct Firewall {
  /// The program that showed the rules, with its arguments.
  std::string shown_by;
  /// The first rule that may drop Quorvel's datagrams; empty without such a rule.
  std::string rule;
};

struct SenderFacts {
  Ipv4Address address = 0;
  /// Whether the sender is this computer.
  bool own = false;
  uint64_t datagrams = 0;
  uint64_t messages = 0;
  /// The names of the interfaces by which the datagrams came.
  std::set<std::string> interfaces;
  /// The bytes at hand of a packet that is not whole, and the packet's length; 0 and 0 when there
  /// is no such packet.
  int64_t held = 0;
  int64_t announced = 0;
};

struct Facts {
  /// Words for the source of the key.
  std::string key_from;
  std::string group;
  uint16_t port = 0;
  /// The `errno` of the opening of the port, 0 for success.
  int open_error = 0;
  /// The `errno` of the first join, 0 for success.
  int join_error = 0;
  std::vector<InterfaceFacts> interfaces;
  std::vector<PortUser> port_users;
  /// In bytes; 0 when unknown.
  size_t buffer_asked = 0;
  size_t buffer_granted = 0;
  std::optional<Firewall> firewall;
  int32_t seconds = 0;
  std::vector<SenderFacts> senders;
  DropCounts drops;
};

}  // namespace quorvel::check
