// A simple reading of firewall rules: a chain for incoming datagrams that drops what no rule
// accepts, or a rule that drops more than another protocol, may drop Quorvel's datagrams, unless a
// rule accepts the UDP port.

#include "tools/check/firewall.h"

#include <algorithm>
#include <set>

#include "tools/check/firewall_rules.h"
#include "tools/check/program_output.h"

namespace quorvel::check {

namespace {

bool Has(const Rule& rule, std::initializer_list<const char*> words) {
  return std::ranges::any_of(
      words, [&rule](const char* word) { return std::ranges::count(rule.words, word) > 0; });
}

/// Whether a word of the rule is the port, or a range with the port.
bool NamesPort(const Rule& rule, int port) {
  return std::ranges::any_of(rule.words, [port](const std::string& word) {
    const auto range = ReadPorts(word);
    return range && range->first <= port && port <= range->last;
  });
}

bool Accepts(const Rule& rule, int port) {
  return Has(rule, {"accept", "ACCEPT"}) && Has(rule, {"udp"}) && NamesPort(rule, port);
}

bool MayDrop(const Rule& rule, int port) {
  if (!Has(rule, {"drop", "reject", "DROP", "REJECT"})) return false;
  if (Has(rule, {"tcp", "icmp", "icmpv6", "igmp", "ip6", "invalid", "INVALID"})) return false;
  return !Has(rule, {"dport", "--dport", "--dports"}) || NamesPort(rule, port);
}

/// Adds to `reached` the chain and all chains to which its rules lead.
void Follow(const Chains& chains, const std::string& name, std::set<std::string>& reached) {
  const auto chain = chains.find(name);
  if (chain == chains.end() || !reached.insert(name).second) return;
  for (const Rule& rule : chain->second.rules) {
    for (const std::string& word : rule.words) Follow(chains, ChainKey(name, word), reached);
  }
}

std::string FindDroppingRule(const Chains& chains, int port) {
  std::set<std::string> reached;
  for (const auto& [name, chain] : chains) {
    if (chain.is_input) Follow(chains, name, reached);
  }
  std::string dropping;
  for (const std::string& name : reached) {
    const Chain& chain = chains.at(name);
    if (std::ranges::any_of(chain.rules, [&](const Rule& rule) { return Accepts(rule, port); })) {
      return {};
    }
    const auto rule =
        std::ranges::find_if(chain.rules, [&](const Rule& each) { return MayDrop(each, port); });
    if (rule != chain.rules.end() && dropping.empty()) dropping = rule->text;
    if (!chain.dropping_policy.empty()) dropping = chain.dropping_policy;
  }
  return dropping;
}

bool HasInput(const Chains& chains) {
  return std::ranges::any_of(chains, [](const auto& chain) { return chain.second.is_input; });
}

}  // namespace

std::optional<Firewall> LookAtFirewall(uint16_t port, SteadyTime deadline) {
  const auto nft = OutputOf({"nft", "list", "ruleset"}, deadline);
  const Chains nft_chains = nft ? ReadNft(*nft) : Chains{};
  if (!HasInput(nft_chains)) {
    if (const auto iptables = OutputOf({"iptables", "-S"}, deadline)) {
      return Firewall{"iptables -S", FindDroppingRule(ReadIptables(*iptables), port)};
    }
  }
  if (!nft) return std::nullopt;
  return Firewall{"nft list ruleset", FindDroppingRule(nft_chains, port)};
}

}  // namespace quorvel::check
