#include "tools/check/port_users.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace quorvel::check {

namespace {

namespace fs = std::filesystem;

/// The users' numbers of sockets, by the sockets' inodes.
using Sockets = std::map<std::string, int64_t>;

bool IsNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Each line of the table is a socket; a port stands in hexadecimal digits behind the last colon of
// the address.
void ReadSockets(const char* table, uint16_t port, Sockets& sockets) {
  std::ifstream lines(table);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string number, local, remote, state, queues, timer, retransmits, timeout, inode;
    int64_t user = 0;
    fields >> number >> local >> remote >> state >> queues >> timer >> retransmits >> user >>
        timeout >> inode;
    std::istringstream digits(local.substr(local.rfind(':') + 1));
    unsigned bound = 0;
    digits >> std::hex >> bound;
    if (fields && digits && bound == port) sockets[inode] = user;
  }
}

// A descriptor of a socket is a link to `socket:[INODE]`.
std::string InodeOf(const fs::path& descriptor) {
  constexpr std::string_view kStart = "socket:[";
  std::error_code error;
  const std::string target = fs::read_symlink(descriptor, error).string();
  if (error || !target.starts_with(kStart)) return {};
  return target.substr(kStart.size(), target.size() - kStart.size() - 1);
}

std::string NameOf(const fs::path& process) {
  std::string name;
  std::getline(std::ifstream(process / "comm"), name);
  return name;
}

/// Takes the sockets that the process has open out of `sockets`.
std::vector<PortUser> TakeSocketsOf(const fs::path& process, Sockets& sockets) {
  std::vector<PortUser> users;
  std::error_code error;
  for (fs::directory_iterator each(process / "fd", error), end; !error && each != end;
       each.increment(error)) {
    const auto socket = sockets.extract(InodeOf(each->path()));
    if (!socket) continue;
    users.push_back({std::stoll(process.filename()), NameOf(process), socket.mapped()});
  }
  return users;
}

void Append(std::vector<PortUser>& users, const std::vector<PortUser>& more) {
  users.insert(users.end(), more.begin(), more.end());
}

}  // namespace

std::vector<PortUser> FindPortUsers(uint16_t port, SteadyTime deadline) {
  Sockets sockets;
  for (const char* const table : {"/proc/self/net/udp", "/proc/self/net/udp6"}) {
    ReadSockets(table, port, sockets);
  }
  TakeSocketsOf(fs::path("/proc") / std::to_string(getpid()), sockets);
  std::vector<PortUser> users;
  std::error_code error;
  for (fs::directory_iterator each("/proc", error), end;
       !error && each != end && !sockets.empty() && std::chrono::steady_clock::now() < deadline;
       each.increment(error)) {
    if (IsNumber(each->path().filename().string())) {
      Append(users, TakeSocketsOf(each->path(), sockets));
    }
  }
  std::ranges::sort(users, {}, &PortUser::pid);
  for (const auto& [inode, user] : sockets) users.push_back({0, "", user});
  return users;
}

}  // namespace quorvel::check
