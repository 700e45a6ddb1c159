#include "platform/values/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvel {

double Pow(double base, double exponent) { return std::pow(base, exponent); }

int32_t ToInt32(double value) {
  using Limits = std::numeric_limits<int32_t>;
  if (std::isnan(value)) return 0;
  return static_cast<int32_t>(
      std::clamp(value, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

namespace Bitwise {

namespace {
uint64_t LowBits(int32_t width) {
  return width >= 64 ? ~uint64_t{0} : (uint64_t{1} << std::max(width, 0)) - 1;
}
bool ShiftsAllOut(int32_t shift) { return shift < 0 || shift >= 64; }
}  // namespace

uint64_t ShiftLeft(uint64_t value, int32_t shift, int32_t width) {
  if (ShiftsAllOut(shift)) return 0;
  return ((value & LowBits(width)) << shift) & LowBits(width);
}

uint64_t ShiftRight(uint64_t value, int32_t shift, int32_t width) {
  if (ShiftsAllOut(shift)) return 0;
  return (value & LowBits(width)) >> shift;
}

uint64_t BitAnd(uint64_t first, uint64_t second, std::initializer_list<uint64_t> more) {
  uint64_t result = first & second;
  for (const uint64_t value : more) result &= value;
  return result;
}

}  // namespace Bitwise

}  // namespace quorvel
