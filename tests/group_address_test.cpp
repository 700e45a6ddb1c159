#include <gtest/gtest.h>

#include <string>

#include "platform/network/ip_address.h"
#include "support/easy_udp_socket_door.h"

namespace quorvel {
namespace {

std::string AddressOf(const std::string& group) {
  const auto socket = New<EasyUDPSocket>();
  socket->Constructor();
  return std::string(EasyUDPSocketDoor::Address(*socket, Text::FromBytes(group)).Bytes());
}

TEST(GroupAddress, NamesGiveTheAddressesThatAllSendersUse) {
  EXPECT_EQ(AddressOf("Maple-Room-7"), "224.195.13.122");
  EXPECT_EQ(AddressOf("mAPLE-rOOM-7"), "224.195.13.122");
  EXPECT_EQ(AddressOf("Quiz Night"), "229.101.83.26");  // a negative hash
  EXPECT_EQ(AddressOf(""), "224.0.0.0");
}

TEST(GroupAddress, KeysBeyondAsciiGiveOneGroupHoweverTheyAreMarked) {
  const auto socket = New<EasyUDPSocket>();
  socket->Constructor();
  const Text typed = "Sal\xC3\xA9 \xF0\x9F\x8E\x93 \xE9";
  const Text from_file = Text::FromBytes("Sal\xC3\xA9 \xF0\x9F\x8E\x93 \xE9");
  EXPECT_EQ(EasyUDPSocketDoor::Address(*socket, typed).Bytes(),
            EasyUDPSocketDoor::Address(*socket, from_file).Bytes());
  EXPECT_NE(AddressOf("Sal\xC3\xA9"), AddressOf("Sal\xC3\x89"));
}

TEST(GroupAddress, DottedGroupsAreTakenAsTheyStand) {
  for (const char* const group :
       {"224.0.0.1", "239.255.255.255", "224.001.002.003", "224...", "00224.0.0.0001"}) {
    EXPECT_TRUE(EasyUDPSocketDoor::IsAddress(group)) << group;
    EXPECT_EQ(AddressOf(group), group);
  }
  for (const char* const name :
       {"240.0.0.1", "223.1.1.1", "224.1.2", "224.1.2.3.4", "224.1.2.256", "224.1.2.3x", ".1.2.3",
        "224.1.-2.3", "12345678", "224.1.99999999999.3", ""}) {
    EXPECT_FALSE(EasyUDPSocketDoor::IsAddress(name)) << name;
  }
}

TEST(Ipv4, OctetsAreDecimalAndNeverOctal) {
  EXPECT_EQ(ParseIpv4("224.001.002.003"), 0xE0010203U);
  EXPECT_EQ(ParseIpv4("224.008.009.010"), 0xE008090AU);
  EXPECT_EQ(FormatIpv4(0xE008090A).Bytes(), "224.8.9.10");
  for (const char* const refused : {"", "224...", "224.1.2", "1.2.3.4.5", "1.2.3.256", "1.2.3.4 ",
                                    " 1.2.3.4", "a.b.c.d", "1.2.3.99999999999"}) {
    EXPECT_EQ(ParseIpv4(refused), std::nullopt) << refused;
  }
}

}  // namespace
}  // namespace quorvel
