#pragma once

#include <string>
#include <string_view>

namespace quorvel {

/// Gives the file its four-character type and creator where the system keeps such codes (macOS);
/// does nothing elsewhere. A failure changes nothing and is not reported.
void WriteFinderInfo(const std::string& path, std::string_view type, std::string_view creator);

}  // namespace quorvel
