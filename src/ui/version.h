#pragma once

namespace quorvel {

/// The program's name and version, for the windows to show.
inline constexpr const char* kNameAndVersion = "Quorvel v" QUORVEL_VERSION;

}  // namespace quorvel
