// Group addresses, packets, waits, and the socket options behind them, without a network.

#include <arpa/inet.h>

#include <array>
#include <cerrno>
#include <fstream>

#include "platform/network/ip_address.h"
#include "platform/values/exceptions.h"
#include "platform/windows/application.h"
#include "support/running.h"
#include "support/station.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Ipv4Address kAnna = 0x0A000001, kBert = 0x0A000002, kCleo = 0x0A000003,
                      kDora = 0x0A000004;
constexpr int32_t kMost = 2147483647;

std::string Header(int32_t length, int32_t command) {
  const std::array words = {htonl(static_cast<uint32_t>(length)),
                            htonl(static_cast<uint32_t>(command))};
  return {reinterpret_cast<const char*>(words.data()), sizeof words};
}
std::string Packet(const std::string& payload, int32_t command = 1) {
  return Header(8 + static_cast<int32_t>(payload.size()), command) + payload;
}

class Messaging : public Running {
 protected:
  Messaging() {
    _RuntimeRegisterAppObject(New<Application>());
    mSocket->Bind(5563);
  }

  void Arrives(Ipv4Address from, const std::string& bytes) {
    mNet.arriving.emplace_back(from, bytes);
  }
  void ArrivesLater(const std::string& bytes) {
    mSide.loop.Post([=, this] { Arrives(kAnna, bytes); });
  }
  /// All that has arrived goes through the socket; the messages that come of it.
  std::vector<std::string> Delivered() {
    mSocket->Poll();
    return std::exchange(mSocket->messages, {});
  }
  std::string WaitFor(int32_t command) {
    return std::string(mSocket->WaitForMessage(command, mFrom).Bytes());
  }

  test::ScriptedSockets& mNet = mSide.sockets;
  Ref<Station> mSocket = New<Station>();
  Text mFrom = "untouched";
};

TEST_F(Messaging, GroupsHaveTheAddressesThatAllSendersUse) {
  using Case = std::pair<const char*, const char*>;
  // Names, among them a name with a negative hash; addresses; names that resemble addresses.
  for (const auto& [group, address] :
       {Case{"Maple-Room-7", "224.195.13.122"}, Case{"mAPLE-rOOM-7", "224.195.13.122"},
        Case{"Quiz Night", "229.101.83.26"}, Case{"Sal\xC3\xA9", "224.245.139.150"},
        Case{"Sal\xC3\xA9 \xF0\x9F\x8E\x93 \xE9", "237.50.21.142"}, Case{"", "224.0.0.0"},
        Case{"239.255.255.255", "239.255.255.255"}, Case{"00224.001.0.0010", "224.1.0.10"},
        Case{"240.0.0.1", "239.93.84.234"}, Case{"223.1.1.1", "226.207.14.120"},
        Case{"224.1.2", "237.138.9.118"}, Case{"224.1.2.3.4", "231.237.173.12"},
        Case{"224.1.2.256", "228.234.196.64"}, Case{"224.256.1.1", "229.123.68.62"},
        Case{"224.1.300.3", "236.241.157.2"}, Case{"224.1.99999999999.3", "236.168.84.78"},
        Case{"224.1.2.3x", "229.180.94.112"}, Case{".1.2.3", "230.93.226.152"}}) {
    mSocket->Register(group);
    mSocket->SendMessageToGroup(Text::FromBytes(group), 1, "");
    mSocket->Unregister(group);
    EXPECT_EQ(FormatIpv4(mNet.joined.back()).Bytes(), address) << group;
    EXPECT_EQ(mNet.sent.back().to, mNet.joined.back()) << group;
    EXPECT_EQ(mNet.left, mNet.joined) << group;
  }
  mSocket->Register("224...");
  EXPECT_THAT(mSocket->errors, ElementsAre(EINVAL));
}

// Most of what packets do is in data/datagrams.txt, whose log tells no commands.
TEST_F(Messaging, CommandsAreNumbersOfAnySignOrAbsent) {
  Arrives(kAnna, Packet("one", 7) + Packet("", -9));
  Arrives(kDora, Header(4, 0).substr(0, 4));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 7 one", "10.0.0.4 2147483647 ", "10.0.0.1 -9 "));
}

TEST_F(Messaging, TensOfThousandsOfPacketsInOneBufferNeedNoStack) {
  std::string all;
  while (all.size() < 60000) all += Packet("");
  for (int i = 0; i < 6; ++i) Arrives(kAnna, all);
  EXPECT_EQ(Delivered().size(), 45000U);
}

TEST_F(Messaging, ALengthOfZeroCostsTwoMessagesAndAnExceptionForEachDatagramOfTheSender) {
  Arrives(kAnna, Header(0, 4));
  Arrives(kBert, Packet("b1") + Packet("b2") + Packet("b3") + Header(9, 5));
  EXPECT_THROW(Delivered(), StackOverflowException);
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 4 ", "10.0.0.2 1 b1", "10.0.0.1 4 ",
                                       "10.0.0.2 1 b2", "10.0.0.2 1 b3"));
  Arrives(kAnna, "");
  Arrives(kCleo, Packet("c1") + "abc");
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.3 1 c1"));
  Arrives(kAnna, Packet("behind"));
  EXPECT_THROW(Delivered(), StackOverflowException);
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 4 ", "10.0.0.1 4 "));
  std::string unfinished;
  for (const auto& [from, held, announced] : mSocket->Unfinished()) {
    unfinished += std::string(from.Bytes()) + " holds " + std::to_string(held) + " of " +
                  std::to_string(announced) + ", ";
  }
  EXPECT_EQ(unfinished,
            "10.0.0.1 holds 22 of 0, 10.0.0.2 holds 8 of 9, 10.0.0.3 holds 3 of 2147483647, ");
  // A handler that raises has had its turn.
  Arrives(kDora, Header(0, 5));
  mSocket->act = [] { throw RuntimeException(); };
  EXPECT_THROW(Delivered(), RuntimeException);
  mSocket->act = [] {};
  Arrives(kBert, "");
  EXPECT_THROW(Delivered(), StackOverflowException);
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.4 5 ", "10.0.0.4 5 "));
}

/// The most memory that the process had in use since the last call, in bytes.
int64_t PeakMemory() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (!line.starts_with("VmHWM:") && std::getline(status, line)) continue;
  std::ofstream("/proc/self/clear_refs") << 5;
  return std::stoll(line.substr(6)) * 1024;
}

TEST_F(Messaging, UnfinishedBytesTakeTheMemoryOfTheirLength) {
#if defined(QUORVEL_SANITIZED)
  GTEST_SKIP() << "sanitizers keep freed memory";
#endif
  constexpr int64_t kMebibyte = 1048576;
  const std::string bytes(65000, 'a');
  const auto growth = [](int64_t before) { return PeakMemory() - before; };
  static_cast<void>(PeakMemory());
  int64_t before = PeakMemory();
  Arrives(kAnna, Header(kMost, 1));
  for (int i = 0; i < 64 * 16; ++i) {
    Arrives(kAnna, bytes);
    EXPECT_THAT(Delivered(), IsEmpty());
  }
  EXPECT_LT(growth(before), (64 + 16) * kMebibyte);
  before = PeakMemory();
  for (Ipv4Address i = 0; i < 500; ++i) {
    Arrives(kDora + i, Packet(bytes) + "rest");
    EXPECT_EQ(Delivered().size(), 1U);
    mSocket->heard.clear();
  }
  EXPECT_LT(growth(before), 8 * kMebibyte);
}

TEST_F(Messaging, AMessageStaysInItsBufferUntilItsHandlerReturns) {
  Arrives(kAnna, Packet("a1") + Packet("a2"));
  Arrives(kBert, Packet("b1"));
  mSocket->act = [] { throw RuntimeException(); };
  EXPECT_THROW(Delivered(), RuntimeException);
  Arrives(kAnna, "");
  // A handler takes in a datagram, and the reading of the handler's own message fails once more.
  mSocket->act = [this] {
    mSocket->act = [] { throw RuntimeException(); };
    Arrives(kCleo, Packet("c1"));
    EXPECT_THROW(mSocket->Poll(), RuntimeException);
    mSocket->act = [] {};
  };
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 1 a1", "10.0.0.1 1 a1", "10.0.0.1 1 a1",
                                       "10.0.0.2 1 b1", "10.0.0.1 1 a2", "10.0.0.3 1 c1"));
  // A look inside the handler takes both messages; the look outside keeps the second.
  Arrives(kAnna, Packet("a3") + Packet("a4"));
  mSocket->act = [this] {
    mSocket->act = [] {};
    Arrives(kAnna, "");
    mSocket->Poll();
  };
  EXPECT_THAT(Delivered(),
              ElementsAre("10.0.0.1 1 a3", "10.0.0.1 1 a3", "10.0.0.1 1 a4", "10.0.0.1 1 a4"));
}

TEST_F(Messaging, AWaitEndsWithTheAwaitedMessageAndDropsTheOthers) {
  ArrivesLater(Packet("dropped", 6) + Packet("", 7));
  mSide.loop.Post([this] {
    Arrives(kAnna, Packet("first", 7));
    Arrives(kBert, Packet("dropped", -1) + Packet("last", 7));
  });
  EXPECT_EQ(WaitFor(7), "last");
  EXPECT_EQ(mFrom.Bytes(), "10.0.0.2");
  ArrivesLater(Packet("second", 7));
  EXPECT_EQ(WaitFor(7), "second");
  ArrivesLater(Packet("negative", -2));
  EXPECT_EQ(WaitFor(-2), "negative");
  Arrives(kAnna, Packet("after", 7) + Packet("after", -2));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 7 after", "10.0.0.1 -2 after"));
}

TEST_F(Messaging, AnUnboundSocketDoesNothingAndASocketRefusesDirectWrites) {
  EXPECT_THAT([&] { mSocket->Write("10.0.0.1", "x"); },
              testing::ThrowsMessage<RuntimeException>(
                  "You cannot call Write on an EasyUDPSocket directly."));
  mSocket->Close();
  mSocket->Register("Quiz Night");
  mSocket->SendMessageToGroup("Quiz Night", 1, "x");
  mSocket->SendMessageToIndividual("10.0.0.1", 1, "x");
  mSocket->Unregister("Quiz Night");
  EXPECT_EQ(mNet.sent.size() + mNet.joined.size() + mNet.left.size(), 0U);
  EXPECT_THAT(mSocket->errors, IsEmpty());
  EXPECT_EQ(WaitFor(7) + std::string(mFrom.Bytes()), "untouched");
  EXPECT_THROW(mSocket->Event_DataAvailable(), NilObjectException);
  for (int i = 0; i < 2; ++i) mSocket->Bind(5563);
  EXPECT_EQ(mNet.open.size(), 1U);
}

TEST_F(Messaging, AfterAFailedWaitMessagesStayDivertedUntilAWaitSucceeds) {
  for (const int32_t command : {-1, 7}) {
    // A wait for -1 diverts nothing, and ends with an error alone.
    ArrivesLater(Packet("heard", -1));
    mSide.loop.Post([this] { mSide.faults.Arrange("Receive", 1, ENOMEM); });
    EXPECT_EQ(WaitFor(command) + std::string(mFrom.Bytes()), "untouched");
  }
  Arrives(kAnna, Packet("diverted", 8));
  EXPECT_EQ(Delivered(), std::vector<std::string>{"10.0.0.1 -1 heard"});
  EXPECT_EQ(mSocket->LastErrorCode(), 0);
  Arrives(kAnna, Packet("reply", 7));
  EXPECT_EQ(WaitFor(7), "reply");
  Arrives(kAnna, Packet("heard", 8));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 8 heard"));
  EXPECT_THAT(mSocket->errors, ElementsAre(ENOMEM, ENOMEM));
}

TEST_F(Messaging, TheResponseToANestedWaitEndsTheOuterWaitToo) {
  std::string inner;
  mSide.loop.Post([&] {
    Arrives(kAnna, Packet("inner", 2));
    inner = WaitFor(2);
  });
  EXPECT_EQ(WaitFor(1), "inner");
  EXPECT_EQ(inner, "inner");
}

}  // namespace
}  // namespace quorvel
