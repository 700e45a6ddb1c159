// Derives a group's address from the group's name; see docs/group-address.md. All machines must
// derive the same four octets.

#include "messaging/easy_udp_socket.h"
#include "platform/runtime/runtime.h"
#include "platform/values/numbers.h"

namespace quorvel {

namespace {

uint64_t SignExtended(int32_t value) { return static_cast<uint64_t>(int64_t{value}); }

int32_t LowHalf(uint64_t value) { return static_cast<int32_t>(static_cast<uint32_t>(value)); }

// hash * 31 + code, modulo 2 to the 32nd.
int32_t HashStep(int32_t hash, int32_t code) {
  const uint64_t wide = SignExtended(hash);
  return LowHalf(Bitwise::ShiftLeft(wide, 5, 64) - wide + SignExtended(code));
}

uint64_t Masked(uint64_t hash, uint64_t mask, int32_t shift) {
  return Bitwise::ShiftRight(Bitwise::BitAnd(hash, mask), shift, 64);
}

bool IsOctet(int32_t value, int32_t least, int32_t most) { return value >= least && value <= most; }

}  // namespace

bool EasyUDPSocket::IsClassDAddress(const Text& group) {
  int32_t periods = 0;
  bool first_octet = true;
  Text digits;
  for (int32_t position = 1; position <= Len(group); ++position) {
    const Text character = Mid(group, position, 1);
    if (IsNumeric(character)) {
      digits = digits + character;
    } else if (character != ".") {
      return false;
    } else {
      ++periods;
      const int32_t octet = ToInt32(Val(digits));
      if (first_octet ? !IsOctet(octet, 224, 239) : !IsOctet(octet, 0, 255)) return false;
      first_octet = false;
      digits = "";
    }
    RuntimeBackgroundTask();
  }
  return periods == 3 && IsOctet(ToInt32(Val(digits)), 0, 255);
}

Text EasyUDPSocket::HashGroupNameToIP(const Text& group) const {
  if (IsClassDAddress(group)) return group;
  const Text name = Lowercase(group);
  const int32_t length = Len(name);
  int32_t hash = 0;
  for (int32_t index = 0; index <= length; ++index) {
    hash = HashStep(hash, Asc(Mid(name, index, 1)));
    RuntimeBackgroundTask();
  }
  const uint64_t h = SignExtended(hash % mHashBins);
  const uint64_t first = 224 + (Masked(h, 0xFF000000, 24) + Masked(h, 0xFF00, 8)) % 16;
  const uint64_t second = (Masked(h, 0xFF0000, 16) + Masked(h, 0xFF00, 8)) % 256;
  const uint64_t third = (Masked(h, 0xFF, 0) + Masked(h, 0xFFFF00, 8)) % 256;
  const uint64_t fourth = (Masked(h, 0xFF00FF, 0) + Masked(h, 0xFFFF, 0)) % 256;
  return Str(LowHalf(first)) + "." + Str(LowHalf(second)) + "." + Str(LowHalf(third)) + "." +
         Str(LowHalf(fourth));
}

}  // namespace quorvel
