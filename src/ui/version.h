#pragma once

namespace quorvel {

/// The program's name and version as windows show them.
inline constexpr const char* kNameAndVersion = "Quorvel v" QUORVEL_VERSION;

}  // namespace quorvel
