#include "tools/check/findings.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

#include "platform/network/ip_address.h"
#include "tools/check/words.h"

namespace quorvel::check {

namespace {

constexpr int kStrict = 1;

using Findings = std::vector<Finding>;

std::string Port(const Facts& facts) { return "UDP port " + std::to_string(facts.port); }

/// Whether the interface leads to other computers and has an address.
bool IsFit(const InterfaceFacts& interface) { return interface.unfit == Unfit::No; }

bool HasLink(const InterfaceFacts& interface) {
  return IsFit(interface) && interface.interface.running;
}

bool HeardOthers(const Facts& facts) {
  return std::ranges::any_of(facts.senders, [](const auto& sender) { return !sender.own; });
}

/// The words of `describe` for each interface that `is_meant`.
template <class IsMeant, class Describe>
std::vector<std::string> Collect(const Facts& facts, IsMeant is_meant, Describe describe) {
  std::vector<std::string> texts;
  for (const auto& each : facts.interfaces) {
    if (is_meant(each)) texts.push_back(describe(each));
  }
  return texts;
}

std::string Name(const InterfaceFacts& interface) { return interface.interface.name; }

std::string NameOfAll(const std::vector<PortUser>& users) {
  std::vector<std::string> names;
  std::ranges::transform(users, std::back_inserter(names), NameOf);
  return names.empty() ? "another program" : Joined(names, ", ");
}

void JudgePort(const Facts& facts, Findings& findings) {
  if (facts.open_error == 0) return;
  if (facts.open_error != EADDRINUSE) {
    findings.push_back({"port cannot be opened", true,
                        Port(facts) + " cannot be opened: " + Reason(facts.open_error) + ".",
                        "See that this system lets programs open UDP sockets."});
    return;
  }
  const std::string holder = NameOfAll(facts.port_users);
  const bool nameless = std::ranges::count(facts.port_users, "", &PortUser::name) > 0;
  findings.push_back(
      {"port held", true, Port(facts) + " is held by " + holder + ", and is not shared.",
       nameless || facts.port_users.empty()
           ? "Run quorvel-check as the administrator, to see the name of the program that holds "
             "the port. Close that program."
           : "Close " + holder + ". Then run quorvel-check again."});
}

std::string AdviceWithoutCard(const Facts& facts) {
  const auto names = [&facts](Unfit reason) {
    const auto is_meant = [reason](const auto& each) { return each.unfit == reason; };
    return Joined(Collect(facts, is_meant, Name), " or ");
  };
  if (const auto cards = names(Unfit::NoAddress); !cards.empty()) {
    return "Give " + cards + " an address: in the network settings, or by a DHCP server.";
  }
  if (const auto cards = names(Unfit::SwitchedOff); !cards.empty()) {
    return "Switch " + cards + " on: in the network settings, or with: ip link set NAME up";
  }
  return "Connect this computer to the network, by a cable or by Wi-Fi.";
}

void JudgeCards(const Facts& facts, Findings& findings) {
  const auto is_lame = [](const auto& each) { return !IsFit(each) && !each.interface.loopback; };
  const auto lame = Collect(
      facts, is_lame, [](const auto& each) { return Name(each) + ": " + WhyNotJoined(each); });
  const auto fit = Collect(facts, IsFit, Name);
  if (fit.empty()) {
    findings.push_back(
        {"no network card", true,
         "No network card is ready" + (lame.empty() ? "." : " (" + Joined(lame, "; ") + ")."),
         AdviceWithoutCard(facts)});
  } else if (std::ranges::none_of(facts.interfaces, HasLink)) {
    findings.push_back({"no link", true, "No network card has a link: " + Joined(fit, ", ") + ".",
                        "Plug in the cable, switch on the switch, or connect to the Wi-Fi."});
  }
}

void JudgeJoins(const Facts& facts, Findings& findings) {
  if (facts.open_error != 0) return;
  const auto failed = Collect(
      facts, [](const auto& each) { return each.join.value_or(0) != 0; },
      [](const auto& each) { return Name(each) + ": " + Reason(*each.join); });
  if (!failed.empty()) {
    findings.push_back({"not joined", true, "The group cannot be joined on " + Joined(failed, "; "),
                        "Close programs that join many groups, or raise the limit with: sysctl "
                        "net.ipv4.igmp_max_memberships=100"});
  } else if (std::ranges::none_of(facts.interfaces, IsJoined)) {
    findings.push_back({"not joined", true,
                        "The group is joined on no interface: " + Reason(facts.join_error) + ".",
                        "Connect this computer to the network, by a cable or by Wi-Fi."});
  }
}

std::string FirewallAdvice(const Facts& facts) {
  return "Open " + Port(facts) + " for incoming datagrams in the firewall of this computer.";
}

bool MayBlock(const Facts& facts) { return facts.firewall && !facts.firewall->rule.empty(); }

void JudgeProbes(const Facts& facts, Findings& findings) {
  const auto lost = Collect(
      facts, [](const auto& each) { return each.probe == Probe::Lost; }, Name);
  const auto unsent = Collect(
      facts, [](const auto& each) { return each.probe_error != 0; },
      [](const auto& each) { return Name(each) + ": " + Reason(each.probe_error); });
  if (!lost.empty()) {
    findings.push_back({"probe lost", true,
                        "A probe to the own group did not come back on " + Joined(lost, ", ") + ".",
                        MayBlock(facts) ? FirewallAdvice(facts)
                                        : "Look for a firewall or security software on this "
                                          "computer, and open " +
                                              Port(facts) + " in the firewall."});
  }
  if (!unsent.empty()) {
    findings.push_back({"probe not sent", false,
                        "No probe could be sent to the group by " + Joined(unsent, "; ") + ".",
                        "Look for a firewall that holds outgoing datagrams back."});
  }
}

void JudgeFirewall(const Facts& facts, Findings& findings) {
  if (!MayBlock(facts)) return;
  const bool lost = std::ranges::any_of(facts.interfaces,
                                        [](const auto& each) { return each.probe == Probe::Lost; });
  findings.push_back({"firewall", lost,
                      "A firewall may be in the way: '" + facts.firewall->shown_by + "' shows '" +
                          facts.firewall->rule + "', and no rule that accepts " + Port(facts) + ".",
                      FirewallAdvice(facts)});
}

std::string StuckText(const SenderFacts& sender, const std::string& address) {
  const std::string held = Count(static_cast<uint64_t>(sender.held), "byte");
  return "The messages of " + address + " are stuck: " +
         (sender.announced == 0
              ? held + " cannot be passed, for they begin with a packet of the length 0."
              : held + " wait for the rest of a packet of the length " +
                    std::to_string(sender.announced) + ".");
}

void JudgeSenders(const Facts& facts, Findings& findings) {
  for (const auto& sender : facts.senders) {
    if (sender.held == 0) continue;
    const std::string address(FormatIpv4(sender.address).Bytes());
    findings.push_back(
        {"sender stuck", true, StuckText(sender, address),
         "Correct the length field of the packets that " + address +
             " sends. Start Quorvel again: a listener that has heard the bad packet stays stuck."});
  }
}

std::string BufferAdvice(const Facts& facts) {
  return "Raise the limit of receive buffers with: sysctl net.core.rmem_max=" +
         std::to_string(facts.buffer_asked);
}

void JudgeLosses(const Facts& facts, Findings& findings) {
  const uint64_t lost = facts.drops.by_system + facts.drops.waiting;
  if (lost == 0) return;
  findings.push_back({"datagrams dropped", true,
                      "The system dropped " + Count(lost, "datagram") +
                          ", most likely for want of room in the receive buffer.",
                      BufferAdvice(facts)});
}

void JudgeBuffer(const Facts& facts, Findings& findings) {
  if (facts.buffer_granted == 0 || facts.buffer_granted >= facts.buffer_asked) return;
  findings.push_back({"small buffer", false,
                      "The receive buffer is small: a burst of messages can be lost.",
                      BufferAdvice(facts)});
}

void JudgeFilter(const Facts& facts, Findings& findings) {
  const auto strict = Collect(
      facts, [](const auto& each) { return IsFit(each) && each.reverse_path_filter == kStrict; },
      Name);
  const auto joined = Collect(
      facts, [](const auto& each) { return IsFit(each) && IsJoined(each); }, Name);
  if (strict.empty() || joined.size() < 2) return;
  findings.push_back({"strict path filter", false,
                      "Reverse-path filtering is strict on " + Joined(strict, ", ") +
                          ": with several network cards, the system may drop datagrams of senders "
                          "that it would answer by another card.",
                      "Make the filter loose with: sysctl net.ipv4.conf.all.rp_filter=2"});
}

std::string SilenceAdvice(const Facts& facts) {
  const auto tunnels = Collect(
      facts, [](const auto& e) { return e.interface.point_to_point && e.interface.up; }, Name);
  std::vector<std::string> steps = {
      "Compare the keys: the senders' key, and Quorvel's key under Help, Key Information.",
      "See that the senders are in the same network (VLAN) as this computer, and that a Wi-Fi does "
      "not keep its clients apart.",
      "Try another port of the switch, or another switch: some hold multicast back."};
  if (!tunnels.empty()) {
    steps.insert(steps.begin() + 1, "Disconnect the VPN: " + Joined(tunnels, ", ") + ".");
  }
  for (size_t i = 0; i < steps.size(); ++i) steps[i] = std::to_string(i + 1) + ". " + steps[i];
  return Joined(steps, "\n");
}

void JudgeHeard(const Facts& facts, Findings& findings) {
  if (!HeardOthers(facts)) return;
  findings.push_back({"heard", false, "Other computers were heard.",
                      "If Quorvel's log shows nothing, compare the key under Help, Key Information "
                      "with the key of this check."});
}

void JudgeSilence(const Facts& facts, Findings& findings) {
  if (HeardOthers(facts) || facts.open_error != 0) return;
  findings.push_back({"silence", false, "No other computer was heard.", SilenceAdvice(facts)});
}

}  // namespace

Findings Judge(const Facts& facts) {
  Findings findings;
  for (const auto judge :
       {JudgePort, JudgeCards, JudgeJoins, JudgeProbes, JudgeSenders, JudgeLosses, JudgeHeard,
        JudgeFirewall, JudgeFilter, JudgeSilence, JudgeBuffer}) {
    judge(facts, findings);
  }
  std::stable_partition(findings.begin(), findings.end(),
                        [](const Finding& finding) { return finding.keeps_from_hearing; });
  return findings;
}

bool KeepFromHearing(const Findings& findings) {
  return std::ranges::any_of(findings, &Finding::keeps_from_hearing);
}

}  // namespace quorvel::check
