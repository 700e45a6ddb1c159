// Real sockets. Groups are joined only in a private network; see scripts/test.sh.

#include <poll.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <thread>

#include "platform/network/receiver.h"
#include "support/running.h"
#include "support/station.h"

namespace quorvel {
namespace {

using testing::ElementsAre;

constexpr int32_t kPort = 5563;

class Sockets : public Running {
 protected:
  Sockets() : Running(PosixSocketCalls()) {}

  static Ref<Station> Bound(bool send_only = false) {
    auto station = New<Station>(send_only);
    station->Bind(kPort);
    return station;
  }
};

// A socket on the port, and a socket that sends to the port.
struct Wire {
  Wire() { EXPECT_TRUE(calls.Bind(to, kPort)); }
  ~Wire() {
    for (const int socket : {to, from}) calls.Close(socket);
  }
  [[nodiscard]] bool Send(std::string_view bytes) const {
    return calls.Send(from, 0x7F000001, kPort, bytes);
  }
  SocketCalls& calls = PosixSocketCalls();
  const int to = calls.Open(4096), from = calls.Open(4096);
};

TEST_F(Sockets, ASenderLeavesTheListenersPortAlone) {
  const auto listener = Bound();
  const auto sender = Bound(true);
  const std::string largest(65499, 'z');
  sender->SendMessageToIndividual("127.0.0.1", 1, "hello");
  sender->SendMessageToIndividual("127.0.0.1", 2, Text::FromBytes(largest));
  EXPECT_EQ(sender->LastErrorCode(), 0);
  listener->Poll();
  EXPECT_THAT(listener->heard, ElementsAre("hello", largest));
  sender->SendMessageToIndividual("127.0.0.1", 2, Text::FromBytes(largest + "z"));
  EXPECT_EQ(sender->LastErrorCode(), EMSGSIZE);
}

TEST_F(Sockets, APortIsSharedWithHoldersThatShareInAnyWay) {
  auto& calls = PosixSocketCalls();
  for (const bool by_address : {false, true}) {
    for (const bool by_port : {false, true}) {
      const int holder = calls.Open(4096);
      if (by_address) calls.ShareAddress(holder);
      if (by_port) calls.SharePort(holder);
      ASSERT_TRUE(calls.Bind(holder, kPort));
      const auto station = Bound();
      EXPECT_EQ(station->IsConnected(), by_address || by_port) << by_address << by_port;
      const std::vector<int32_t> none, in_use = {EADDRINUSE};
      EXPECT_EQ(station->errors, by_address || by_port ? none : in_use);
      calls.Close(holder);
    }
  }
}

// Without a thread, the buffer of the system overflows after some of the 10,000 datagrams.
TEST_F(Sockets, DatagramsAreTakenInOrderWhileTheProgramIsBusy) {
  const Wire wire;
  auto receiver = std::make_unique<Receiver>(wire.calls, wire.to);
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  for (size_t sent = 0; sent < 10000;) {
    ASSERT_TRUE(wire.Send(std::to_string(sent)));
    ++sent;
    while (receiver->Waiting() + 1 < sent && std::chrono::steady_clock::now() < limit) {
      std::this_thread::yield();
    }
  }
  receiver->TakeIn();
  std::string taken, expected;
  while (receiver->Waiting() > 0) taken += receiver->Take().bytes;
  for (int i = 0; i < 10000; ++i) expected += std::to_string(i);
  EXPECT_EQ(taken, expected);
  EXPECT_EQ(receiver->DroppedHere() + receiver->DroppedBySystem(), 0U);
  // Ends in the middle of a flood.
  for (int i = 0; i < 1000; ++i) static_cast<void>(wire.Send("x"));
  receiver.reset();
}

// Each datagram but the first comes right after the event loop has been told of another.
TEST(ReceiverQueue, TheEventLoopIsToldOfEachDatagramOfAQuickSequence) {
  const Wire wire;
  Receiver receiver(wire.calls, wire.to);
  for (int i = 0; i < 20; ++i) {
    ASSERT_TRUE(wire.Send("x"));
    pollfd told{receiver.Descriptor(), POLLIN, 0};
    ASSERT_EQ(poll(&told, 1, 5000), 1) << i;
    EXPECT_EQ(receiver.Take().received.size(), 1);
  }
}

TEST(ReceiverQueue, TakesA256MebibytesAndCountsTheDatagramsThatItDrops) {
  test::Faults faults;
  test::ScriptedSockets calls(faults);
  Receiver receiver(calls, 0);
  for (size_t round = 1; round <= 2; ++round) {
    calls.arriving.assign(4200, {1, std::string(65507, 'x')});
    while (!calls.arriving.empty()) receiver.TakeIn();
    const size_t taken = receiver.Waiting();
    while (receiver.Waiting() > 0) static_cast<void>(receiver.Take());
    EXPECT_NEAR(static_cast<double>(taken) * 65507, 256 << 20, 1 << 20);
    EXPECT_EQ(receiver.DroppedHere(), (4200 - taken) * round);
  }
}

TEST_F(Sockets, EachHearsItsOwnGroupOnOneSharedPortUntilItLeaves) {
  if (std::getenv("QUORVEL_PRIVATE_NETWORK") == nullptr) GTEST_SKIP() << "no private network";
  const auto quiz = Bound(), maple = Bound(), maple_too = Bound();
  quiz->Register("Quiz Night");
  maple->Register("Maple-Room-7");
  maple_too->Register("maple-room-7");
  maple->SendMessageToGroup("Maple-Room-7", 1, "to maple");
  quiz->SendMessageToGroup("Quiz Night", 1, "to quiz");
  for (const auto& station : {quiz, maple, maple_too}) station->Poll();
  maple->Unregister("Maple-Room-7");
  EXPECT_THAT(maple->errors, testing::IsEmpty());
  quiz->SendMessageToGroup("Maple-Room-7", 1, "later");
  for (const auto& station : {quiz, maple, maple_too}) station->Poll();
  EXPECT_THAT(maple->heard, ElementsAre("to maple"));
  EXPECT_THAT(maple_too->heard, ElementsAre("to maple", "later"));
  EXPECT_THAT(quiz->heard, ElementsAre("to quiz"));
  maple->Unregister("Maple-Room-7");
  EXPECT_THAT(maple->errors, ElementsAre(EADDRNOTAVAIL));
}

}  // namespace
}  // namespace quorvel
