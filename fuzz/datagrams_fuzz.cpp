// Datagrams of several senders, cut at any byte and in any order, become the lines of the log that
// docs/wire-format.md promises.

#include <algorithm>

#include "app/app.h"
#include "app/entry.h"
#include "log/main_window.h"
#include "plain.h"
#include "plain_streams.h"
#include "platform/values/exceptions.h"
#include "support/side.h"
#include "ui/globals.h"

namespace {

using namespace quorvel;

test::Side& Side() {
  static auto* const side = new test::Side;  // outlives the program's own globals
  return *side;
}

/// Delivers what has arrived, as one event. True when the event raises.
bool Raises() {
  try {
    mGlobals::EasyUDPSocket1->Poll();
    return false;
  } catch (const StackOverflowException&) {
    return true;
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  _Start(Side());
  App()->mSetGlobals();
  wMain()->Show();
  return 0;
}

// Each datagram is a byte with the sender, whether an event follows, and the number of bytes; then
// the bytes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  auto& arriving = Side().sockets.arriving;
  std::vector<plain::Sender> senders;
  std::string log;
  while (!rest.empty()) {
    const auto head = static_cast<uint8_t>(rest[0]);
    const auto bytes = rest.substr(1, head >> 3);
    rest.remove_prefix(1 + bytes.size());
    const uint32_t from = 0x0A000000 | (head & 3);
    arriving.emplace_back(from, bytes);
    auto sender = std::ranges::find(senders, from, &plain::Sender::address);
    if (sender == senders.end()) sender = senders.insert(sender, {from});
    sender->held += bytes;
    if (!bytes.empty()) sender->zeros = 0;
    const bool batch_ends = (head & 4) == 0 || arriving.size() == ReceiveBatch::kMostDatagrams;
    if (!batch_ends && !rest.empty()) continue;
    plain::MustEqual("the exception", Raises(), plain::TakePackets(senders, log));
  }
  plain::MustEqual("the log", wMain()->efLog()->Text().Bytes(), std::string_view(log));
  // The next input finds a socket that has heard nothing, and an empty log.
  mGlobals::EasyUDPSocket1->Constructor();
  wMain()->efLog()->Text("");
  return 0;
}
