#include "platform/network/group_links.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace quorvel {

namespace {

// The result of a join that a new join is to replace.
constexpr int kNotJoined = -1;

bool IsJoined(const std::pair<const InterfaceIndex, int>& join) { return join.second == 0; }

}  // namespace

bool GroupLinks::Join(Ipv4Address group) {
  auto& joins = mGroups[group];
  Update(group, joins);
  if (std::ranges::any_of(joins, IsJoined)) return true;
  errno = joins.empty() ? ENODEV : joins.begin()->second;
  return false;
}

bool GroupLinks::Leave(Ipv4Address group) {
  auto joins = mGroups.extract(group);
  if (!joins) {
    errno = EADDRNOTAVAIL;
    return false;
  }
  for (auto& [interface, result] : joins.mapped()) LeaveOn(group, interface, result, kNotJoined);
  return true;
}

std::vector<InterfaceIndex> GroupLinks::Look(const LinkNotices& notices) {
  mIncomplete = true;
  auto all = mLinks.Interfaces();
  if (!all) return {};
  auto changes = CompareLooks(mAll, *all, notices);
  mAll = std::move(*all);
  mLastHeard = {};
  mIncomplete = false;
  mRenewed.insert(mRenewed.end(), changes.renewed.begin(), changes.renewed.end());
  return std::move(changes.lost);
}

void GroupLinks::Rejoin() {
  for (auto& [group, joins] : mGroups) Update(group, joins);
  mRenewed.clear();
}

void GroupLinks::Update(Ipv4Address group, JoinResults& joins) {
  const auto order = InterfacesToJoin(mAll);
  const auto is_wanted = [&order](InterfaceIndex interface) {
    return std::ranges::count(order, interface) > 0;
  };
  for (auto& [interface, result] : joins) {
    const bool renewed = std::ranges::count(mRenewed, interface) > 0;
    if (renewed || !is_wanted(interface)) LeaveOn(group, interface, result, kNotJoined);
  }
  std::erase_if(joins, [&](const auto& join) { return !is_wanted(join.first); });
  for (const InterfaceIndex interface : order) {
    auto& result = joins.try_emplace(interface, kNotJoined).first->second;
    if (result == 0) continue;
    result = TryJoin(group, interface);
    if (result == ENOBUFS && MakeRoom(group, joins, order, interface)) {
      result = TryJoin(group, interface);
    }
  }
  if (joins.empty() || !std::ranges::all_of(joins, IsJoined)) mIncomplete = true;
}

// The socket is a member already when the interface went and came back unseen, and the system kept
// the old membership, which hears nothing.
int GroupLinks::TryJoin(Ipv4Address group, InterfaceIndex interface) {
  if (mSockets.Join(mSocket, group, interface)) return 0;
  if (errno != EADDRINUSE) return errno;
  mSockets.Leave(mSocket, group, interface);
  return mSockets.Join(mSocket, group, interface) || errno == EADDRINUSE ? 0 : errno;
}

// Gives up the membership on the least useful interface behind `wanted`.
bool GroupLinks::MakeRoom(Ipv4Address group, JoinResults& joins,
                          const std::vector<InterfaceIndex>& order, InterfaceIndex wanted) {
  for (auto last = order.rbegin(); last != order.rend() && *last != wanted; ++last) {
    const auto found = joins.find(*last);
    if (found == joins.end() || found->second != 0) continue;
    LeaveOn(group, *last, found->second, ENOBUFS);
    return true;
  }
  return false;
}

void GroupLinks::LeaveOn(Ipv4Address group, InterfaceIndex interface, int& result, int error) {
  // The system keeps a membership of an interface that is gone until the socket leaves.
  if (result == 0) mSockets.Leave(mSocket, group, interface);
  result = error;
}

void GroupLinks::Note(const Source& source) {
  mLastHeard = source;
  if (!IsOwnAddress(mAll, source.first)) mQuiet[source.second] = 0;
}

void GroupLinks::CountQuiet() {
  mLastHeard = {};
  for (const auto& interface : mAll) {
    if (++mQuiet[interface.index] < kQuietCounts) continue;
    mQuiet[interface.index] = 0;
    mRenewed.push_back(interface.index);
  }
  std::erase_if(mQuiet, [this](const auto& quiet) { return !FindInterface(mAll, quiet.first); });
  if (!mRenewed.empty()) Rejoin();
}

bool GroupLinks::PrepareSend() {
  mChosen = ChooseToSend();
  if (mChosen == 0) {
    errno = mSendBy.empty() ? ENETUNREACH : ENODEV;
    return false;
  }
  if (mChosen == mSet) return true;
  // The system itself finds no source address on the loopback interface.
  const auto* const chosen = FindInterface(mAll, mChosen);
  const bool names_source = chosen != nullptr && chosen->loopback && !chosen->addresses.empty();
  const Ipv4Address source = names_source ? chosen->addresses.front() : 0;
  if (!mSockets.SetMulticastInterface(mSocket, mChosen, source)) return false;
  mSet = mChosen;
  return true;
}

bool GroupLinks::LacksNetwork() const {
  const auto* const chosen = FindInterface(mAll, mChosen);
  return chosen == nullptr || chosen->loopback;
}

InterfaceIndex GroupLinks::ChooseToSend() const {
  if (!mSendBy.empty()) {
    const auto named = std::ranges::find(mAll, mSendBy, &NetworkInterface::name);
    return named == mAll.end() ? 0 : named->index;
  }
  const auto* const current = FindInterface(mAll, mChosen);
  if (current != nullptr && WhyUnfit(*current) == Unfit::No) return mChosen;
  return InterfaceToSend(mAll, mLinks.DefaultRoutes());
}

std::map<InterfaceIndex, int> GroupLinks::Joins(Ipv4Address group) const {
  const auto found = mGroups.find(group);
  return found == mGroups.end() ? JoinResults{} : found->second;
}

}  // namespace quorvel
