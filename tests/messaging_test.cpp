// Group addresses, packets, waits, and the socket options behind them, without a network.

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include "platform/network/ip_address.h"
#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "platform/windows/application.h"
#include "support/side.h"
#include "support/station.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Ipv4Address kAnna = 0x0A000001;
constexpr Ipv4Address kBert = 0x0A000002;
constexpr Ipv4Address kCleo = 0x0A000003;

std::string BigEndian(int32_t value) {
  const uint32_t bytes = htonl(static_cast<uint32_t>(value));
  return {reinterpret_cast<const char*>(&bytes), sizeof bytes};
}

std::string Header(int32_t length, int32_t command) {
  return BigEndian(length) + BigEndian(command);
}

std::string Packet(const std::string& payload, int32_t command = 1) {
  return Header(8 + static_cast<int32_t>(payload.size()), command) + payload;
}

class Messaging : public testing::Test {
 protected:
  Messaging() {
    RuntimeInit(mSide);
    _RuntimeRegisterAppObject(New<Application>());
    mSocket->Bind(5563);
  }
  ~Messaging() override {
    mSocket = Nil;
    static_cast<void>(RuntimeExit());
  }

  void Arrives(Ipv4Address from, const std::string& bytes) {
    mNet.arriving.emplace_back(from, bytes);
  }
  void ArrivesLater(const std::string& bytes) {
    mSide.loop.Post([=, this] { Arrives(kAnna, bytes); });
  }
  void FailsLater(int error) {
    mSide.loop.Post([=, this] { mSide.faults.Arrange("Receive", 1, error); });
  }
  /// All that has arrived goes through the socket; the messages that come of it.
  std::vector<std::string> Delivered() {
    mSocket->Poll();
    return std::exchange(mSocket->messages, {});
  }
  std::string WaitFor(int32_t command) {
    return std::string(mSocket->WaitForMessage(command, mFrom).Bytes());
  }
  /// The address that the socket joins, sends to and leaves for the group; empty for an error.
  std::string AddressOf(const Text& group) {
    mNet.joined = mNet.left = {};
    mNet.sent.clear();
    mSocket->Register(group);
    mSocket->SendMessageToGroup(group, 1, "");
    mSocket->Unregister(group);
    if (std::exchange(mSocket->errors, {}) == std::vector<int32_t>{EINVAL, EINVAL}) return "";
    EXPECT_THAT(mNet.joined, ElementsAre(mNet.sent.at(0).to));
    EXPECT_EQ(mNet.left, mNet.joined);
    return std::string(FormatIpv4(mNet.sent[0].to).Bytes());
  }

  test::Side mSide;
  test::ScriptedSockets& mNet = mSide.sockets;
  Ref<Station> mSocket = New<Station>();
  Text mFrom = "untouched";
};

TEST_F(Messaging, GroupsHaveTheAddressesThatAllSendersUse) {
  for (const auto& [group, address] : std::vector<std::pair<const char*, const char*>>{
           {"Maple-Room-7", "224.195.13.122"},
           {"mAPLE-rOOM-7", "224.195.13.122"},
           {"Quiz Night", "229.101.83.26"},  // a negative hash
           {"Sal\xC3\xA9!", "232.218.14.108"},
           {"Sal\xC3\xA9", "224.245.139.150"},
           {"Sal\xC3\x89", "224.245.107.86"},
           {"Sal\xC3\xA9 \xF0\x9F\x8E\x93 \xE9", "237.50.21.142"},
           {"", "224.0.0.0"},
           // Addresses, and some that cannot be sent to.
           {"224.0.0.1", "224.0.0.1"},
           {"239.255.255.255", "239.255.255.255"},
           {"224.001.002.003", "224.1.2.3"},
           {"00224.0.0.0010", "224.0.0.10"},
           {"224...", ""},
           // Names that resemble addresses.
           {"240.0.0.1", "239.93.84.234"},
           {"223.1.1.1", "226.207.14.120"},
           {"224.1.2", "237.138.9.118"},
           {"224.1.2.3.4", "231.237.173.12"},
           {"224.1.2.256", "228.234.196.64"},
           {"224.256.1.1", "229.123.68.62"},
           {"224.1.300.3", "236.241.157.2"},
           {"224.1.99999999999.3", "236.168.84.78"},
           {"224.1.2.3x", "229.180.94.112"},
           {"224.1.-2.3", "238.123.112.2"},
           {".1.2.3", "230.93.226.152"},
           {"12345678", "239.14.132.8"}}) {
    EXPECT_EQ(AddressOf(group), address) << group;
    EXPECT_EQ(AddressOf(Text::FromBytes(group)), address) << group << " without a mark";
  }
}

TEST_F(Messaging, EachSocketIsOpenedOnceAndClosed) {
  EXPECT_EQ(mNet.hops, 255);
  EXPECT_TRUE(mNet.loop);
  mSocket->Bind(5563);
  EXPECT_EQ(mNet.open.size(), 1U);
  mSide.faults.Arrange("Bind", 1, EACCES);
  mSocket->Bind(5563);
  EXPECT_THAT(mNet.open, IsEmpty());
  EXPECT_THAT(mSocket->errors, ElementsAre(EACCES));
}

TEST_F(Messaging, APacketGoesOutAsOneDatagram) {
  mSocket->SendMessageToIndividual("10.0.0.1", 510, "ok");
  mSocket->SendMessageToGroup("Quiz Night", -2, "");
  ASSERT_EQ(mNet.sent.size(), 2U);
  EXPECT_EQ(mNet.sent[0].bytes, std::string("\0\0\0\x0A\0\0\x01\xFEok", 10));
  EXPECT_EQ(mNet.sent[0].to, kAnna);
  EXPECT_EQ(mNet.sent[0].port, 5563);
  EXPECT_EQ(mNet.sent[1].bytes, Packet("", -2));
}

TEST_F(Messaging, PacketsMayShareADatagramOrBeSpreadOverSeveral) {
  Arrives(kAnna, "");
  Arrives(kAnna, Packet("one", 7) + Packet("", -9));
  Arrives(kAnna, "");
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 7 one", "10.0.0.1 -9 "));
  const std::string split = Packet("split");
  for (const size_t at : {1U, 3U, 4U, 7U, 8U, 12U}) {
    Arrives(kAnna, split.substr(0, at));
    EXPECT_THAT(Delivered(), IsEmpty()) << at;
    Arrives(kAnna, split.substr(at) + Packet("next").substr(0, 2));
    EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 1 split")) << at;
    Arrives(kAnna, Packet("next").substr(2));
    EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 1 next")) << at;
  }
}

TEST_F(Messaging, PacketsOfSeveralSendersTakeTurnsAndDoNotMix) {
  Arrives(kCleo, Packet("c1") + Packet("c2"));
  Arrives(kAnna, Packet("a1").substr(0, 5));
  Arrives(kBert, Packet("b1") + Packet("b2"));
  Arrives(kAnna, Packet("a1").substr(5) + Packet("a2"));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.3 1 c1", "10.0.0.1 1 a1", "10.0.0.2 1 b1",
                                       "10.0.0.3 1 c2", "10.0.0.1 1 a2", "10.0.0.2 1 b2"));
}

TEST_F(Messaging, TensOfThousandsOfPacketsInOneBufferNeedNoStack) {
  std::string all;
  for (int i = 0; i < 50000; ++i) all += Packet("");
  for (size_t at = 0; at < all.size(); at += 60000) Arrives(kAnna, all.substr(at, 60000));
  EXPECT_EQ(Delivered().size(), 50000U);
}

TEST_F(Messaging, ALengthThatIsTooLargeWaitsForItsBytes) {
  Arrives(kAnna, Header(12, 5) + "abc");
  Arrives(kBert, Header(2147483647, 5) + Packet("lost behind it"));
  EXPECT_THAT(Delivered(), IsEmpty());
  Arrives(kAnna, "d" + Packet("next"));
  Arrives(kBert, Packet("and this"));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 5 abcd", "10.0.0.1 1 next"));
}

TEST_F(Messaging, ALengthBelowTheHeadersGivesAnEmptyMessage) {
  // 1 to 7 cut that many bytes off.
  Arrives(kAnna, Header(6, 0) + Packet("z", 2).substr(2));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 0 ", "10.0.0.1 2 z"));
  // Four to seven bytes that claim no more have no command.
  Arrives(kBert, BigEndian(4));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.2 2147483647 "));
  // A negative length drops what that sender's buffer holds.
  for (const int32_t length : {-1, -2147483647 - 1}) {
    Arrives(kCleo, Header(length, 3) + Packet("dropped"));
    EXPECT_THAT(Delivered(), ElementsAre("10.0.0.3 3 "));
  }
  Arrives(kCleo, Packet("fresh"));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.3 1 fresh"));
}

TEST_F(Messaging, ALengthOfZeroEndsInAnExceptionAfterTheOthersAreDelivered) {
  Arrives(kAnna, Header(0, 4));
  Arrives(kBert, Packet("b1") + Packet("b2") + Packet("b3"));
  EXPECT_THROW(Delivered(), StackOverflowException);
  EXPECT_THAT(mSocket->messages, testing::IsSupersetOf({"10.0.0.2 1 b1", "10.0.0.2 1 b2",
                                                        "10.0.0.2 1 b3", "10.0.0.1 4 "}));
  EXPECT_LE(mSocket->messages.size(), 3U + 5U);
}

TEST_F(Messaging, TheSocketsOwnReadAndWriteAreRefused) {
  const auto refused = [](const char* operation, const auto& call) {
    try {
      call();
      ADD_FAILURE() << operation;
    } catch (const RuntimeException& exception) {
      EXPECT_EQ(exception.what(),
                "You cannot call " + std::string(operation) + " on an EasyUDPSocket directly.");
    }
  };
  refused("Read", [&] { static_cast<void>(mSocket->Read(Nil)); });
  refused("Write", [&] { mSocket->Write("10.0.0.1", "x"); });
  refused("Write", [&] { mSocket->Write(New<Datagram>("10.0.0.1", "x")); });
  EXPECT_THROW(mSocket->Event_DataAvailable(), NilObjectException);
}

TEST_F(Messaging, AWaitEndsWithTheAwaitedMessageAndDropsTheOthers) {
  Arrives(kAnna, Packet("before", 7));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 7 before"));
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

TEST_F(Messaging, AnUnboundSocketDoesNothing) {
  mSocket->Close();
  mSocket->Register("Quiz Night");
  mSocket->SendMessageToGroup("Quiz Night", 1, "x");
  mSocket->SendMessageToIndividual("10.0.0.1", 1, "x");
  mSocket->Unregister("Quiz Night");
  EXPECT_EQ(mNet.sent.size() + mNet.joined.size() + mNet.left.size(), 0U);
  EXPECT_THAT(mSocket->errors, IsEmpty());
  EXPECT_EQ(WaitFor(7), "");
  EXPECT_EQ(mFrom.Bytes(), "untouched");
  mSocket->Bind(5563);
  Arrives(kAnna, Packet("heard", 8));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 8 heard"));
}

TEST_F(Messaging, AfterAFailedWaitMessagesStayDivertedUntilAWaitSucceeds) {
  FailsLater(ENOMEM);
  EXPECT_EQ(WaitFor(7), "");
  EXPECT_EQ(mSocket->LastErrorCode(), ENOMEM);
  EXPECT_EQ(mFrom.Bytes(), "untouched");
  Arrives(kAnna, Packet("diverted", 8));
  EXPECT_THAT(Delivered(), IsEmpty());
  EXPECT_EQ(mSocket->LastErrorCode(), 0);
  Arrives(kAnna, Packet("reply", 7));
  EXPECT_EQ(WaitFor(7), "reply");
  Arrives(kAnna, Packet("heard", 8));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 8 heard"));
  EXPECT_THAT(mSocket->errors, ElementsAre(ENOMEM));
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

TEST_F(Messaging, AWaitForMinusOneDivertsNothingAndEndsWithAnError) {
  ArrivesLater(Packet("heard", -1));
  FailsLater(EIO);
  EXPECT_EQ(WaitFor(-1), "");
  EXPECT_THAT(mSocket->heard, ElementsAre("heard"));
}

TEST_F(Messaging, AWaitIsLeftWhenTheProgramQuits) {
  bool behind = false;
  mSide.loop.Post([] { Dispatch([] { Quit(0); }); });
  Dispatch([&] {
    static_cast<void>(WaitFor(7));
    behind = true;
  });
  EXPECT_FALSE(behind);
  EXPECT_TRUE(mSide.loop.Stopped());
}

}  // namespace
}  // namespace quorvel
