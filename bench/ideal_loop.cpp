// The least that a listener has to do, as a measure for the program: one thread, one blocking
// socket, one string for the log. The arguments are the group and the address of the interface that
// joins the group. At SIGTERM the program prints a report and ends.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "messaging/channel.h"
#include "report.h"

namespace {

constexpr size_t kMostDatagrams = 32;
constexpr size_t kMostBytes = 65536;
constexpr size_t kHeaderSize = 8;

struct Sender {
  std::string line_start;
  std::string rest;  ///< the bytes of a packet that is not whole yet
};

struct Log {
  std::unordered_map<in_addr_t, Sender> senders;
  std::string text;
  int64_t messages = 0;
};

char Mirrored(char byte) {
  if (byte >= 'a' && byte <= 'z') return static_cast<char>('a' + ('z' - byte));
  if (byte >= 'A' && byte <= 'Z') return static_cast<char>('A' + ('Z' - byte));
  if (byte >= '0' && byte <= '9') return static_cast<char>('0' + ('9' - byte));
  return byte;
}

std::array<char, 256> MirrorTable() {
  std::array<char, 256> table{};
  for (size_t i = 0; i < table.size(); ++i) table[i] = Mirrored(static_cast<char>(i));
  return table;
}

Sender& SenderOf(Log& log, in_addr address) {
  Sender& sender = log.senders[address.s_addr];
  if (sender.line_start.empty()) {
    sender.line_start = std::string("IP Address: ") + inet_ntoa(address) + " Sent: ";
  }
  return sender;
}

void AppendLine(Log& log, const Sender& sender, std::string_view text) {
  static const auto mirror = MirrorTable();
  log.text += sender.line_start;
  for (const char byte : text) log.text += mirror[static_cast<uint8_t>(byte)];
  log.text += '\n';
  ++log.messages;
}

// Takes whole packets off the front. The loop trusts lengths: a length below 8 ends the packets.
std::string_view TakePackets(Log& log, const Sender& sender, std::string_view bytes) {
  while (bytes.size() >= kHeaderSize) {
    uint32_t length = 0;
    std::memcpy(&length, bytes.data(), sizeof length);
    length = ntohl(length);
    if (length < kHeaderSize || length > bytes.size()) break;
    AppendLine(log, sender, bytes.substr(kHeaderSize, length - kHeaderSize));
    bytes.remove_prefix(length);
  }
  return bytes;
}

void TakeDatagram(Log& log, in_addr from, std::string_view bytes) {
  Sender& sender = SenderOf(log, from);
  if (sender.rest.empty()) {
    sender.rest = TakePackets(log, sender, bytes);
  } else {
    sender.rest += bytes;
    sender.rest = std::string(TakePackets(log, sender, sender.rest));
  }
}

int OpenSocket(const char* group, const char* by) {
  const int opened = socket(AF_INET, SOCK_DGRAM, 0);
  sockaddr_in local{};
  local.sin_family = AF_INET;
  local.sin_port = htons(quorvel::kPort);
  ip_mreq membership{};
  inet_aton(group, &membership.imr_multiaddr);
  inet_aton(by, &membership.imr_interface);
  if (bind(opened, reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0 ||
      setsockopt(opened, IPPROTO_IP, IP_ADD_MEMBERSHIP, &membership, sizeof membership) != 0) {
    std::perror("ideal loop");
    return -1;
  }
  return opened;
}

struct Batch {
  std::vector<char> bytes = std::vector<char>(kMostDatagrams * kMostBytes);
  std::array<sockaddr_in, kMostDatagrams> senders{};
  std::array<iovec, kMostDatagrams> slots{};
  std::array<mmsghdr, kMostDatagrams> messages{};

  Batch() {
    for (size_t i = 0; i < kMostDatagrams; ++i) {
      slots[i] = {bytes.data() + i * kMostBytes, kMostBytes};
      messages[i].msg_hdr.msg_name = &senders[i];
      messages[i].msg_hdr.msg_namelen = sizeof senders[i];
      messages[i].msg_hdr.msg_iov = &slots[i];
      messages[i].msg_hdr.msg_iovlen = 1;
    }
  }
};

volatile std::sig_atomic_t asked_to_end = 0;

void Listen(int socket, Log& log) {
  Batch batch;
  while (asked_to_end == 0) {
    const int count =
        recvmmsg(socket, batch.messages.data(), kMostDatagrams, MSG_WAITFORONE, nullptr);
    for (size_t i = 0; static_cast<int>(i) < count; ++i) {
      TakeDatagram(log, batch.senders[i].sin_addr,
                   {static_cast<const char*>(batch.slots[i].iov_base), batch.messages[i].msg_len});
    }
  }
}

}  // namespace

int main(int, char** argv) {
  struct sigaction action {};
  action.sa_handler = [](int) { asked_to_end = 1; };
  sigaction(SIGTERM, &action, nullptr);
  const int socket = OpenSocket(argv[1], argv[2]);
  if (socket < 0) return 1;
  Log log;
  Listen(socket, log);
  quorvel::bench::PrintReport(log.messages, log.text.size());
  close(socket);
}
