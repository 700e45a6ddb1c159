#pragma once

#include <filesystem>

namespace quorvel {

/// The user's documents folder, absolute: as user-dirs.dirs in the user's configuration folder
/// names the folder, else `Documents` in the home folder. The folder need not exist.
[[nodiscard]] std::filesystem::path FindDocumentsFolder();

}  // namespace quorvel
