#pragma once

#include <cstdint>
#include <initializer_list>

namespace quorvel {

/// `base` to the power of `exponent`.
[[nodiscard]] double Pow(double base, double exponent);

/// The whole part of `value`; values beyond 32 bits saturate, and NaN gives 0.
[[nodiscard]] int32_t ToInt32(double value);

/// Bit operations on 64-bit values. Shifts and widths are in bits. A width of `w` keeps the low `w`
/// bits of operand and result; a shift below 0 or above 63 gives 0.
namespace Bitwise {
[[nodiscard]] uint64_t ShiftLeft(uint64_t value, int32_t shift, int32_t width);
[[nodiscard]] uint64_t ShiftRight(uint64_t value, int32_t shift, int32_t width);
[[nodiscard]] uint64_t BitAnd(uint64_t first, uint64_t second,
                              std::initializer_list<uint64_t> more = {});
}  // namespace Bitwise

}  // namespace quorvel
