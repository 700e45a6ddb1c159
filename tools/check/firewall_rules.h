#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Chains of firewall rules, as the programs `nft` and `iptables` write the rules.
namespace quorvel::check {

struct Rule {
  std::string text;
  /// The text without commas, braces and quotes, cut at blanks; an address of a reject is left out.
  std::vector<std::string> words;
};

struct Chain {
  /// Whether datagrams to this computer enter the chain.
  bool is_input = false;
  /// The line that drops what no rule accepts; empty without such a line.
  std::string dropping_policy;
  std::vector<Rule> rules;
};

/// By table and name: names of `nft` are unique in a table alone.
using Chains = std::map<std::string, Chain>;
/// The key of the chain `name` in the table of the chain with the key `neighbour`.
[[nodiscard]] std::string ChainKey(std::string_view neighbour, std::string_view name);

/// The chains for IPv4 in the output of `nft list ruleset`, and of `iptables -S`.
[[nodiscard]] Chains ReadNft(const std::string& ruleset);
[[nodiscard]] Chains ReadIptables(const std::string& rules);

struct Ports {
  int first;
  int last;
};
/// The ports in a word: a number, or two numbers with a dash or a colon in between.
[[nodiscard]] std::optional<Ports> ReadPorts(std::string_view word);

}  // namespace quorvel::check
