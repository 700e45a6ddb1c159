// Real sockets. Groups are joined only in a private network; see scripts/test.sh.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <vector>

#include "messaging/easy_udp_socket.h"
#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "support/private_network.h"
#include "support/side.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int32_t kPort = 5563;

class Station : public EasyUDPSocket {
 public:
  explicit Station(bool send_only = false) {
    EasyUDPSocket::Constructor();
    SendOnly(send_only);
  }

  using EasyUDPSocket::Event_Error;

  std::vector<std::string> heard;
  std::vector<int32_t> errors;

 protected:
  void Event_ReceivedMessage(const Text&, int32_t, const Text& data) override {
    heard.emplace_back(data.Bytes());
  }
  void Event_Error(int32_t code) override { errors.push_back(code); }
};

class Sockets : public testing::Test {
 protected:
  Sockets() { RuntimeInit(mSide); }
  ~Sockets() override { static_cast<void>(RuntimeExit()); }

  static Ref<Station> Listener(const Text& group) {
    auto station = New<Station>();
    station->Bind(kPort);
    station->Register(group);
    return station;
  }
  void Settle() { mSide.loop.Settle(); }

  test::Side mSide;
};

class GroupSockets : public Sockets {
 protected:
  void SetUp() override { SKIP_WITHOUT_PRIVATE_NETWORK(); }
};

TEST_F(Sockets, DoNothingUntilTheyAreBound) {
  const auto station = New<Station>();
  station->Register("Quiz Night");
  station->SendMessageToGroup("Quiz Night", 1, "x");
  station->SendMessageToIndividual("127.0.0.1", 1, "x");
  station->Unregister("Quiz Night");
  EXPECT_THAT(station->errors, IsEmpty());
  EXPECT_FALSE(station->IsConnected());
}

TEST_F(Sockets, ASenderLeavesTheListenersPortAlone) {
  const auto listener = New<Station>();
  listener->Bind(kPort);
  const auto sender = New<Station>(true);
  sender->Bind(kPort);
  const std::string largest(65499, 'z');
  sender->SendMessageToIndividual("127.0.0.1", 1, "hello");
  sender->SendMessageToIndividual("127.0.0.1", 2, Text::FromBytes(largest));
  EXPECT_EQ(sender->LastErrorCode(), 0);
  Settle();
  EXPECT_THAT(listener->heard, ElementsAre("hello", largest));
  sender->SendMessageToIndividual("127.0.0.1", 2, Text::FromBytes(largest + "z"));
  EXPECT_EQ(sender->LastErrorCode(), EMSGSIZE);
  sender->SendMessageToIndividual("localhost", 2, "x");
  EXPECT_EQ(sender->LastErrorCode(), EINVAL);
}

TEST_F(Sockets, APortHeldAloneIsAnErrorAndNothingMore) {
  auto& calls = PosixSocketCalls();
  const int other = calls.Open(4096);
  ASSERT_TRUE(calls.Bind(other, kPort));
  const auto station = Listener("Quiz Night");
  EXPECT_THAT(station->errors, ElementsAre(EADDRINUSE));
  EXPECT_FALSE(station->IsConnected());
  calls.Close(other);
}

TEST_F(Sockets, AFloodIsTakenInBoundedBatches) {
  const auto listener = New<Station>();
  listener->Bind(kPort);
  const auto sender = New<Station>(true);
  sender->Bind(kPort);
  for (int i = 0; i < 100; ++i) sender->SendMessageToIndividual("127.0.0.1", 1, Str(i));
  mSide.loop.Turn(1000);
  EXPECT_THAT(listener->heard, testing::SizeIs(testing::AllOf(testing::Ge(1U), testing::Lt(100U))));
  listener->Poll();
  ASSERT_EQ(listener->heard.size(), 100U);
  EXPECT_EQ(listener->heard.back(), "99");
}

TEST_F(Sockets, AFailingReceiveIsReportedAndTheNextOneWorks) {
  const auto listener = New<Station>();
  listener->Bind(kPort);
  const auto sender = New<Station>(true);
  sender->Bind(kPort);
  mSide.faults.Arrange("Receive", 1, ENOMEM);
  listener->Poll();
  EXPECT_THAT(listener->errors, ElementsAre(ENOMEM));
  sender->SendMessageToIndividual("127.0.0.1", 1, "later");
  listener->Poll();
  EXPECT_THAT(listener->heard, ElementsAre("later"));
  EXPECT_EQ(listener->LastErrorCode(), 0);
}

TEST_F(GroupSockets, EachHearsItsOwnGroupOnOneSharedPort) {
  const auto quiz = Listener("Quiz Night");
  const auto maple = Listener("Maple-Room-7");
  const auto maple_too = Listener("maple-room-7");
  maple->SendMessageToGroup("Maple-Room-7", 1, "to maple");
  quiz->SendMessageToGroup("Quiz Night", 1, "to quiz");
  Settle();
  EXPECT_THAT(maple->heard, ElementsAre("to maple"));
  EXPECT_THAT(maple_too->heard, ElementsAre("to maple"));
  EXPECT_THAT(quiz->heard, ElementsAre("to quiz"));
  EXPECT_THAT(maple->errors, IsEmpty());
}

TEST_F(GroupSockets, DottedGroupsAreDecimal) {
  const auto zeros = Listener("224.001.002.003");
  const auto eights = Listener("224.008.009.010");
  const auto sender = New<Station>(true);
  sender->Bind(kPort);
  sender->SendMessageToGroup("224.1.2.3", 1, "one");
  sender->SendMessageToGroup("224.8.9.10", 1, "eight");
  Settle();
  EXPECT_THAT(zeros->heard, ElementsAre("one"));
  EXPECT_THAT(eights->heard, ElementsAre("eight"));
  EXPECT_THAT(Listener("224...")->errors, ElementsAre(EINVAL));
}

TEST_F(GroupSockets, LeavingEndsTheHearing) {
  const auto station = Listener("Quiz Night");
  station->Unregister("Quiz Night");
  EXPECT_THAT(station->errors, IsEmpty());
  station->SendMessageToGroup("Quiz Night", 1, "gone");
  Settle();
  EXPECT_THAT(station->heard, IsEmpty());
  station->Unregister("Quiz Night");
  EXPECT_THAT(station->errors, ElementsAre(EADDRNOTAVAIL));
}

// The rest of a test, in a process and a network of its own.
template <class Body>
void InNewNetwork(const std::string& setup, const Body& body) {
  const auto child = [&] {
    if (unshare(CLONE_NEWNET) != 0 || std::system(setup.c_str()) != 0) std::exit(2);
    std::exit(body() ? 0 : 1);
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(0), "");
}

bool HearsItself() {
  test::Side side;
  RuntimeInit(side);
  bool heard = false;
  {
    const auto station = New<Station>();
    station->Bind(kPort);
    station->Register("Quiz Night");
    station->SendMessageToGroup("Quiz Night", 1, "self");
    side.loop.Turn(1000);
    heard = station->heard == std::vector<std::string>{"self"} && station->errors.empty();
    station->Unregister("Quiz Night");
    heard = heard && station->errors.empty();
  }
  static_cast<void>(RuntimeExit());
  return heard;
}

TEST_F(GroupSockets, WorkWithoutARoute) { InNewNetwork("ip link set lo up", HearsItself); }

TEST_F(GroupSockets, WorkOnInterfacesThatTheSystemWouldNotChoose) {
  InNewNetwork(
      "ip link set lo up && ip link add a0 type veth peer name a1 && ip addr add 10.78.0.1/24 dev "
      "a0 "
      "&& ip link set a0 up && ip link set a1 up && ip link add b0 type veth peer name b1 && ip "
      "addr "
      "add 10.79.0.1/24 dev b0 && ip link set b0 up && ip link set b1 up",
      HearsItself);
}

}  // namespace
}  // namespace quorvel
