#include "native/documents_folder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace quorvel {

namespace {

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::filesystem::path HomeFolder() {
  if (const std::string home = Environment("HOME"); !home.empty()) return home;
  const passwd* const user = getpwuid(geteuid());
  return user == nullptr ? "/" : user->pw_dir;
}

std::filesystem::path UserDirsFile(const std::filesystem::path& home) {
  const std::filesystem::path folder = Environment("XDG_CONFIG_HOME");
  return (folder.is_absolute() ? folder : home / ".config") / "user-dirs.dirs";
}

// The folder in a line XDG_DOCUMENTS_DIR="...", with $HOME in front or absolute; empty for any
// other line. A backslash takes the next character as the character stands.
std::filesystem::path FolderIn(std::string_view line, const std::filesystem::path& home) {
  constexpr std::string_view kStart = "XDG_DOCUMENTS_DIR=\"";
  constexpr std::string_view kHome = "$HOME";
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  if (!line.starts_with(kStart)) return {};
  line.remove_prefix(kStart.size());
  const bool below_home = line.starts_with(kHome);
  if (below_home) line.remove_prefix(kHome.size());
  std::string rest;
  for (size_t i = 0; i < line.size() && line[i] != '"'; ++i) {
    if (line[i] == '\\' && i + 1 < line.size()) ++i;
    rest += line[i];
  }
  if (below_home) return home.string() + rest;
  return rest.starts_with('/') ? std::filesystem::path(rest) : std::filesystem::path();
}

}  // namespace

std::filesystem::path FindDocumentsFolder() {
  const auto home = HomeFolder();
  std::filesystem::path found = home / "Documents";
#ifndef __APPLE__
  std::ifstream file(UserDirsFile(home));
  for (std::string line; std::getline(file, line);) {
    if (const auto folder = FolderIn(line, home); !folder.empty()) found = folder;
  }
#endif
  return found;
}

}  // namespace quorvel
