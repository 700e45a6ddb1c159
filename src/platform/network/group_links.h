#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "native/network_calls.h"
#include "platform/network/interfaces.h"

namespace quorvel {

/// The network interfaces as one socket uses them: joined for the socket's groups, chosen for the
/// socket's sends. docs/reliability.md tells the rules and the reasons.
class GroupLinks {
 public:
  /// Silence on an interface for this many calls of `CountQuiet` brings a new join.
  static constexpr int kQuietCounts = 60;

  /// `sockets` and `links` outlive this object; so does `socket`, which stays the caller's.
  GroupLinks(SocketCalls& sockets, LinkCalls& links, int socket)
      : mSockets(sockets), mLinks(links), mSocket(socket) {}

  /// Wants the group from now on, and joins by the last look. False, with `errno`, when the group
  /// is joined on no interface; later looks try again.
  [[nodiscard]] bool Join(Ipv4Address group);
  /// Wants the group no more, and leaves on every interface. False with EADDRNOTAVAIL when the
  /// group was not wanted.
  bool Leave(Ipv4Address group);
  [[nodiscard]] bool Wants(Ipv4Address group) const { return mGroups.contains(group); }

  /// Looks at the interfaces anew, and returns the interfaces that may have missed datagrams.
  /// `Rejoin`, to be called next, acts on the look.
  [[nodiscard]] std::vector<InterfaceIndex> Look(const LinkNotices& notices);
  /// Brings all joins up to date with the last look: leaves interfaces that are gone or unfit,
  /// joins new interfaces, leaves and joins renewed interfaces.
  void Rejoin();
  /// Whether a look or a join has failed, so that another look may mend more.
  [[nodiscard]] bool IsIncomplete() const { return mIncomplete; }

  /// A datagram of a wanted group came in from `from` by `interface`. The host's own datagrams say
  /// nothing about the network.
  void Heard(Ipv4Address from, InterfaceIndex interface) {
    const Source source(from, interface);
    if (source != mLastHeard) Note(source);
  }
  /// Counts one period of time, and joins anew on interfaces that have been quiet for kQuietCounts
  /// periods: a switch that nobody asks forgets its members.
  void CountQuiet();

  /// Sends groups' datagrams by the interface with this name alone, from the next look on; an empty
  /// name leaves the choice to this object.
  void SendBy(const std::string& name) { mSendBy = name; }
  /// Sets the interface for the next datagram to a group, by the last look; the interface stays
  /// until it goes away. False, with `errno`, when no interface will do.
  bool PrepareSend();
  /// Whether the computer had no network to send to at the last send.
  [[nodiscard]] bool LacksNetwork() const;
  /// A send has failed: the system may have lost the setting of the interface.
  void DistrustSending() { mSet = 0; }

  /// The last look.
  [[nodiscard]] const Interfaces& All() const { return mAll; }
  /// The result of the group's join on each interface tried: 0, or an `errno`.
  [[nodiscard]] std::map<InterfaceIndex, int> Joins(Ipv4Address group) const;

 private:
  using JoinResults = std::map<InterfaceIndex, int>;
  using Source = std::pair<Ipv4Address, InterfaceIndex>;

  void Note(const Source& source);

  void Update(Ipv4Address group, JoinResults& joins);
  int TryJoin(Ipv4Address group, InterfaceIndex interface);
  bool MakeRoom(Ipv4Address group, JoinResults& joins, const std::vector<InterfaceIndex>& order,
                InterfaceIndex wanted);
  void LeaveOn(Ipv4Address group, InterfaceIndex interface, int& result, int error);
  [[nodiscard]] InterfaceIndex ChooseToSend() const;

  SocketCalls& mSockets;
  LinkCalls& mLinks;
  int mSocket;
  Interfaces mAll;
  bool mIncomplete = false;
  std::vector<InterfaceIndex> mRenewed;
  std::map<Ipv4Address, JoinResults> mGroups;
  std::map<InterfaceIndex, int> mQuiet;
  /// The last source heard since the last look and the last count.
  Source mLastHeard{};
  std::string mSendBy;
  /// The interface chosen for sends, and the interface last set; 0 for none.
  InterfaceIndex mChosen = 0;
  InterfaceIndex mSet = 0;
};

}  // namespace quorvel
