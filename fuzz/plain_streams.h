#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The reading of streams by docs/wire-format.md, in the plainest way.
namespace plain {

inline char Mirrored(char c) {
  constexpr std::string_view kPlain = "abcdefghijklmABCDEFGHIJKLM01234";
  constexpr std::string_view kMirror = "zyxwvutsrqponZYXWVUTSRQPON98765";
  if (const size_t at = kPlain.find(c); at != std::string_view::npos) return kMirror[at];
  if (const size_t at = kMirror.find(c); at != std::string_view::npos) return kPlain[at];
  return c;
}

inline int64_t LengthIn(const std::string& bytes) {
  if (bytes.size() < 4) return INT32_MAX;
  uint32_t length = 0;
  for (size_t i = 0; i < 4; ++i) length = length << 8 | static_cast<uint8_t>(bytes[i]);
  return static_cast<int32_t>(length);
}

struct Sender {
  uint32_t address = 0;
  std::string held = {};
  int zeros = 0;  // messages of a length of 0 since the sender's last bytes
};

inline bool TakePacket(Sender& sender, std::string& log) {
  const int64_t length = LengthIn(sender.held);
  const auto held = static_cast<int64_t>(sender.held.size());
  if (length > held || sender.zeros == 2) return false;
  const auto end = static_cast<size_t>(length < 0 ? held : length);
  log += "IP Address: 10.0.0." + std::to_string(sender.address & 255) + " Sent: ";
  for (size_t i = 8; i < end && length > 8; ++i) log += Mirrored(sender.held[i]);
  log += '\n';
  sender.held.erase(0, end);
  sender.zeros = length == 0 ? sender.zeros + 1 : 0;
  return true;
}

/// Adds a line for each packet, in turns. True when a sender is left with a length of 0.
inline bool TakePackets(std::vector<Sender>& senders, std::string& log) {
  bool stuck = false;
  for (bool found = true; found;) {
    found = false;
    for (Sender& sender : senders) {
      if (!TakePacket(sender, log)) continue;
      found = true;
      stuck = stuck || sender.zeros == 2;
    }
  }
  return stuck;
}

}  // namespace plain
