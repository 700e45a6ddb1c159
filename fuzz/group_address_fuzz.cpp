// Any key leads to the group that docs/group-address.md promises, in joining, sending and leaving.

#include <algorithm>
#include <cerrno>
#include <optional>

#include "plain.h"
#include "platform/runtime/runtime.h"
#include "support/side.h"
#include "support/station.h"

namespace {

using namespace quorvel;

/// The number of the digits, 999 for a larger number; nothing for other characters.
std::optional<uint32_t> Number(const std::string& digits) {
  uint32_t number = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') return std::nullopt;
    number = std::min(number * 10 + static_cast<uint32_t>(c - '0'), 999U);
  }
  return number;
}

Ipv4Address Hashed(std::string_view key) {
  uint32_t hash = 0;
  for (const uint32_t code : plain::Codes(key)) {
    hash = hash * 31 + (code >= 'A' && code <= 'Z' ? code + 32 : code);
  }
  const uint32_t high = hash >> 16 & 255, middle = hash >> 8 & 255, low = hash & 255;
  const uint32_t turn = hash >> 31 != 0 && (hash & 0xFFFFFF) != 0 ? 15 : 0;
  return (224 + (middle + turn) % 16) << 24 | (middle + high) % 256 << 16 |
         (low + middle) % 256 << 8 | 2 * low % 256;
}

/// The group; nothing for an address that cannot be joined.
std::vector<Ipv4Address> GroupOf(std::string_view key) {
  std::vector<std::string> parts(1);
  for (const char c : key) {
    if (c == '.') parts.emplace_back();
    if (c != '.') parts.back() += c;
  }
  if (parts.size() != 4) return {Hashed(key)};
  Ipv4Address group = 0;
  for (const auto& part : parts) {
    const auto number = Number(part);
    if (!number || *number > 255) return {Hashed(key)};
    group = group << 8 | *number;
  }
  if (group >> 28 != 14) return {Hashed(key)};
  if (std::ranges::count(parts, "") > 0) return {};
  return {group};
}

test::Side& Side() {
  static auto* const side = new test::Side;
  return *side;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  RuntimeInit(Side());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const auto socket = [] {
    auto station = New<Station>();
    station->Bind(5563);
    return station;
  }();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const Text key = Text::FromBytes(bytes);
  auto& net = Side().sockets;
  net.joined.clear();
  net.left.clear();
  net.sent.clear();
  socket->errors.clear();
  socket->Register(key);
  socket->SendMessageToGroup(key, 1, "");
  socket->Unregister(key);
  const auto group = GroupOf(bytes);
  plain::MustEqual("the joined group", net.joined, group);
  plain::MustEqual("the left group", net.left, group);
  plain::MustEqual("the number of datagrams", net.sent.size(), group.size());
  if (!group.empty()) plain::MustEqual("the destination", net.sent[0].to, group[0]);
  const std::vector<int32_t> errors(group.empty() ? 2 : 0, EINVAL);
  plain::MustEqual("the errors", socket->errors, errors);
  return 0;
}
