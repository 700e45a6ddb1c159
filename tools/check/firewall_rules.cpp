#include "tools/check/firewall_rules.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace quorvel::check {

namespace {

std::vector<std::string> WordsOf(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return std::string_view(",{};\"").find(c) != std::string_view::npos; },
      ' ');
  std::istringstream stream(text);
  std::vector<std::string> words;
  for (std::string word; stream >> word && word != "with";) words.push_back(word);
  return words;
}

Rule ReadRule(std::string text) {
  text.erase(0, text.find_first_not_of(" \t"));
  auto words = WordsOf(text);
  return {std::move(text), std::move(words)};
}

bool Contains(const Rule& rule, const char* part) {
  return rule.text.find(part) != std::string::npos;
}

void AddNftRule(Chain& chain, const Rule& rule) {
  if (rule.words.empty()) return;
  if (rule.words.front() != "type") {
    chain.rules.push_back(rule);
    return;
  }
  chain.is_input = Contains(rule, " hook input ");
  if (chain.is_input && Contains(rule, "policy drop")) chain.dropping_policy = rule.text;
}

}  // namespace

std::string ChainKey(std::string_view neighbour, std::string_view name) {
  return std::string(neighbour.substr(0, neighbour.rfind(' ') + 1)) + std::string(name);
}

Chains ReadNft(const std::string& ruleset) {
  Chains chains;
  Chain other;
  Chain* current = &other;
  std::string table;
  std::istringstream lines(ruleset);
  for (std::string line; std::getline(lines, line);) {
    const Rule rule = ReadRule(line);
    const auto& words = rule.words;
    const bool opens = line.ends_with('{');
    if (opens && words.size() == 3 && words[0] == "table") {
      table = words[1] + " " + words[2] + " ";
    } else if (opens) {
      const bool is_ipv4 = table.starts_with("ip ") || table.starts_with("inet ");
      const bool is_chain = is_ipv4 && words.size() == 2 && words[0] == "chain";
      current = is_chain ? &chains[table + words[1]] : &other;
    } else {
      AddNftRule(*current, rule);
    }
  }
  return chains;
}

Chains ReadIptables(const std::string& rules) {
  Chains chains;
  chains["INPUT"].is_input = true;
  std::istringstream lines(rules);
  for (std::string line; std::getline(lines, line);) {
    const Rule rule = ReadRule(line);
    if (rule.words.size() < 3) continue;
    Chain& chain = chains[rule.words[1]];
    if (rule.words[0] == "-A") chain.rules.push_back(rule);
    if (rule.words[0] == "-P" && rule.words[2] == "DROP") chain.dropping_policy = rule.text;
  }
  return chains;
}

std::optional<Ports> ReadPorts(std::string_view word) {
  Ports ports{};
  const char* const end = word.data() + word.size();
  const auto first = std::from_chars(word.data(), end, ports.first);
  if (first.ec != std::errc()) return std::nullopt;
  ports.last = ports.first;
  if (first.ptr == end) return ports;
  if (*first.ptr != '-' && *first.ptr != ':') return std::nullopt;
  const auto last = std::from_chars(first.ptr + 1, end, ports.last);
  return last.ec == std::errc() && last.ptr == end ? std::optional(ports) : std::nullopt;
}

}  // namespace quorvel::check
