#include "tools/check/words.h"

#include <algorithm>
#include <iterator>
#include <system_error>

#include "platform/network/ip_address.h"

namespace quorvel::check {

namespace {

std::string UnfitWords(Unfit unfit) {
  switch (unfit) {
    case Unfit::Loopback:
      return "reaches this computer alone";
    case Unfit::SwitchedOff:
      return "switched off";
    case Unfit::NoMulticast:
      return "carries no multicast";
    case Unfit::NoAddress:
      return "no IPv4 address";
    case Unfit::No:
      break;
  }
  return "not tried";
}

}  // namespace

std::string Reason(int error) { return std::generic_category().message(error); }

bool IsJoined(const InterfaceFacts& interface) { return interface.join == 0; }

std::string WhyNotJoined(const InterfaceFacts& interface) {
  if (IsJoined(interface)) return {};
  return interface.join ? Reason(*interface.join) : UnfitWords(interface.unfit);
}

std::string ProbeWords(const InterfaceFacts& interface) {
  if (interface.probe_error != 0) return "not sent: " + Reason(interface.probe_error);
  if (interface.probe == Probe::NotSent) return {};
  return interface.probe == Probe::CameBack ? "came back" : "lost";
}

std::string NameOf(const PortUser& user) {
  if (user.name.empty()) return "a program of the user number " + std::to_string(user.user);
  return user.name + " (PID " + std::to_string(user.pid) + ")";
}

std::string FilterWords(int setting) {
  if (setting == 0) return "off";
  return setting == 1 ? "strict" : "loose";
}

std::vector<std::string> AddressesOf(const NetworkInterface& interface) {
  std::vector<std::string> dotted;
  for (const Ipv4Address address : interface.addresses) {
    dotted.emplace_back(FormatIpv4(address).Bytes());
  }
  return dotted;
}

std::string Joined(const std::vector<std::string>& texts, const char* separator) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : separator) + text;
  return all;
}

std::string Count(uint64_t number, const std::string& noun) {
  return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

}  // namespace quorvel::check
