#pragma once

/// Tests for Windows versions. The program does not run there: each of them is False.
namespace quorvel::OSVersionInformation {

[[nodiscard]] bool Is2k();
[[nodiscard]] bool Is95();
[[nodiscard]] bool Is98();
[[nodiscard]] bool IsME();
[[nodiscard]] bool IsNT4();
[[nodiscard]] bool IsXP();
[[nodiscard]] bool IsXPPlus();

}  // namespace quorvel::OSVersionInformation
