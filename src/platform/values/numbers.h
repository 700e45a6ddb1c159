#pragma once

#include <cstdint>
#include <initializer_list>

namespace quorvel {

[[nodiscard]] double Pow(double base, double exponent);

/// The whole part of `value`; values beyond 32 bits saturate, and what is no number gives 0.
[[nodiscard]] int32_t ToInt32(double value);

/// Bit operations on 64-bit values. Shift places and widths are in bits; a width of `w` keeps the
/// low `w` bits of operand and result.
namespace Bitwise {
[[nodiscard]] uint64_t ShiftLeft(uint64_t value, int32_t shift, int32_t width);
[[nodiscard]] uint64_t ShiftRight(uint64_t value, int32_t shift, int32_t width);
[[nodiscard]] uint64_t BitAnd(uint64_t first, uint64_t second,
                              std::initializer_list<uint64_t> more = {});
}  // namespace Bitwise

}  // namespace quorvel
