#include "platform/network/ip_address.h"

#include <string>

namespace quorvel {

namespace {

constexpr uint32_t kMostOctet = 255;
constexpr int kOctets = 4;

// Takes a number of 0 to 255 off the front of `rest`; nothing when `rest` begins otherwise.
std::optional<uint32_t> TakeOctet(std::string_view& rest) {
  uint32_t octet = 0;
  size_t digits = 0;
  for (; digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9'; ++digits) {
    octet = octet * 10 + static_cast<uint32_t>(rest[digits] - '0');
    if (octet > kMostOctet) return std::nullopt;
  }
  rest.remove_prefix(digits);
  return digits > 0 ? std::optional(octet) : std::nullopt;
}

}  // namespace

std::optional<Ipv4Address> ParseIpv4(const Text& dotted) {
  std::string_view rest = dotted.Bytes();
  Ipv4Address address = 0;
  for (int i = 0; i < kOctets; ++i) {
    if (i > 0) {
      if (!rest.starts_with('.')) return std::nullopt;
      rest.remove_prefix(1);
    }
    const auto octet = TakeOctet(rest);
    if (!octet) return std::nullopt;
    address = address << 8 | *octet;
  }
  return rest.empty() ? std::optional(address) : std::nullopt;
}

Text FormatIpv4(Ipv4Address address) {
  std::string dotted;
  for (int shift = 24; shift >= 0; shift -= 8) {
    dotted += std::to_string((address >> shift) & kMostOctet);
    if (shift > 0) dotted += '.';
  }
  return Text::FromBytes(dotted);
}

}  // namespace quorvel
