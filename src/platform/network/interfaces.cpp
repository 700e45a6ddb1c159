#include "platform/network/interfaces.h"

#include <algorithm>
#include <iterator>

namespace quorvel {

namespace {

// 10.0.0.0/8, 172.16.0.0/12, 192.168.0.0/16, and 169.254.0.0/16 of networks without a server.
bool IsPrivate(Ipv4Address address) {
  return address >> 24 == 10 || address >> 20 == 0xAC1 || address >> 16 == 0xC0A8 ||
         address >> 16 == 0xA9FE;
}

bool IsFit(const NetworkInterface& interface) { return WhyUnfit(interface) == Unfit::No; }

int Rank(const NetworkInterface& interface) {
  const bool is_private = std::ranges::any_of(interface.addresses, IsPrivate);
  return (interface.running ? 0 : 2) + (is_private ? 0 : 1);
}

bool HasNewAddress(const NetworkInterface& before, const NetworkInterface& after) {
  return std::ranges::any_of(after.addresses, [&before](Ipv4Address address) {
    return std::ranges::count(before.addresses, address) == 0;
  });
}

}  // namespace

Unfit WhyUnfit(const NetworkInterface& interface) {
  if (interface.loopback) return Unfit::Loopback;
  if (!interface.up) return Unfit::SwitchedOff;
  if (!interface.multicast) return Unfit::NoMulticast;
  return interface.addresses.empty() ? Unfit::NoAddress : Unfit::No;
}

std::vector<InterfaceIndex> InterfacesToJoin(const Interfaces& all) {
  std::vector<const NetworkInterface*> fit;
  std::vector<InterfaceIndex> loopback;
  for (const auto& interface : all) {
    if (IsFit(interface)) fit.push_back(&interface);
    if (interface.loopback && interface.up) loopback.push_back(interface.index);
  }
  std::ranges::stable_sort(fit, {}, [](const auto* interface) { return Rank(*interface); });
  std::vector<InterfaceIndex> indices;
  std::ranges::transform(fit, std::back_inserter(indices), &NetworkInterface::index);
  return indices.empty() ? loopback : indices;
}

InterfaceIndex InterfaceToSend(const Interfaces& all,
                               const std::vector<InterfaceIndex>& default_routes) {
  for (const InterfaceIndex index : default_routes) {
    const auto* const interface = FindInterface(all, index);
    if (interface != nullptr && IsFit(*interface) && !interface->point_to_point) {
      return index;
    }
  }
  const auto to_join = InterfacesToJoin(all);
  return to_join.empty() ? 0 : to_join.front();
}

const NetworkInterface* FindInterface(const Interfaces& all, InterfaceIndex index) {
  const auto found = std::ranges::find(all, index, &NetworkInterface::index);
  return found == all.end() ? nullptr : &*found;
}

bool IsOwnAddress(const Interfaces& all, Ipv4Address address) {
  return std::ranges::any_of(all, [address](const NetworkInterface& interface) {
    return std::ranges::count(interface.addresses, address) > 0;
  });
}

LinkChanges CompareLooks(const Interfaces& before, const Interfaces& after,
                         const LinkNotices& notices) {
  LinkChanges changes;
  for (const auto& old : before) {
    const auto* const now = FindInterface(after, old.index);
    const bool made_anew = std::ranges::count(notices.renewed, old.index) > 0;
    const bool flapped = now != nullptr && now->link_changes != old.link_changes;
    const bool gone =
        now == nullptr || (IsFit(old) && !IsFit(*now)) || (old.running && !now->running);
    if (gone || made_anew || flapped) changes.lost.push_back(old.index);
    if (now == nullptr) continue;
    const bool back = now->running && (flapped || !old.running);
    if (made_anew || back || !notices.complete || HasNewAddress(old, *now)) {
      changes.renewed.push_back(old.index);
    }
  }
  return changes;
}

}  // namespace quorvel
