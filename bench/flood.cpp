// Sends numbered messages to a group, as many a second as asked, or as fast as one thread can.
// Arguments: the group, the number of messages, messages a second (0 is as fast as can be), the
// bytes of each text, and the source addresses, which take turns. Ends with a line of JSON: the
// messages that the system took, and the seconds.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <span>
#include <string>
#include <vector>

#include "messaging/channel.h"

namespace {

constexpr int64_t kSecond = 1000000000;
constexpr int64_t kTicks = 20000;  ///< batches a second, at most
constexpr size_t kLargestBatch = 256;
constexpr size_t kHeaderSize = 8;
constexpr size_t kNumberSize = 8;

struct Load {
  sockaddr_in to{};
  int64_t count = 0;
  int64_t per_second = 0;
  size_t text_bytes = 0;
  std::vector<in_addr> sources;
};

// One datagram. With several senders, the source address travels beside the bytes.
struct Outgoing {
  std::string bytes;
  iovec slot{};
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(in_pktinfo))> control{};

  // Mirrored digits: the listener shows the number.
  void SetNumber(int64_t number) {
    for (size_t i = 0; i < kNumberSize; ++i, number /= 10) {
      bytes[kHeaderSize + kNumberSize - 1 - i] = static_cast<char>('9' - number % 10);
    }
  }
  void SetSource(in_addr source) {
    auto* const part = reinterpret_cast<cmsghdr*>(control.data());
    part->cmsg_level = IPPROTO_IP;
    part->cmsg_type = IP_PKTINFO;
    part->cmsg_len = CMSG_LEN(sizeof(in_pktinfo));
    in_pktinfo info{};
    info.ipi_spec_dst = source;
    std::memcpy(CMSG_DATA(part), &info, sizeof info);
  }
};

class Batch {
 public:
  explicit Batch(const Load& load) : mLoad(load) {
    const auto length = static_cast<uint32_t>(kHeaderSize + load.text_bytes);
    std::string packet(kHeaderSize, '\0');
    for (size_t i = 0; i < 4; ++i) packet[i] = static_cast<char>(length >> (24 - 8 * i));
    packet.append(load.text_bytes, 'n');
    for (size_t i = 0; i < kLargestBatch; ++i) {
      Outgoing& datagram = mDatagrams[i];
      datagram.bytes = packet;
      datagram.slot = {datagram.bytes.data(), datagram.bytes.size()};
      msghdr& message = mMessages[i].msg_hdr;
      message.msg_iov = &datagram.slot;
      message.msg_iovlen = 1;
      if (load.sources.size() == 1) continue;
      message.msg_control = datagram.control.data();
      message.msg_controllen = datagram.control.size();
    }
  }

  /// Sends the messages `first`, `first` + 1 and so on; returns how many the system took.
  int64_t Send(int socket, int64_t first, size_t count) {
    for (size_t i = 0; i < count; ++i) {
      const auto number = first + static_cast<int64_t>(i);
      mDatagrams[i].SetNumber(number);
      mDatagrams[i].SetSource(mLoad.sources[static_cast<size_t>(number) % mLoad.sources.size()]);
    }
    size_t sent = 0;
    while (sent < count) {
      const int taken =
          sendmmsg(socket, mMessages.data() + sent, static_cast<unsigned>(count - sent), 0);
      if (taken <= 0) break;
      sent += static_cast<size_t>(taken);
    }
    return static_cast<int64_t>(sent);
  }

 private:
  const Load& mLoad;
  std::array<Outgoing, kLargestBatch> mDatagrams;
  std::array<mmsghdr, kLargestBatch> mMessages{};
};

int64_t Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * kSecond + now.tv_nsec;
}

void SleepUntil(int64_t time) {
  const timespec until{time / kSecond, time % kSecond};
  clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr);
}

// Batch after batch, each due at a time of its own: a late batch delays no later batch.
int64_t SendAll(const Load& load, Batch& batch, int socket) {
  const auto most = static_cast<int64_t>(kLargestBatch);
  const int64_t size =
      load.per_second == 0 ? most : std::clamp<int64_t>(load.per_second / kTicks, 1, most);
  const int64_t start = Now();
  int64_t taken = 0;
  for (int64_t first = 0; first < load.count; first += size) {
    if (load.per_second != 0) {
      SleepUntil(start + static_cast<int64_t>(static_cast<double>(first) * 1e9 /
                                              static_cast<double>(load.per_second)));
    }
    taken += batch.Send(socket, first, static_cast<size_t>(std::min(size, load.count - first)));
  }
  return taken;
}

// A connected socket spares the system the search for a route for each datagram.
int OpenSocket(const Load& load) {
  const int opened = socket(AF_INET, SOCK_DGRAM, 0);
  sockaddr_in local{};
  local.sin_family = AF_INET;
  local.sin_addr = load.sources.front();
  bind(opened, reinterpret_cast<const sockaddr*>(&local), sizeof local);
  connect(opened, reinterpret_cast<const sockaddr*>(&load.to), sizeof load.to);
  return opened;
}

Load ParseLoad(std::span<char*> arguments) {
  Load load;
  load.to.sin_family = AF_INET;
  load.to.sin_port = htons(quorvel::kPort);
  inet_aton(arguments[0], &load.to.sin_addr);
  load.count = std::atoll(arguments[1]);
  load.per_second = std::atoll(arguments[2]);
  load.text_bytes = std::max(kNumberSize, static_cast<size_t>(std::atoll(arguments[3])));
  for (const char* const source : arguments.subspan(4)) {
    inet_aton(source, &load.sources.emplace_back());
  }
  return load;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 6) {
    std::fputs("usage: flood GROUP COUNT PER-SECOND TEXT-BYTES SOURCE...\n", stderr);
    return 2;
  }
  prctl(PR_SET_TIMERSLACK, 1);
  const Load load = ParseLoad(std::span(argv, static_cast<size_t>(argc)).subspan(1));
  const int socket = OpenSocket(load);
  Batch batch(load);
  const int64_t start = Now();
  const int64_t taken = SendAll(load, batch, socket);
  std::printf("{\"sent\": %lld, \"seconds\": %.6f}\n", static_cast<long long>(taken),
              static_cast<double>(Now() - start) / 1e9);
  close(socket);
}
