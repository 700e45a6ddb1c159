#include <sstream>

#include "platform/network/ip_address.h"
#include "tools/check/findings.h"
#include "tools/check/report.h"
#include "tools/check/words.h"

namespace quorvel::check {

namespace {

/// The most senders that are written one by one.
constexpr size_t kMostSenders = 100;

void WriteInterface(std::ostream& out, const InterfaceFacts& facts) {
  const auto addresses = AddressesOf(facts.interface);
  out << facts.interface.name;
  if (!addresses.empty()) out << " (" << Joined(addresses, ", ") << ")";
  out << (IsJoined(facts) ? " listens to the group" : " does not listen: " + WhyNotJoined(facts));
  if (facts.interface.up && !facts.interface.running) out << "; no link";
  if (const auto probe = ProbeWords(facts); !probe.empty()) out << "; probe " << probe;
  if (facts.reverse_path_filter) {
    out << "; reverse-path filter " << FilterWords(*facts.reverse_path_filter);
  }
  out << ".\n";
}

void WritePort(std::ostream& out, const Facts& facts) {
  std::vector<std::string> names;
  for (const PortUser& user : facts.port_users) names.push_back(NameOf(user));
  if (facts.open_error == 0) {
    out << "The port is open to this check; ";
    out << (names.empty() ? "no other program is seen to have the port open.\n"
                          : "the port is shared with " + Joined(names, ", ") + ".\n");
  }
  if (facts.buffer_granted != 0) {
    out << "The receive buffer has " << facts.buffer_granted << " of " << facts.buffer_asked
        << " bytes asked for.\n";
  }
}

void WriteFirewall(std::ostream& out, const Facts& facts) {
  if (!facts.firewall || !facts.firewall->rule.empty()) return;
  out << "No firewall rule against the port: '" << facts.firewall->shown_by << "'.\n";
}

void WriteSender(std::ostream& out, const SenderFacts& sender) {
  out << "  " << FormatIpv4(sender.address).Bytes() << (sender.own ? " (this computer)" : "")
      << ": " << Count(sender.datagrams, "datagram") << ", " << Count(sender.messages, "message")
      << ", by " << Joined({sender.interfaces.begin(), sender.interfaces.end()}, ", ") << ".\n";
}

void WriteSenders(std::ostream& out, const Facts& facts) {
  if (facts.open_error != 0) return;
  uint64_t messages = 0;
  for (const SenderFacts& sender : facts.senders) messages += sender.messages;
  out << "Heard in " << Count(static_cast<uint64_t>(facts.seconds), "second") << ": "
      << Count(messages, "message") << " of " << Count(facts.senders.size(), "sender") << ".\n";
  size_t written = 0;
  for (const SenderFacts& sender : facts.senders) {
    if (written++ < kMostSenders) WriteSender(out, sender);
  }
  if (written > kMostSenders) out << "  and " << written - kMostSenders << " more.\n";
  out << "Dropped: " << Count(facts.drops.doubles, "datagram") << " that came by two interfaces, "
      << facts.drops.foreign << " to other groups, " << facts.drops.by_system + facts.drops.waiting
      << " by the system.\n";
}

}  // namespace

std::string InSentences(const Facts& facts) {
  const auto findings = Judge(facts);
  std::ostringstream out;
  out << "The key " << facts.key_from << " stands for the group " << facts.group << " and UDP port "
      << facts.port << ".\n\n";
  for (const InterfaceFacts& interface : facts.interfaces) WriteInterface(out, interface);
  WritePort(out, facts);
  WriteFirewall(out, facts);
  WriteSenders(out, facts);
  out << "\n";
  for (const Finding& finding : findings) out << finding.text << "\n";
  if (!KeepFromHearing(findings)) {
    out << "Nothing was found that keeps this computer from hearing. A probe to oneself tests no "
           "cable and no switch.\n";
  }
  out << "\nNext:\n" << findings.front().advice << "\n";
  return out.str();
}

}  // namespace quorvel::check
