#include <algorithm>
#include <nlohmann/json.hpp>

#include "platform/network/ip_address.h"
#include "tools/check/findings.h"
#include "tools/check/report.h"
#include "tools/check/words.h"

namespace quorvel::check {

namespace {

using Json = nlohmann::ordered_json;

/// The words, or null for empty words.
Json OrNull(const std::string& words) { return words.empty() ? Json() : Json(words); }

template <class Each, class Describe>
Json List(const std::vector<Each>& all, Describe describe) {
  Json list = Json::array();
  std::ranges::transform(all, std::back_inserter(list), describe);
  return list;
}

Json DescribeInterface(const InterfaceFacts& facts) {
  const auto& filter = facts.reverse_path_filter;
  return {{"name", facts.interface.name},
          {"addresses", AddressesOf(facts.interface)},
          {"up", facts.interface.up},
          {"link", facts.interface.running},
          {"joined", IsJoined(facts)},
          {"why_not_joined", OrNull(WhyNotJoined(facts))},
          {"probe", OrNull(ProbeWords(facts))},
          {"reverse_path_filter", filter ? Json(FilterWords(*filter)) : Json()}};
}

Json DescribeUser(const PortUser& user) {
  return {{"pid", user.pid == 0 ? Json() : Json(user.pid)},
          {"name", OrNull(user.name)},
          {"user", user.user}};
}

Json DescribeSender(const SenderFacts& sender) {
  const bool stuck = sender.held != 0;
  return {{"address", FormatIpv4(sender.address).Bytes()},
          {"own", sender.own},
          {"datagrams", sender.datagrams},
          {"messages", sender.messages},
          {"interfaces", sender.interfaces},
          {"stuck", stuck ? Json{{"held", sender.held}, {"announced", sender.announced}} : Json()}};
}

Json DescribeFinding(const Finding& finding) {
  return {{"code", finding.code},
          {"keeps_from_hearing", finding.keeps_from_hearing},
          {"text", finding.text}};
}

Json DescribeFirewall(const Firewall& firewall) {
  return {{"shown_by", firewall.shown_by}, {"rule", OrNull(firewall.rule)}};
}

}  // namespace

std::string InJson(const Facts& facts) {
  const auto findings = Judge(facts);
  const auto& drops = facts.drops;
  const Json report = {
      {"key_from", facts.key_from},
      {"group", facts.group},
      {"port", facts.port},
      {"open_error", OrNull(facts.open_error == 0 ? "" : Reason(facts.open_error))},
      {"interfaces", List(facts.interfaces, DescribeInterface)},
      {"port_users", List(facts.port_users, DescribeUser)},
      {"receive_buffer", {{"asked", facts.buffer_asked}, {"granted", facts.buffer_granted}}},
      {"firewall", facts.firewall ? DescribeFirewall(*facts.firewall) : Json()},
      {"seconds", facts.seconds},
      {"senders", List(facts.senders, DescribeSender)},
      {"dropped",
       {{"doubles", drops.doubles},
        {"foreign", drops.foreign},
        {"waiting", drops.waiting},
        {"by_system", drops.by_system}}},
      {"findings", List(findings, DescribeFinding)},
      {"hears", !KeepFromHearing(findings)},
      {"next", findings.front().advice}};
  // The name of a program can hold any bytes.
  return report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quorvel::check
