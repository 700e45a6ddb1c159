#pragma once

/// The key file (`docs/key-file.md`): the version marker on the first line, the key on the second.
namespace quorvel {

inline constexpr const char* kKeyFileName = "QuorvelKeyFile";
/// The marker that the program writes. A reader looks at the first character alone, so the marker
/// does not follow the program's version.
inline constexpr const char* kKeyFileMarker = "1.0.5";

}  // namespace quorvel
