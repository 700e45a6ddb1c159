#include "native/standard_error.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <string>

namespace quorvel {

void OfferLine(int descriptor, std::string_view line) {
  // A write to a pipe without a reader raises SIGPIPE, which would end the process.
  static const auto before = std::signal(SIGPIPE, SIG_IGN);
  static_cast<void>(before);
  std::string bytes(line.substr(0, PIPE_BUF - 1));
  std::ranges::replace(bytes, '\n', ' ');
  bytes += '\n';
  pollfd writable{.fd = descriptor, .events = POLLOUT, .revents = 0};
  if (poll(&writable, 1, 0) != 1 || (writable.revents & POLLOUT) == 0) return;
  const ssize_t written = write(descriptor, bytes.data(), bytes.size());
  static_cast<void>(written);
}

}  // namespace quorvel
