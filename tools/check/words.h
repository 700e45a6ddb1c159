#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/check/facts.h"

/// Words for single facts, as all forms of the report use the words.
namespace quorvel::check {

/// The system's words for an `errno`.
[[nodiscard]] std::string Reason(int error);
/// Whether the group is joined on the interface.
[[nodiscard]] bool IsJoined(const InterfaceFacts& interface);
/// The reason why the group is not joined on the interface; empty when the group is joined.
[[nodiscard]] std::string WhyNotJoined(const InterfaceFacts& interface);
/// Whether a probe was sent and came back, or why not; empty where no probe was to be sent.
[[nodiscard]] std::string ProbeWords(const InterfaceFacts& interface);
/// The name of a program that has the port open.
[[nodiscard]] std::string NameOf(const PortUser& user);
/// The name of a setting of the reverse-path filter.
[[nodiscard]] std::string FilterWords(int setting);
[[nodiscard]] std::vector<std::string> AddressesOf(const NetworkInterface& interface);

/// The texts with a separator in between.
[[nodiscard]] std::string Joined(const std::vector<std::string>& texts, const char* separator);
/// A number and a noun, in the plural for any number but 1.
[[nodiscard]] std::string Count(uint64_t number, const std::string& noun);

}  // namespace quorvel::check
